#include "manager/CameraDialog.h"

#include "cameras/CameraList.h"
#include "common/EngineText.h"
#include "common/Words.h"
#include "manager/AddressPage.h"
#include "manager/CameraTest.h"
#include "manager/DevicePage.h"
#include "manager/RecordingPage.h"

#include <CPaneDeck.h>

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

namespace {

constexpr QSize UsualSize(780, 440);
constexpr int LeastPages = 380;
constexpr QSize LeastPicture(300, 170);

} // namespace

CameraDialog::CameraDialog(CameraList* cameras, const CameraDescription& about, QWidget* parent)
    : QDialog(parent), m_cameras(cameras), m_before(about), m_deck(new CPaneDeck(this, WND_TYPE_ALARM, 1)),
      m_test(new CameraTest(m_deck, this)), m_address(new AddressPage(*cameras, about)),
      m_recording(new RecordingPage(about, m_deck)), m_testButton(new QPushButton(word("&Test"))),
      m_finding(new QLabel), m_fault(new QLabel),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setObjectName("CameraDialog");
    setWindowTitle(cameras->byId(about.id) ? about.name : word("Add a camera"));
    auto* pages = new QTabWidget;
    pages->addTab(m_address, word("Camera"));
    pages->addTab(m_recording, word("Recording and motion"));
    if (!about.onvifAddress.isEmpty()) {
        m_device = new DevicePage(about);
        pages->addTab(m_device, "ONVIF");
        connect(m_device, &DevicePage::changed, this, &CameraDialog::check);
    }
    auto* grid = new QGridLayout(this);
    pages->setMinimumWidth(LeastPages);
    grid->addWidget(pages, 0, 0);
    grid->addWidget(makePicture(), 0, 1);
    grid->addWidget(m_fault, 1, 0, 1, 2);
    grid->addWidget(m_buttons, 2, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    m_fault->setWordWrap(true);
    m_fault->hide();
    resize(UsualSize);
    connect(m_address, &AddressPage::changed, this, &CameraDialog::check);
    connect(m_test, &CameraTest::told, this, &CameraDialog::showTest);
    connect(m_testButton, &QPushButton::clicked, this, &CameraDialog::test);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &CameraDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &CameraDialog::reject);
    check();
    m_address->setFocus();
}

QWidget* CameraDialog::makePicture()
{
    auto* side = new QWidget;
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    m_deck->setMinimumSize(LeastPicture);
    m_deck->SetShowWndNo(1);
    m_deck->setScaseType(WND_SCASE_VIDEO, 0);
    connect(m_deck, &CPaneDeck::sig_OnWndBtnClick, this, &CameraDialog::stopTest);
    m_finding->setObjectName("CameraFinding");
    m_finding->setWordWrap(true);
    m_finding->setText(word("Test shows the camera's picture."));
    m_testButton->setObjectName("CameraTest");
    column->addWidget(m_deck, 1);
    column->addWidget(m_finding);
    column->addWidget(m_testButton);
    return side;
}

CameraDescription CameraDialog::description() const
{
    CameraDescription about = m_before;
    m_address->fill(&about);
    m_recording->fill(&about);
    if (m_device)
        m_device->fill(&about);
    return about;
}

std::optional<SourceAddress> CameraDialog::testAddress() const
{
    CameraDescription about = description();
    about.isEnabled = true;
    return about.address(m_address->password().value_or(m_cameras->passwordOf(m_before.id)));
}

void CameraDialog::check()
{
    m_buttons->button(QDialogButtonBox::Ok)
        ->setEnabled(m_address->isValid() && (!m_device || m_device->isValid()));
    m_testButton->setEnabled(testAddress() || m_test->isRunning());
}

void CameraDialog::test()
{
    const auto address = testAddress();
    if (m_test->isRunning() || !address)
        stopTest();
    else
        m_test->start(*address);
}

void CameraDialog::stopTest()
{
    m_test->stop();
    showTest(m_finding->text());
}

void CameraDialog::showTest(const QString& text)
{
    m_finding->setText(text);
    m_testButton->setText(m_test->isRunning() ? word("S&top the test") : word("&Test"));
}

void CameraDialog::accept()
{
    const CameraDescription about = description();
    QVector<CameraDescription> cameras = m_cameras->descriptions();
    const auto isIt = [&about](const CameraDescription& other) { return other.id == about.id; };
    const auto place = std::find_if(cameras.begin(), cameras.end(), isIt);
    if (place == cameras.end())
        cameras.append(about);
    else
        *place = about;
    QHash<QString, QString> passwords;
    if (const auto typed = m_address->password())
        passwords.insert(about.id, *typed);
    QString error;
    if (m_cameras->setDescriptions(cameras, &error, passwords)) {
        QDialog::accept();
        return;
    }
    m_fault->setText(engineText(error));
    m_fault->show();
}
