#include "window/MainWindow.h"

#include "cameras/CameraHub.h"
#include "cameras/CameraTree.h"
#include "cameras/ClientArchive.h"
#include "common/ClientOptions.h"
#include "common/EventLog.h"
#include "common/Languages.h"
#include "common/Words.h"
#include "tabs/AlarmTab.h"
#include "tabs/LiveTab.h"
#include "tabs/PlaybackTab.h"
#include "tabs/TourTab.h"

#include <CPaneDeck.h>

#include <QActionGroup>
#include <QMenuBar>
#include <QMessageBox>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>

namespace {

constexpr int SyntheticCameras = 64;
constexpr int LayoutCounts[] = {1, 4, 6, 8, 9, 16, 25, 36, 49, 64};

const char* const ScaleNames[] = {"Video", "Fill", "1:1",  "4:3",  "3:4", "5:4",
                                  "4:5",   "16:9", "9:16", "64:9", "9:64"};

QString layoutName(int count)
{
    return count == 1 ? word("One pane") : word("%n panes").replace("%n", QString::number(count));
}

} // namespace

MainWindow::MainWindow(const ClientOptions& options) : m_hub(new CameraHub(this))
{
    setWindowTitle("PaneDeck");
    resize(1280, 800);
    fillCameras(options);
    m_log = new EventLog;
    m_archive = new ClientArchive(m_cameras, m_hub, m_log, options);
    buildPanels();
    buildMenus();
}

MainWindow::~MainWindow()
{
    // The tabs have something to say to the log when they go.
    delete m_tabs;
    delete centralWidget();
    delete m_archive;
}

void MainWindow::fillCameras(const ClientOptions& options)
{
    for (const SourceAddress& source : options.sources)
        m_cameras.add(source);
    if (options.sources.isEmpty())
        m_cameras.addSynthetic(SyntheticCameras);
}

void MainWindow::buildPanels()
{
    m_tree = new CameraTree(m_cameras, nullptr);
    m_tabs = new QTabWidget;
    m_tabs->setDocumentMode(true);
    m_tabs->tabBar()->setObjectName("Tabs");
    m_live = new LiveTab(m_cameras, m_hub, m_log);
    addTab(m_live, word("Live"));
    addTab(new AlarmTab(m_cameras, m_hub, m_log, m_archive), word("Alarm"));
    addTab(new TourTab(m_cameras, m_hub, m_log), word("Tour"));
    addTab(new PlaybackTab(m_hub, m_log, m_archive), word("Playback"));
    connect(m_tabs, &QTabWidget::tabBarClicked, this, &MainWindow::bringBackDeck);
    connect(m_tabs, &QTabWidget::currentChanged, this, &MainWindow::bringBackDeck);
    connect(m_tree, &CameraTree::cameraChosen, this, &MainWindow::showCamera);

    auto* across = new QSplitter(Qt::Horizontal);
    across->addWidget(m_tree);
    across->addWidget(m_tabs);
    across->setStretchFactor(1, 1);
    across->setSizes({220, 1060});
    auto* down = new QSplitter(Qt::Vertical);
    down->addWidget(across);
    down->addWidget(m_log);
    down->setStretchFactor(0, 1);
    down->setSizes({680, 110});
    setCentralWidget(down);
}

void MainWindow::buildMenus()
{
    QList<QPair<QString, QVariant>> layouts;
    for (int count : LayoutCounts)
        layouts.append({layoutName(count), count});
    QMenu* view = addChoices(word("&Layout"), &MainWindow::chooseLayout, layouts, 9);
    view->addSeparator();
    view->addAction(word("&Previous page"), this, &MainWindow::showPreviousPage, Qt::CTRL | Qt::Key_PageUp);
    view->addAction(word("&Next page"), this, &MainWindow::showNextPage, Qt::CTRL | Qt::Key_PageDown);
    view->addAction(word("&Full screen"), this, &MainWindow::fillScreen, Qt::Key_F11);

    QList<QPair<QString, QVariant>> scales;
    for (int scale = 0; scale <= WND_SCASE_9_64; ++scale)
        scales.append({word(ScaleNames[scale]), scale});
    addChoices(word("&Scale"), &MainWindow::chooseScale, scales, int(WND_SCASE_FILL));
    addChoices(word("&Mouse"), &MainWindow::chooseMouse,
               {{word("No function"), 0}, {word("PTZ"), 1}, {word("Rectangle"), 2}}, 0);

    QList<QPair<QString, QVariant>> languages;
    for (const Language& language : availableLanguages())
        languages.append({language.name, language.code});
    addChoices(word("L&anguage"), &MainWindow::keepLanguage, languages, chosenLanguage());

    QMenu* window = menuBar()->addMenu(word("&Window"));
    QAction* showLog = window->addAction(word("Event &log"));
    showLog->setCheckable(true);
    showLog->setChecked(true);
    connect(showLog, &QAction::toggled, m_log, &EventLog::setVisible);
    window->addAction(word("Remove the &sample recordings"), m_archive, &ClientArchive::removeSample);
    window->addAction(word("&About"), this, &MainWindow::tellAbout);
}

QMenu* MainWindow::addChoices(const QString& title, void (MainWindow::*choose)(QAction*),
                              const QList<QPair<QString, QVariant>>& choices, const QVariant& checked)
{
    QMenu* menu = menuBar()->addMenu(title);
    auto* group = new QActionGroup(menu);
    for (const auto& choice : choices) {
        QAction* action = menu->addAction(choice.first);
        action->setData(choice.second);
        action->setCheckable(true);
        action->setChecked(choice.second == checked);
        group->addAction(action);
    }
    connect(group, &QActionGroup::triggered, this, choose);
    return menu;
}

void MainWindow::addTab(DeckTab* tab, const QString& title)
{
    m_tabs->addTab(tab, title);
}

DeckTab* MainWindow::current() const
{
    return static_cast<DeckTab*>(m_tabs->currentWidget());
}

void MainWindow::chooseLayout(QAction* action)
{
    current()->deck()->SetShowWndNo(action->data().toInt());
}

void MainWindow::chooseScale(QAction* action)
{
    current()->setScale(WndScase(action->data().toInt()));
}

void MainWindow::chooseMouse(QAction* action)
{
    current()->setMouseFunction(action->data().toInt());
}

void MainWindow::showPreviousPage()
{
    current()->deck()->OnPreviePage();
}

void MainWindow::showNextPage()
{
    current()->deck()->OnNextPage();
}

void MainWindow::fillScreen()
{
    current()->deck()->ChangeFull(true);
}

void MainWindow::keepLanguage(QAction* action)
{
    chooseLanguage(action->data().toString());
    m_log->add("client", word("The language changes at the next start."));
}

/// A deck that fills a screen may lie behind this window, which then shows an empty tab in its place.
void MainWindow::bringBackDeck(int index)
{
    auto* tab = static_cast<DeckTab*>(m_tabs->widget(index));
    if (tab && tab->deck()->isWindow())
        tab->deck()->ChangeFull(false);
}

void MainWindow::showCamera(const CameraRecord* camera)
{
    current()->showCamera(*camera, -1);
}

void MainWindow::tellAbout()
{
    QMessageBox::about(this, windowTitle(),
                       word("The reference client of PaneDeck %1.").arg(PANEDECK_VERSION));
}
