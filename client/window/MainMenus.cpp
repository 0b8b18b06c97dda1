#include "window/MainMenus.h"

#include "cameras/ClientArchive.h"
#include "common/EventLog.h"
#include "common/Languages.h"
#include "common/Words.h"
#include "help/AboutWindow.h"
#include "help/KeysWindow.h"
#include "manager/CameraActions.h"
#include "panes/PaneKeys.h"
#include "panes/PaneOverlay.h"
#include "panes/PaneZoom.h"
#include "tabs/DeckTab.h"
#include "tabs/LiveTab.h"
#include "views/ViewMenu.h"
#include "window/LayoutMenu.h"
#include "window/MainWindow.h"
#include "window/PaneMenu.h"
#include "window/SecondWindows.h"

#include <CPaneDeck.h>

#include <QActionGroup>
#include <QMenuBar>

namespace {

constexpr const char* ScaleNames[] = {"Video", "Fill", "1:1",  "4:3",  "3:4", "5:4",
                                      "4:5",   "16:9", "9:16", "64:9", "9:64"};

} // namespace

MainMenus::MainMenus(MainWindow* window) : QObject(window), m_window(window)
{
    m_window->cameraActions()->fill(m_window->menuBar()->addMenu(word("&Cameras")));
    addLayouts();
    addView();
    addPane();
    addScales();
    addMouse();
    addLanguages();
    addWindow();
    addHelp();
}

void MainMenus::addLayouts()
{
    new LayoutMenu(m_window->menuBar()->addMenu(word("&Layout")),
                   [this] { return m_window->current()->deck(); });
}

void MainMenus::addView()
{
    QMenu* menu = m_window->menuBar()->addMenu(word("&View"));
    auto* views = new ViewMenu(menu, m_window->live(), m_window->views());
    connect(views, &ViewMenu::chosen, m_window, &MainWindow::takeView);
    connect(views, &ViewMenu::told, this,
            [this](const QString& text) { m_window->log()->add(word("live"), text); });
    menu->addSeparator();
    QAction* labels = menu->addAction(word("Picture &labels"));
    labels->setCheckable(true);
    labels->setChecked(PaneOverlay::chosen());
    connect(labels, &QAction::toggled, this, [this](bool shown) {
        PaneOverlay::choose(shown);
        for (DeckTab* tab : m_window->tabs())
            tab->overlay()->setShown(shown);
    });
}

void MainMenus::addPane()
{
    offerActivePane(m_window->menuBar()->addMenu(word("&Pane")), [this] { return m_window->current(); });
}

void MainMenus::addScales()
{
    Choices choices;
    for (int scale = 0; scale <= WND_SCASE_9_64; ++scale)
        choices.append({word(ScaleNames[scale]), scale});
    addChoices(word("&Scale"), choices, int(WND_SCASE_FILL),
               [this](const QVariant& scale) { m_window->current()->setScale(WndScase(scale.toInt())); });
}

void MainMenus::addMouse()
{
    const Choices choices{{word("No function"), 0}, {word("PTZ"), 1}, {word("Rectangle"), 2}};
    QMenu* menu = addChoices(word("&Mouse"), choices, 0, [this](const QVariant& function) {
        m_window->current()->setMouseFunction(function.toInt());
    });
    // Each tab has its own, which the menu of a pane changes too.
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        for (QAction* action : menu->actions())
            action->setChecked(action->data().toInt() == m_window->current()->mouseFunction());
    });
}

void MainMenus::addLanguages()
{
    Choices choices;
    for (const Language& language : availableLanguages())
        choices.append({language.name, language.code});
    addChoices(word("L&anguage"), choices, startLanguage(),
               [this](const QVariant& code) { m_window->changeLanguage(code.toString()); });
}

void MainMenus::addWindow()
{
    QMenu* menu = m_window->menuBar()->addMenu(word("&Window"));
    QAction* showLog = menu->addAction(word("Event &log"));
    showLog->setCheckable(true);
    showLog->setChecked(!m_window->log()->isHidden());
    connect(showLog, &QAction::toggled, m_window->log(), &EventLog::setVisible);
    m_window->secondWindows()->addTo(menu);
    menu->addAction(word("Remove the &sample recordings"), m_window->archive(), &ClientArchive::removeSample);
    QAction* settings = menu->addAction(word("Se&ttings ..."), m_window, &MainWindow::askForSettings);
    settings->setShortcut(Qt::CTRL | Qt::Key_Comma);
}

QMenu* MainMenus::addChoices(const QString& title, const Choices& choices, const QVariant& checked,
                             std::function<void(const QVariant&)> choose)
{
    QMenu* menu = m_window->menuBar()->addMenu(title);
    auto* group = new QActionGroup(menu);
    for (const auto& choice : choices) {
        QAction* action = menu->addAction(choice.first);
        action->setData(choice.second);
        action->setCheckable(true);
        action->setChecked(choice.second == checked);
        group->addAction(action);
    }
    connect(group, &QActionGroup::triggered, this,
            [choose = std::move(choose)](QAction* action) { choose(action->data()); });
    return menu;
}

void MainMenus::addHelp()
{
    QMenu* menu = m_window->menuBar()->addMenu(word("&Help"));
    QAction* keys = menu->addAction(word("&Keys"), this, &MainMenus::showKeys);
    keys->setShortcut(Qt::Key_F1);
    menu->addAction(word("&About"), this, &MainMenus::showAbout);
}

/// Those of the menus are asked from the menus themselves.
void MainMenus::showKeys()
{
    auto* window = new KeysWindow(m_window);
    window->addActions(word("Menus"), m_window->menuBar());
    window->addKeys(word("Live, alarm and tour"), PaneKeys::help() + PaneZoom::help());
    window->addKeys(word("Playback"), KeysWindow::playback());
    window->addKeys(word("Editor of custom layouts"), KeysWindow::layoutEditor());
    window->show();
}

void MainMenus::showAbout()
{
    auto* window = new AboutWindow(m_window);
    window->show();
}
