#include "window/MainWindow.h"

#include "alarms/AlarmCenter.h"
#include "cameras/CameraHub.h"
#include "cameras/CameraTree.h"
#include "cameras/ClientArchive.h"
#include "common/EngineText.h"
#include "common/EventLog.h"
#include "common/KioskPassword.h"
#include "common/Look.h"
#include "common/RelayLogin.h"
#include "common/UserFiles.h"
#include "common/Words.h"
#include "panes/PaneOverlay.h"
#include "settings/Autostart.h"
#include "settings/SettingsDialog.h"
#include "sound/SoundOutput.h"
#include "source/DecodeDevices.h"
#include "source/SystemDevice.h"
#include "tabs/LiveTab.h"
#include "views/ViewList.h"
#include "window/Kiosk.h"
#include "window/MainMenus.h"
#include "window/SecondWindows.h"

#include <CPaneDeck.h>

#include <QMenuBar>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>

#include <utility>

namespace {

constexpr int FullScreenMs = 200;

} // namespace

void MainWindow::askForSettings()
{
    QString unread;
    const SettingsDialog::Choice now{m_settings,
                                     m_alarms->rules(),
                                     RelayLogin::load(&unread).value_or(Login()),
                                     PaneOverlay::chosen(),
                                     Autostart::isOn(),
                                     m_views->start()};
    QStringList views;
    for (const DeckView& view : m_views->views())
        views.append(view.name);
    SettingsDialog dialog(now, m_cameras, views, ClientArchive::usualDirectory(),
                          UserFiles::usualDirectory(UserFiles::Kind::Snapshot), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const SettingsDialog::Choice choice = dialog.choice();
    m_alarms->setRules(choice.alarms);
    PaneOverlay::choose(choice.showsLabels);
    for (DeckTab* tab : tabs())
        tab->overlay()->setShown(choice.showsLabels);
    if (!Autostart::set(choice.startsWithSession))
        m_log->add(word("client"), word("can't write %1").arg("autostart"), EventLog::Level::Warning);
    if (QString error; !m_views->setStart(choice.startView, &error))
        m_log->add(word("client"), error, EventLog::Level::Warning);
    keepRelay(now.relay, choice.relay);
    takeSettings(choice.settings);
}

void MainWindow::keepRelay(const Login& before, const Login& now)
{
    QString error;
    const bool isSame = now.user == before.user && now.password == before.password;
    if (!isSame && !RelayLogin::keep(now, &error))
        m_log->add(word("client"), engineText(error), EventLog::Level::Warning);
}

void MainWindow::changeLanguage(const QString& code)
{
    ClientSettings settings = m_settings;
    settings.language = code;
    takeSettings(settings);
}

/// What the command line asked for in place of what is kept is kept only once it was changed.
void MainWindow::takeSettings(const ClientSettings& settings)
{
    const ClientSettings before = std::exchange(m_settings, settings);
    settings.saveChanges(before);
    m_log->showTechnical(settings.showsSignals);
    if (settings.soundDevice != before.soundDevice)
        m_hub->speaker()->choose(settings.soundDevice);
    if (settings.usesDevices != before.usesDevices && settings.usesDevices)
        useSystemDevices();
    else if (settings.usesDevices != before.usesDevices)
        DecodeDevices::use(nullptr);
    if (!settings.hasArchiveOf(before))
        m_archive->reopen(settings);
    // Who asked may be one of the menus that go.
    if (settings.language != before.language || settings.style != before.style)
        QTimer::singleShot(0, this, &MainWindow::rebuild);
}

/// Cameras, recordings and alarms go on while all that has words and a skin is made anew.
void MainWindow::rebuild()
{
    const int tab = m_tabs->currentIndex();
    const DeckView view = m_live->view();
    const QByteArray across = m_across->saveState();
    const QByteArray down = m_down->saveState();
    m_windows->end();
    delete m_windows;
    m_log->setParent(this);
    delete m_menus;
    setMenuBar(new QMenuBar);
    delete m_tabs;
    delete takeCentralWidget();
    disconnect(&m_cameras, nullptr, this, nullptr);
    disconnect(m_alarms->book(), nullptr, this, nullptr);
    applyLook(m_settings);
    buildPanels();
    m_live->setFirstView(view);
    openWindows();
    m_menus = new MainMenus(this);
    m_across->restoreState(across);
    m_down->restoreState(down);
    m_tabs->setCurrentIndex(tab);
    showAlarmCount();
    m_windows->restore();
}

void MainWindow::fillScreen(bool locked)
{
    const bool canLock = locked && KioskPassword::isSet();
    if (locked && !canLock)
        m_log->add(word("client"), word("not locked: the settings have no password"),
                   EventLog::Level::Warning);
    m_tabs->setCurrentIndex(0);
    // The deck has a layout by then.
    QTimer::singleShot(FullScreenMs, this, [this] {
        m_live->deck()->ChangeFull(true);
        m_live->deck()->activateWindow();
    });
    if (!canLock)
        return;
    // Whoever gets behind the deck finds nothing there.
    const bool showsLog = !m_log->isHidden();
    const QVector<QWidget*> parts{menuBar(), m_tree, m_log, m_tabs->tabBar()};
    for (QWidget* part : parts)
        part->hide();
    auto* kiosk = new Kiosk(this);
    connect(kiosk, &Kiosk::left, this, [this, parts, showsLog] {
        for (QWidget* part : parts)
            part->setVisible(part != m_log || showsLog);
        m_live->deck()->ChangeFull(false);
    });
}
