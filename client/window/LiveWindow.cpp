#include "window/LiveWindow.h"

#include "common/Words.h"
#include "tabs/LiveTab.h"
#include "views/ViewMenu.h"
#include "window/LayoutMenu.h"
#include "window/PaneMenu.h"
#include "window/WindowPlace.h"

#include <CPaneDeck.h>

#include <QCloseEvent>
#include <QMenuBar>
#include <QScreen>
#include <QWindow>

LiveWindow::LiveWindow(int number, const CameraList& cameras, CameraHub* hub, EventLog* log, ViewList* views)
    : m_live(new LiveTab(cameras, hub, log))
{
    setObjectName("LiveWindow");
    setWindowTitle(QString("PaneDeck %1").arg(number));
    m_live->setTakesNew(false);
    setCentralWidget(m_live);
    new LayoutMenu(menuBar()->addMenu(word("&Layout")), [this] { return m_live->deck(); });
    auto* menu = new ViewMenu(menuBar()->addMenu(word("&View")), m_live, views);
    connect(menu, &ViewMenu::told, this, &LiveWindow::told);
    offerActivePane(menuBar()->addMenu(word("&Pane")), [this] { return m_live; });
}

void LiveWindow::open(QScreen* screen, const QRect& place, bool full)
{
    if (m_live->deck()->IsFull())
        m_live->deck()->ChangeFull(false);
    setGeometry(fitted(place, screen->availableGeometry()));
    show();
    if (!full)
        return;
    m_live->deck()->ChangeFull(true);
    m_live->deck()->setGeometry(screen->geometry());
}

WindowView LiveWindow::state() const
{
    const QWidget* deck = m_live->deck();
    const QScreen* screen = (deck->isWindow() ? deck : this)->window()->windowHandle()->screen();
    return {geometry(), screen->name(), deck->isWindow(), m_live->view()};
}

void LiveWindow::closeEvent(QCloseEvent* event)
{
    QMainWindow::closeEvent(event);
    Q_EMIT closed();
}
