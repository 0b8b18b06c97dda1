#include "manager/FindCamerasDialog.h"

#include "cameras/CameraList.h"
#include "common/EngineText.h"
#include "common/Words.h"
#include "manager/CameraIntake.h"
#include "manager/PlainConsent.h"
#include "manager/TrustQuestion.h"
#include "onvif/DeviceAddress.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>

#include <utility>

namespace {

constexpr QSize UsualSize(720, 460);
constexpr int UsualName = 170;
constexpr int AddressRole = Qt::UserRole;

enum Column
{
    NameColumn,
    ModelColumn,
    AddressColumn,
    StateColumn,
    ColumnCount,
};

QUrl addressOf(const QTreeWidgetItem* row)
{
    return row->data(NameColumn, AddressRole).toUrl();
}

bool isOpen(const QTreeWidgetItem* row)
{
    return row->flags().testFlag(Qt::ItemIsUserCheckable);
}

bool isChosen(const QTreeWidgetItem* row)
{
    return isOpen(row) && row->checkState(NameColumn) == Qt::Checked;
}

/// A device that was added can't be chosen again.
void setChoice(QTreeWidgetItem* row, bool isFree, const QString& state)
{
    row->setText(StateColumn, state);
    row->setToolTip(StateColumn, state);
    row->setFlags(isFree ? row->flags() | Qt::ItemIsUserCheckable : row->flags() & ~Qt::ItemIsUserCheckable);
    row->setData(NameColumn, Qt::CheckStateRole, isFree ? QVariant(Qt::Checked) : QVariant());
}

} // namespace

FindCamerasDialog::FindCamerasDialog(CameraList* cameras, QWidget* parent)
    : QDialog(parent), m_cameras(cameras), m_search(this), m_devices(new QTreeWidget), m_note(new QLabel),
      m_progress(new QProgressBar), m_address(new QLineEdit), m_user(new QLineEdit),
      m_password(new QLineEdit), m_plain(new PlainConsent), m_again(new QPushButton(word("Search a&gain"))),
      m_addAddress(new QPushButton(word("Add to the &list"))), m_add(new QPushButton(word("&Add cameras")))
{
    setObjectName("FindCamerasDialog");
    setWindowTitle(word("Find cameras"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(makeSearch(), 1);
    column->addWidget(makeLogin());
    column->addWidget(makeButtons());
    m_add->setDefault(true);
    m_address->setFocus();
    resize(UsualSize);
    connect(&m_search, &DeviceSearch::found, this, &FindCamerasDialog::addDevice);
    connect(&m_search, &DeviceSearch::finished, this, &FindCamerasDialog::showSearch);
    connect(m_devices, &QTreeWidget::itemChanged, this, &FindCamerasDialog::check);
    search();
}

QWidget* FindCamerasDialog::makeSearch()
{
    auto* side = new QWidget;
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    m_devices->setObjectName("FoundDevices");
    m_devices->setAccessibleName(word("Cameras of the network"));
    m_devices->setColumnCount(ColumnCount);
    m_devices->setHeaderLabels({word("Name"), word("Model"), word("Address"), word("State")});
    m_devices->setRootIsDecorated(false);
    m_devices->setUniformRowHeights(true);
    m_devices->header()->setStretchLastSection(false);
    m_devices->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    // A reason may be long, and takes no room from the name.
    m_devices->header()->setSectionResizeMode(NameColumn, QHeaderView::Interactive);
    m_devices->header()->setSectionResizeMode(StateColumn, QHeaderView::Stretch);
    m_devices->setColumnWidth(NameColumn, UsualName);
    m_note->setWordWrap(true);
    m_note->setObjectName("SearchNote");
    m_progress->setRange(0, 0);
    m_progress->setTextVisible(false);
    m_progress->setMaximumHeight(6);
    auto* typed = new QHBoxLayout;
    auto* label = new QLabel(word("A&ddress"));
    label->setBuddy(m_address);
    m_address->setObjectName("DeviceAddress");
    m_address->setPlaceholderText(word("for example %1").arg("192.168.1.20"));
    m_addAddress->setObjectName("AddAddress");
    m_addAddress->setAutoDefault(false);
    typed->addWidget(label);
    typed->addWidget(m_address, 1);
    typed->addWidget(m_addAddress);
    column->addWidget(m_note);
    column->addWidget(m_progress);
    column->addWidget(m_devices, 1);
    column->addLayout(typed);
    connect(m_addAddress, &QPushButton::clicked, this, &FindCamerasDialog::addTyped);
    connect(m_address, &QLineEdit::textChanged, this, &FindCamerasDialog::check);
    return side;
}

QWidget* FindCamerasDialog::makeLogin()
{
    auto* side = new QWidget;
    auto* form = new QFormLayout(side);
    form->setContentsMargins(0, 0, 0, 0);
    m_user->setObjectName("DeviceUser");
    m_password->setObjectName("DevicePassword");
    m_password->setEchoMode(QLineEdit::Password);
    m_password->setInputMethodHints(Qt::ImhHiddenText | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    form->addRow(word("&User of those chosen"), m_user);
    form->addRow(word("&Password"), m_password);
    form->addRow(QString(), m_plain);
    return side;
}

QWidget* FindCamerasDialog::makeButtons()
{
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->addButton(m_again, QDialogButtonBox::ActionRole);
    buttons->addButton(m_add, QDialogButtonBox::ActionRole);
    m_again->setAutoDefault(false);
    m_add->setObjectName("AddFound");
    buttons->button(QDialogButtonBox::Close)->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_again, &QPushButton::clicked, this, &FindCamerasDialog::search);
    connect(m_add, &QPushButton::clicked, this, &FindCamerasDialog::addChosen);
    return buttons;
}

void FindCamerasDialog::search()
{
    m_search.start();
    showSearch();
}

void FindCamerasDialog::showSearch()
{
    const bool isRunning = m_search.isRunning();
    m_progress->setVisible(isRunning);
    m_again->setEnabled(!isRunning);
    if (!SoapLine::isBuilt())
        m_note->setText(word("This build has no ONVIF: cameras are added by their addresses."));
    else if (isRunning)
        m_note->setText(word("Looking for cameras of the network ..."));
    else if (m_devices->topLevelItemCount() == 0)
        m_note->setText(word("No camera has answered. One that is known can be typed below."));
    else
        m_note->setText(word("These cameras have answered."));
    check();
}

bool FindCamerasDialog::isKnown(const QUrl& address) const
{
    for (int i = 0; i < m_cameras->count(); ++i) {
        if (QUrl(m_cameras->at(i).about.onvifAddress) == address)
            return true;
    }
    return false;
}

QTreeWidgetItem* FindCamerasDialog::addDevice(const FoundDevice& device)
{
    for (int i = 0; i < m_devices->topLevelItemCount(); ++i) {
        if (addressOf(m_devices->topLevelItem(i)) == device.address)
            return m_devices->topLevelItem(i);
    }
    auto* row = new QTreeWidgetItem({device.name, device.model, device.address.authority()});
    row->setToolTip(NameColumn, device.name);
    row->setData(NameColumn, AddressRole, device.address);
    const bool known = isKnown(device.address);
    setChoice(row, !known, known ? word("added already") : word("new"));
    m_devices->addTopLevelItem(row);
    offer(row);
    if (!m_devices->currentItem())
        m_devices->setCurrentItem(row);
    check();
    return row;
}

/// Whoever is in the network may answer, and the login goes to all that are chosen: without the user only one
/// is, and that only while it is the only one.
void FindCamerasDialog::offer(QTreeWidgetItem* row)
{
    if (QTreeWidgetItem* former = std::exchange(m_offered, nullptr))
        former->setCheckState(NameColumn, Qt::Unchecked);
    if (!isOpen(row))
        return;
    if (m_devices->topLevelItemCount() == 1)
        m_offered = row;
    else
        row->setCheckState(NameColumn, Qt::Unchecked);
}

void FindCamerasDialog::addTyped()
{
    const QUrl address = deviceAddress(m_address->text());
    QTreeWidgetItem* row = addDevice({address.toString(), address.host(), {}, address});
    if (isOpen(row))
        row->setCheckState(NameColumn, Qt::Checked);
    if (row == m_offered)
        m_offered = nullptr;
    m_devices->setCurrentItem(row);
    m_address->clear();
    m_user->setFocus();
}

void FindCamerasDialog::check()
{
    if (m_offered && !isChosen(m_offered))
        m_offered = nullptr;
    bool hasChosen = false;
    for (int i = 0; i < m_devices->topLevelItemCount(); ++i)
        hasChosen = hasChosen || isChosen(m_devices->topLevelItem(i));
    m_add->setEnabled(hasChosen && SoapLine::isBuilt());
    // Return adds what was typed last.
    const bool isTyped = deviceAddress(m_address->text()).isValid();
    m_addAddress->setEnabled(isTyped);
    (isTyped ? m_addAddress : m_add)->setDefault(true);
}

void FindCamerasDialog::addChosen()
{
    for (int i = 0; i < m_devices->topLevelItemCount(); ++i) {
        QTreeWidgetItem* row = m_devices->topLevelItem(i);
        if (!isChosen(row))
            continue;
        ask(row, {addressOf(row), m_user->text().trimmed(), m_password->text(), {}, m_plain->isChecked()});
    }
}

void FindCamerasDialog::ask(QTreeWidgetItem* row, const OnvifLogin& login)
{
    setChoice(row, false, word("asking ..."));
    auto* intake = new CameraIntake(login, this);
    connect(intake, &CameraIntake::finished, this,
            [=](const OnvifFault& fault, const QVector<CameraDescription>& cameras) {
                intake->deleteLater();
                take(row, fault, cameras, login.password);
                if (fault.kind == OnvifFault::Kind::Untrusted)
                    askForTrust(
                        row, {login.address, login.user, login.password, fault.reason, login.isPlainAllowed});
            });
    intake->start();
}

/// The password is not sent before.
void FindCamerasDialog::askForTrust(QTreeWidgetItem* row, const OnvifLogin& login)
{
    auto* box = new TrustQuestion(login.address.authority(), login.certificate, this);
    connect(box, &TrustQuestion::trusted, this, [=] { ask(row, login); });
    box->open();
}

void FindCamerasDialog::take(QTreeWidgetItem* row, const OnvifFault& fault,
                             QVector<CameraDescription> cameras, const QString& password)
{
    if (fault)
        return setChoice(row, true, engineText(fault.text()));
    QVector<CameraDescription> all = m_cameras->descriptions();
    QHash<QString, QString> passwords;
    for (CameraDescription& camera : cameras) {
        camera.id = newCameraId();
        camera.name = freeName(camera.name, all);
        if (!camera.user.isEmpty())
            passwords.insert(camera.id, password);
        all.append(camera);
    }
    QString error;
    const bool isDone = m_cameras->setDescriptions(all, &error, passwords);
    row->setText(NameColumn, cameras.first().name);
    setChoice(row, !isDone, isDone ? word("added") : engineText(error));
}

QString FindCamerasDialog::freeName(const QString& name, const QVector<CameraDescription>& cameras) const
{
    const auto isTaken = [&cameras](const QString& wanted) {
        return std::any_of(cameras.begin(), cameras.end(),
                           [&wanted](const CameraDescription& camera) { return camera.name == wanted; });
    };
    QString free = name;
    for (int i = 2; isTaken(free); ++i)
        free = QString("%1 (%2)").arg(name).arg(i);
    return free;
}
