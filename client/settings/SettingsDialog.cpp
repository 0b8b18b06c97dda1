#include "settings/SettingsDialog.h"

#include "common/KioskPassword.h"
#include "common/Languages.h"
#include "common/Words.h"
#include "settings/AlarmPage.h"
#include "settings/FolderField.h"
#include "settings/SitesPage.h"
#include "sound/SoundOutput.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>

#include <thread>

namespace {

constexpr int LeastLetters = 24;

QComboBox* newChoice(const QStringList& texts, int chosen)
{
    auto* box = new QComboBox;
    box->addItems(texts);
    box->setCurrentIndex(chosen);
    return box;
}

QSpinBox* newNumber(int least, int most, int value, const QString& unit)
{
    auto* box = new QSpinBox;
    box->setRange(least, most);
    box->setValue(value);
    box->setSuffix(" " + unit);
    return box;
}

QCheckBox* newCheck(const QString& text, bool on)
{
    auto* check = new QCheckBox(text);
    check->setChecked(on);
    return check;
}

/// A page with a form, whose rows wrap where a language is wordy.
QFormLayout* newForm(QWidget** page)
{
    *page = new QWidget;
    auto* form = new QFormLayout(*page);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    return form;
}

} // namespace

SettingsDialog::SettingsDialog(const Choice& now, const CameraList& cameras, const QStringList& views,
                               const QString& usualArchive, const QString& usualSnapshots, QWidget* parent)
    : QDialog(parent), m_now(now), m_fault(new QLabel), m_alarms(new AlarmPage(now.alarms, cameras)),
      m_sites(new SitesPage(now.settings.indexes, now.relay))
{
    setObjectName("SettingsDialog");
    setWindowTitle(word("Settings"));
    auto* pages = new QTabWidget;
    pages->addTab(generalPage(views), word("General"));
    pages->addTab(picturePage(usualSnapshots), word("Pictures"));
    pages->addTab(recordingPage(usualArchive), word("Recordings"));
    pages->addTab(m_alarms, word("Alarms"));
    pages->addTab(soundPage(), word("Sound"));
    pages->addTab(m_sites, word("Sites"));
    m_fault->setObjectName("SettingsFault");
    m_fault->setWordWrap(true);
    m_fault->hide();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &SettingsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SettingsDialog::reject);
    auto* column = new QVBoxLayout(this);
    column->addWidget(pages, 1);
    column->addWidget(m_fault);
    column->addWidget(buttons);
    resize(660, 420);
}

QWidget* SettingsDialog::generalPage(const QStringList& views)
{
    QWidget* page = nullptr;
    QFormLayout* form = newForm(&page);
    m_language = new QComboBox;
    fillLanguages();
    m_style = newChoice({word("As installed"), word("Dark"), word("Light")}, m_now.settings.style);
    m_startView = new QComboBox;
    fillViews(views);
    m_autostart = newCheck(word("Start &with the session"), m_now.startsWithSession);
    m_signals = newCheck(word("&Technical lines in the log"), m_now.settings.showsSignals);
    form->addRow(word("&Language:"), m_language);
    form->addRow(word("&Skin:"), m_style);
    form->addRow(word("First &view:"), m_startView);
    form->addRow(m_autostart);
    form->addRow(m_signals);
    auto* password = new QPushButton(word("&Password of a locked screen ..."));
    connect(password, &QPushButton::clicked, this, &SettingsDialog::changePassword);
    form->addRow(password);
    return page;
}

void SettingsDialog::fillLanguages()
{
    for (const Language& language : availableLanguages())
        m_language->addItem(language.name, language.code);
    m_language->setCurrentIndex(m_language->findData(m_now.settings.language));
}

/// A long name must not make the window wide.
void SettingsDialog::fillViews(const QStringList& views)
{
    m_startView->setObjectName("SettingsView");
    m_startView->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_startView->setMinimumContentsLength(LeastLetters);
    m_startView->addItem(word("The one that was shown last"), QString());
    for (const QString& view : views)
        m_startView->addItem(view, view);
    m_startView->setCurrentIndex(qMax(0, m_startView->findData(m_now.startView)));
}

QWidget* SettingsDialog::picturePage(const QString& usualSnapshots)
{
    QWidget* page = nullptr;
    QFormLayout* form = newForm(&page);
    m_labels = newCheck(word("Picture &labels"), m_now.showsLabels);
    m_decoding = newChoice({word("By the machine's devices, where it can"), word("By the processor alone")},
                           m_now.settings.usesDevices ? 0 : 1);
    m_snapshots = new FolderField(m_now.settings.snapshotDir, usualSnapshots, word("Folder of snapshots"));
    form->addRow(m_labels);
    form->addRow(word("&Decoding, from the next picture stream on:"), m_decoding);
    form->addRow(word("&Folder of snapshots:"), m_snapshots);
    return page;
}

QWidget* SettingsDialog::recordingPage(const QString& usualArchive)
{
    QWidget* page = nullptr;
    QFormLayout* form = newForm(&page);
    const ClientSettings& now = m_now.settings;
    m_archive = new FolderField(now.archiveDir, usualArchive, word("Folder of recordings"));
    m_gigabytes = newNumber(1, ClientSettings::MostGigabytes, now.archiveGigabytes, "GB");
    m_days = newNumber(0, ClientSettings::MostDays, now.archiveDays, word("days"));
    m_days->setSpecialValueText(word("Any age"));
    form->addRow(word("&Folder of recordings:"), m_archive);
    form->addRow(word("&At most:"), m_gigabytes);
    form->addRow(word("&Kept for:"), m_days);
    return page;
}

QWidget* SettingsDialog::soundPage()
{
    QWidget* page = nullptr;
    QFormLayout* form = newForm(&page);
    m_device = newChoice({word("As the system has it")}, 0);
    if (!m_now.settings.soundDevice.isEmpty())
        addSoundDevices({m_now.settings.soundDevice});
    m_device->setCurrentIndex(m_device->count() - 1);
    form->addRow(word("&Loudspeaker:"), m_device);
    findSoundDevices();
    return page;
}

/// A sound server may let one wait.
void SettingsDialog::findSoundDevices()
{
    const QPointer<SettingsDialog> self(this);
    std::thread([self] {
        const QStringList names = SoundOutput::devices();
        const auto tell = [self, names] {
            if (self)
                self->addSoundDevices(names);
        };
        if (QCoreApplication* application = QCoreApplication::instance())
            QMetaObject::invokeMethod(application, tell);
    }).detach();
}

void SettingsDialog::addSoundDevices(const QStringList& names)
{
    for (const QString& name : names) {
        if (m_device->findData(name) < 0)
            m_device->addItem(name, name);
    }
}

SettingsDialog::Choice SettingsDialog::choice() const
{
    Choice choice;
    ClientSettings& settings = choice.settings;
    settings.language = m_language->currentData().toString();
    settings.style = m_style->currentIndex();
    settings.archiveDir = m_archive->folder();
    settings.archiveGigabytes = m_gigabytes->value();
    settings.archiveDays = m_days->value();
    settings.usesDevices = m_decoding->currentIndex() == 0;
    settings.snapshotDir = m_snapshots->folder();
    settings.soundDevice = m_device->currentData().toString();
    settings.showsSignals = m_signals->isChecked();
    settings.indexes = m_sites->indexes();
    choice.relay = m_sites->relay();
    choice.alarms = m_alarms->rules();
    choice.showsLabels = m_labels->isChecked();
    choice.startsWithSession = m_autostart->isChecked();
    choice.startView = m_startView->currentData().toString();
    return choice;
}

QString SettingsDialog::fault() const
{
    for (const FolderField* field : {m_snapshots, m_archive}) {
        const QString folder = field->folder();
        if (!folder.isEmpty() && (QDir::isRelativePath(folder) || !QDir().mkpath(folder)))
            return word("There can be no folder %1").arg(folder);
    }
    return m_sites->fault();
}

void SettingsDialog::accept()
{
    m_fault->setText(fault());
    m_fault->setVisible(!m_fault->text().isEmpty());
    if (m_fault->text().isEmpty())
        QDialog::accept();
}

/// At once: it is nothing that one would want to take back with the rest.
void SettingsDialog::changePassword()
{
    const auto ask = [this](const QString& text, QString* given) {
        bool isGiven = false;
        *given = QInputDialog::getText(this, windowTitle(), text, QLineEdit::Password, {}, &isGiven);
        return isGiven;
    };
    QString text;
    if (KioskPassword::isSet() &&
        (!ask(word("The password until now:"), &text) || !KioskPassword::matches(text)))
        return;
    QString again;
    if (!ask(word("The new password, empty for none:"), &text) || !ask(word("Once more:"), &again))
        return;
    if (text == again)
        KioskPassword::set(text);
    else
        QMessageBox::warning(this, windowTitle(), word("The two are not the same; nothing was changed."));
}
