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

QString LayoutName(int count)
{
    return count == 1 ? Word("One pane") : Word("%n panes").replace("%n", QString::number(count));
}

} // namespace

MainWindow::MainWindow(const ClientOptions& options) : m_pHub(new CameraHub(this))
{
    setWindowTitle("PaneDeck");
    resize(1280, 800);
    FillCameras(options);
    m_pLog = new EventLog;
    m_pArchive = new ClientArchive(m_cameras, m_pHub, m_pLog, options);
    BuildPanels();
    BuildMenus();
}

MainWindow::~MainWindow()
{
    // The tabs have something to say to the log when they go.
    delete m_pTabs;
    delete centralWidget();
    delete m_pArchive;
}

void MainWindow::FillCameras(const ClientOptions& options)
{
    for (const auto& source : options.sources)
        m_cameras.Add(source.first, source.second);
    if (options.sources.isEmpty())
        m_cameras.AddSynthetic(SyntheticCameras);
}

void MainWindow::BuildPanels()
{
    m_pTree = new CameraTree(m_cameras, nullptr);
    m_pTabs = new QTabWidget;
    m_pTabs->setDocumentMode(true);
    m_pTabs->tabBar()->setObjectName("Tabs");
    m_pLive = new LiveTab(m_cameras, m_pHub, m_pLog);
    AddTab(m_pLive, Word("Live"));
    AddTab(new AlarmTab(m_cameras, m_pHub, m_pLog, m_pArchive), Word("Alarm"));
    AddTab(new TourTab(m_cameras, m_pHub, m_pLog), Word("Tour"));
    AddTab(new PlaybackTab(m_pHub, m_pLog, m_pArchive), Word("Playback"));
    connect(m_pTabs, SIGNAL(tabBarClicked(int)), SLOT(slot_tabChosen(int)));
    connect(m_pTabs, SIGNAL(currentChanged(int)), SLOT(slot_tabChosen(int)));
    connect(m_pTree, SIGNAL(cameraChosen(const CameraRecord*)), SLOT(slot_cameraChosen(const CameraRecord*)));

    auto* across = new QSplitter(Qt::Horizontal);
    across->addWidget(m_pTree);
    across->addWidget(m_pTabs);
    across->setStretchFactor(1, 1);
    across->setSizes({220, 1060});
    auto* down = new QSplitter(Qt::Vertical);
    down->addWidget(across);
    down->addWidget(m_pLog);
    down->setStretchFactor(0, 1);
    down->setSizes({680, 110});
    setCentralWidget(down);
}

void MainWindow::BuildMenus()
{
    QList<QPair<QString, QVariant>> layouts;
    for (int count : LayoutCounts)
        layouts.append({LayoutName(count), count});
    QMenu* view = AddChoices(Word("&Layout"), SLOT(slot_layoutChosen(QAction*)), layouts, 9);
    view->addSeparator();
    view->addAction(Word("&Previous page"), this, SLOT(slot_previousPage()), Qt::CTRL | Qt::Key_PageUp);
    view->addAction(Word("&Next page"), this, SLOT(slot_nextPage()), Qt::CTRL | Qt::Key_PageDown);
    view->addAction(Word("&Full screen"), this, SLOT(slot_fullScreen()), Qt::Key_F11);

    QList<QPair<QString, QVariant>> scales;
    for (int scale = 0; scale <= WND_SCASE_9_64; ++scale)
        scales.append({Word(ScaleNames[scale]), scale});
    AddChoices(Word("&Scale"), SLOT(slot_scaleChosen(QAction*)), scales, int(WND_SCASE_FILL));
    AddChoices(Word("&Mouse"), SLOT(slot_mouseChosen(QAction*)),
                                    {{Word("No function"), 0}, {Word("PTZ"), 1}, {Word("Rectangle"), 2}}, 0);

    QList<QPair<QString, QVariant>> languages;
    for (const Language& language : AvailableLanguages())
        languages.append({language.name, language.code});
    AddChoices(Word("L&anguage"), SLOT(slot_languageChosen(QAction*)), languages, ChosenLanguage());

    QMenu* window = menuBar()->addMenu(Word("&Window"));
    QAction* showLog = window->addAction(Word("Event &log"));
    showLog->setCheckable(true);
    showLog->setChecked(true);
    connect(showLog, SIGNAL(toggled(bool)), m_pLog, SLOT(setVisible(bool)));
    window->addAction(Word("Remove the &sample recordings"), m_pArchive, &ClientArchive::slot_removeSample);
    window->addAction(Word("&About"), this, &MainWindow::slot_about);
}

QMenu* MainWindow::AddChoices(const QString& title, const char* slot,
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
    connect(group, SIGNAL(triggered(QAction*)), slot);
    return menu;
}

void MainWindow::AddTab(DeckTab* tab, const QString& title)
{
    m_pTabs->addTab(tab, title);
}

DeckTab* MainWindow::Current() const
{
    return static_cast<DeckTab*>(m_pTabs->currentWidget());
}

void MainWindow::slot_layoutChosen(QAction* action)
{
    Current()->Deck()->SetShowWndNo(action->data().toInt());
}

void MainWindow::slot_scaleChosen(QAction* action)
{
    Current()->SetScale(WndScase(action->data().toInt()));
}

void MainWindow::slot_mouseChosen(QAction* action)
{
    Current()->SetMouseFunction(action->data().toInt());
}

void MainWindow::slot_previousPage()
{
    Current()->Deck()->OnPreviePage();
}

void MainWindow::slot_nextPage()
{
    Current()->Deck()->OnNextPage();
}

void MainWindow::slot_fullScreen()
{
    Current()->Deck()->ChangeFull(true);
}

void MainWindow::slot_languageChosen(QAction* action)
{
    ChooseLanguage(action->data().toString());
    m_pLog->Add("client", Word("The language changes at the next start."));
}

/// A deck that fills a screen may lie behind this window, which then shows an empty tab in its place.
void MainWindow::slot_tabChosen(int index)
{
    auto* tab = static_cast<DeckTab*>(m_pTabs->widget(index));
    if (tab && tab->Deck()->isWindow())
        tab->Deck()->ChangeFull(false);
}

void MainWindow::slot_cameraChosen(const CameraRecord* camera)
{
    Current()->ShowCamera(*camera, -1);
}

void MainWindow::slot_about()
{
    QMessageBox::about(this, windowTitle(),
                       Word("The reference client of PaneDeck %1.").arg(PANEDECK_VERSION));
}
