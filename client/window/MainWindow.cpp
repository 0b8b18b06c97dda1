#include "window/MainWindow.h"

#include "alarms/AlarmCenter.h"
#include "alarms/FleetAlarms.h"
#include "cameras/CameraFile.h"
#include "cameras/CameraHub.h"
#include "cameras/CameraTree.h"
#include "cameras/ClientArchive.h"
#include "cameras/FleetDesk.h"
#include "common/ClientOptions.h"
#include "common/EngineText.h"
#include "common/EventLog.h"
#include "common/Words.h"
#include "manager/CameraActions.h"
#include "manager/WelcomePage.h"
#include "panes/PtzQuestion.h"
#include "playback/PlaybackTab.h"
#include "sound/SoundOutput.h"
#include "tabs/AlarmTab.h"
#include "tabs/LiveTab.h"
#include "tabs/TabPage.h"
#include "tabs/TourTab.h"
#include "views/ViewList.h"
#include "window/LiveWindow.h"
#include "window/MainMenus.h"
#include "window/SecondWindows.h"

#include <CPaneDeck.h>

#include <QCloseEvent>
#include <QGuiApplication>
#include <QSettings>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QTime>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int SyntheticCameras = 64;

bool isFirstStart(const ClientOptions& options)
{
    return QSettings().allKeys().isEmpty() && !ClientArchive::isThere(ClientSettings::of(options));
}

} // namespace

MainWindow::MainWindow(const ClientOptions& options)
    : m_settings(ClientSettings::of(options)), m_hub(new CameraHub(m_cameras, this))
{
    setObjectName("MainWindow");
    setWindowTitle("PaneDeck");
    m_log = new EventLog;
    m_log->showTechnical(m_settings.showsSignals);
    m_hub->speaker()->choose(m_settings.soundDevice);
    fillCameras(options);
    m_archive = new ClientArchive(m_cameras, m_hub, m_log, m_settings, m_fleet.get());
    m_alarms =
        new AlarmCenter(m_cameras, m_hub, m_archive, options.isSynthetic || !options.sources.isEmpty());
    if (m_fleet)
        m_fleetAlarms = std::make_unique<FleetAlarms>(m_fleet.get(), m_cameras, m_alarms);
    buildPanels();
    openViews(options.view);
    m_menus = new MainMenus(this);
    restorePlace();
}

MainWindow::~MainWindow()
{
    keepPlace();
    m_windows->end();
    // The tabs have something to say to the log when they go.
    delete m_tabs;
    delete centralWidget();
    m_fleetAlarms.reset();
    delete m_alarms;
    delete m_archive;
}

/// Cameras of the command line and the built-in ones are for a trial, which leaves the user's own alone.
void MainWindow::fillCameras(const ClientOptions& options)
{
    for (const SourceAddress& source : options.sources)
        m_cameras.add(source);
    const QString path = options.camerasPath.isEmpty() ? CameraFile::userPath() : options.camerasPath;
    if (!options.sites.isEmpty()) {
        joinFleet(options.sites, path, options.relayLogin);
        return;
    }
    const bool hasFile = CameraFile(path).exists();
    const bool isShown = options.isSynthetic || (!options.picturesDir.isEmpty() && !hasFile);
    if (options.sources.isEmpty() && isShown)
        m_cameras.addSynthetic(SyntheticCameras);
    if (options.sources.isEmpty() && !isShown)
        openCameras(path, !hasFile && isFirstStart(options));
}

/// Whoever has used the built-in cameras before there was a list has them until there is one.
void MainWindow::openCameras(const QString& path, bool isFirstStart)
{
    const auto tell = [this](const QString& error) { m_log->add(word("client"), engineText(error)); };
    connect(&m_cameras, &CameraList::troubled, m_log, tell);
    if (!isFirstStart)
        m_cameras.addSynthetic(SyntheticCameras);
    QString error;
    if (!m_cameras.keepIn(path, &error) || (isFirstStart && !m_cameras.setDescriptions({}, &error))) {
        m_trouble = engineText(error);
        tell(error);
    }
}

void MainWindow::joinFleet(const QVector<SiteAddress>& sites, const QString& camerasPath,
                           const std::optional<Login>& relayLogin)
{
    const auto tell = [this](const QString& line) { m_log->add(word("client"), engineText(line)); };
    m_fleet = std::make_unique<FleetDesk>(sites, &m_cameras, camerasPath);
    m_hub->setLeases(m_fleet->leases());
    if (relayLogin)
        m_hub->setRelay([this, login = *relayLogin](const CameraRecord& camera, bool isSmall) {
            return m_fleet->relayOf(camera.about, isSmall, login);
        });
    new PtzQuestion(m_fleet->leases(), m_cameras, this);
    connect(m_fleet.get(), &FleetDesk::told, m_log, tell);
    connect(&m_cameras, &CameraList::troubled, m_log, tell);
}

void MainWindow::buildPanels()
{
    m_tree = new CameraTree(m_cameras, nullptr);
    if (m_fleet) {
        const auto showSites = [this] { m_tree->setSites(m_fleet->sites()); };
        connect(m_fleet.get(), &FleetDesk::sitesChanged, m_tree, showSites);
        showSites();
    }
    m_cameraActions = new CameraActions(&m_cameras, m_tree);
    connect(m_cameraActions, &CameraActions::told, m_log,
            [this](const QString& line) { m_log->add(word("client"), line); });
    connect(m_cameraActions, &CameraActions::failed, m_log,
            [this](const QString& error) { m_log->add(word("client"), error); });
    m_tabs = new QTabWidget;
    m_tabs->setDocumentMode(true);
    m_tabs->tabBar()->setObjectName("Tabs");
    m_live = new LiveTab(m_cameras, m_hub, m_log);
    addTab(word("Live"), [this] { return m_live; })->tab();
    m_alarmPage = addTab(word("Alarm"), [this] { return makeAlarmTab(); });
    addTab(word("Tour"), [this] { return new TourTab(m_cameras, m_hub, m_log, m_views); });
    m_playbackPage = addTab(word("Playback"), [this] { return new PlaybackTab(m_hub, m_log, m_archive); });
    connect(m_tabs, &QTabWidget::tabBarClicked, this, &MainWindow::bringBackDeck);
    connect(m_tabs, &QTabWidget::currentChanged, this, &MainWindow::bringBackDeck);
    connect(m_tree, &CameraTree::cameraChosen, this, &MainWindow::showCamera);
    connect(m_alarms->book(), &AlarmBook::changed, this, &MainWindow::showAlarmCount);
    connect(m_alarms, &AlarmCenter::raised, m_log, [this](const CameraRecord* camera) {
        const QString text = word("%1, motion %2").arg(camera->name, QTime::currentTime().toString());
        m_log->add(word("alarm"), text, EventLog::Level::Technical);
    });

    buildWelcome();

    m_across = new QSplitter(Qt::Horizontal);
    m_across->addWidget(m_tree);
    m_across->addWidget(m_middle);
    m_across->setStretchFactor(1, 1);
    m_across->setSizes({220, 1060});
    m_down = new QSplitter(Qt::Vertical);
    m_down->addWidget(m_across);
    m_down->addWidget(m_log);
    m_down->setStretchFactor(0, 1);
    m_down->setSizes({680, 110});
    setCentralWidget(m_down);
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (!std::exchange(m_wasShown, true))
        QTimer::singleShot(0, m_windows, &SecondWindows::restore);
}

/// The program ends with this window.
void MainWindow::closeEvent(QCloseEvent* event)
{
    QMainWindow::closeEvent(event);
    m_windows->end();
}

void MainWindow::buildWelcome()
{
    m_welcome = new WelcomePage(m_cameraActions->findAction(), m_cameraActions->addAction());
    m_welcome->setTrouble(m_trouble);
    m_middle = new QStackedWidget;
    m_middle->addWidget(m_tabs);
    m_middle->addWidget(m_welcome);
    connect(m_welcome, &WelcomePage::syntheticWanted, m_cameraActions, &CameraActions::addSynthetic);
    connect(&m_cameras, &CameraList::added, this, &MainWindow::showWelcome);
    connect(&m_cameras, &CameraList::removed, this, &MainWindow::showWelcome);
    showWelcome();
}

void MainWindow::showWelcome()
{
    m_middle->setCurrentWidget(m_cameras.count() > 0 ? static_cast<QWidget*>(m_tabs) : m_welcome);
}

DeckTab* MainWindow::makeAlarmTab()
{
    auto* tab = new AlarmTab(m_hub, m_log, m_archive, m_alarms);
    connect(tab, &AlarmTab::playAsked, this, &MainWindow::playAlarm);
    return tab;
}

TabPage* MainWindow::addTab(const QString& title, std::function<DeckTab*()> make)
{
    auto* page = new TabPage(std::move(make));
    m_tabs->tabBar()->setTabData(m_tabs->addTab(page, title), title);
    return page;
}

DeckTab* MainWindow::current() const
{
    return static_cast<TabPage*>(m_tabs->currentWidget())->tab();
}

QVector<DeckTab*> MainWindow::tabs() const
{
    QVector<DeckTab*> made;
    for (int i = 0; i < m_tabs->count(); ++i) {
        if (DeckTab* tab = static_cast<TabPage*>(m_tabs->widget(i))->made())
            made.append(tab);
    }
    for (const LiveWindow* window : m_windows->windows())
        made.append(window->live());
    return made;
}

/// A deck that fills a screen may lie behind this window, which then shows an empty tab in its place.
void MainWindow::bringBackDeck(int index)
{
    const auto* page = static_cast<TabPage*>(m_tabs->widget(index));
    DeckTab* tab = page ? page->made() : nullptr;
    if (tab && tab->deck()->isWindow())
        tab->deck()->ChangeFull(false);
}

void MainWindow::showCamera(const CameraRecord* camera)
{
    current()->showCamera(*camera, -1);
}

void MainWindow::playAlarm(const QString& cameraId, qint64 fromMs)
{
    const CameraRecord* camera = m_cameras.byId(cameraId);
    if (!camera)
        return;
    m_tabs->setCurrentWidget(m_playbackPage);
    static_cast<PlaybackTab*>(m_playbackPage->tab())->showMoment(*camera, fromMs);
}

void MainWindow::showAlarmCount()
{
    const int count = m_alarms->book()->unseenCount();
    const int tab = m_tabs->indexOf(m_alarmPage);
    const QString name = m_tabs->tabBar()->tabData(tab).toString();
    m_tabs->setTabText(tab, count > 0 ? QString("%1 (%2)").arg(name).arg(count) : name);
    setWindowTitle(count > 0 ? QString("(%1) PaneDeck").arg(count) : QString("PaneDeck"));
}
