#include "manager/SeveralDialog.h"

#include "cameras/CameraList.h"
#include "cameras/PrivateFile.h"
#include "common/EngineText.h"
#include "common/Words.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr QSize UsualSize(620, 420);
constexpr qint64 MostBytes = 4 << 20;
constexpr int MostFaults = 3;

} // namespace

SeveralDialog::SeveralDialog(CameraList* cameras, QWidget* parent)
    : QDialog(parent), m_cameras(cameras), m_lines(new QPlainTextEdit), m_finding(new QLabel)
{
    setObjectName("SeveralDialog");
    setWindowTitle(word("Add several cameras"));
    resize(UsualSize);
    auto* about = new QLabel(word("A camera a &line: name, address, user, password; or the address alone."));
    about->setBuddy(m_lines);
    about->setWordWrap(true);
    m_lines->setObjectName("CameraLines");
    m_lines->setPlaceholderText("Yard, rtsp://192.168.1.20/stream1, admin, ...\nrtsp://192.168.1.21/stream1");
    m_lines->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_lines->setTabChangesFocus(true);
    // Addresses read to the right in every language.
    m_lines->setLayoutDirection(Qt::LeftToRight);
    m_finding->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_add = buttons->addButton(word("A&dd"), QDialogButtonBox::AcceptRole);
    QPushButton* file = buttons->addButton(word("From a &file ..."), QDialogButtonBox::ActionRole);
    auto* column = new QVBoxLayout(this);
    column->addWidget(about);
    column->addWidget(m_lines, 1);
    column->addWidget(m_finding);
    column->addWidget(buttons);
    connect(m_lines, &QPlainTextEdit::textChanged, this, &SeveralDialog::check);
    connect(file, &QPushButton::clicked, this, &SeveralDialog::askForFile);
    connect(buttons, &QDialogButtonBox::accepted, this, &SeveralDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SeveralDialog::reject);
    check();
}

void SeveralDialog::check()
{
    QStringList taken;
    for (int i = 0; i < m_cameras->count(); ++i)
        taken.append(m_cameras->at(i).name);
    m_content = CameraTable::read(m_lines->toPlainText(), taken);
    QStringList lines{word("Cameras to be added: %1").arg(m_content.cameras.size())};
    for (const QString& fault : m_content.faults.mid(0, MostFaults))
        lines.append(fault.section(": ", 0, -2) + ": " + engineText(fault.section(": ", -1)));
    if (m_content.faults.size() > MostFaults)
        lines.append(word("and %1 more lines that can't be taken").arg(m_content.faults.size() - MostFaults));
    m_finding->setText(lines.join('\n'));
    m_add->setEnabled(!m_content.cameras.isEmpty());
}

void SeveralDialog::askForFile()
{
    auto* dialog = new QFileDialog(this, word("Read cameras from a file"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilters({"CSV (*.csv *.txt)", "* (*)"});
    connect(dialog, &QFileDialog::fileSelected, this, &SeveralDialog::readFile);
    dialog->open();
}

void SeveralDialog::readFile(const QString& path)
{
    QString error;
    if (const auto content = readPrivateFile(path, MostBytes, &error))
        m_lines->setPlainText(QString::fromUtf8(*content).remove(QChar(0xfeff)));
    else
        m_finding->setText(engineText(error));
}

void SeveralDialog::accept()
{
    QString error;
    if (m_cameras->setDescriptions(m_cameras->descriptions() + m_content.cameras, &error,
                                   m_content.passwords))
        QDialog::accept();
    else
        m_finding->setText(engineText(error));
}
