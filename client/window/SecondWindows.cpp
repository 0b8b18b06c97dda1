#include "window/SecondWindows.h"

#include "common/EventLog.h"
#include "common/Words.h"
#include "tabs/LiveTab.h"
#include "views/ViewList.h"
#include "window/LiveWindow.h"

#include <QGuiApplication>
#include <QMenu>
#include <QScreen>
#include <QTimer>

namespace {

constexpr int FirstLayout = 1; ///< four panes

QScreen* screenOf(const QString& name)
{
    for (QScreen* screen : QGuiApplication::screens()) {
        if (screen->name() == name)
            return screen;
    }
    return nullptr;
}

/// A window's share of a screen when it opens first.
QRect middleOf(const QRect& room)
{
    const QSize size = room.size() * 3 / 4;
    return {room.center() - QPoint(size.width() / 2, size.height() / 2), size};
}

} // namespace

SecondWindows::SecondWindows(const CameraList& cameras, CameraHub* hub, EventLog* log, ViewList* views,
                             QObject* parent)
    : QObject(parent), m_cameras(cameras), m_hub(hub), m_log(log), m_views(views)
{
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &SecondWindows::leave);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](const QScreen* screen) {
        QTimer::singleShot(0, this, [this, name = screen->name()] { returnTo(name); });
    });
}

SecondWindows::~SecondWindows()
{
    end();
}

void SecondWindows::addTo(QMenu* menu)
{
    QMenu* windows = menu->addMenu(word("&New window on"));
    QMenu* full = menu->addMenu(word("New &full screen on"));
    connect(windows, &QMenu::aboutToShow, this, [this, windows] { fillScreens(windows, false); });
    connect(full, &QMenu::aboutToShow, this, [this, full] { fillScreens(full, true); });
}

void SecondWindows::fillScreens(QMenu* menu, bool full)
{
    menu->clear();
    for (QScreen* screen : QGuiApplication::screens()) {
        const QSize size = screen->size();
        const QString text = QString("%1, %2 × %3").arg(screen->name()).arg(size.width()).arg(size.height());
        menu->addAction(text, screen, [this, screen, full] { openNew(screen, full); });
    }
}

void SecondWindows::openNew(QScreen* screen, bool full)
{
    LiveWindow* window = add();
    DeckView view;
    view.layout = FirstLayout;
    window->live()->setFirstView(view);
    window->open(screen, middleOf(screen->availableGeometry()), full);
    keep();
}

void SecondWindows::restore()
{
    // Each that opens could change what is kept.
    const QVector<WindowView> kept = m_views->windows();
    for (const WindowView& one : kept) {
        LiveWindow* window = add();
        window->live()->setFirstView(one.view);
        QScreen* screen = screenOf(one.screen);
        if (!screen)
            m_homes.insert(window, one);
        window->open(screen ? screen : QGuiApplication::primaryScreen(), one.place, screen && one.isFull);
    }
}

LiveWindow* SecondWindows::add()
{
    auto* window = new LiveWindow(m_windows.size() + 2, m_cameras, m_hub, m_log, m_views);
    connect(window, &LiveWindow::told, m_log,
            [this](const QString& text) { m_log->add(word("live"), text); });
    connect(window, &LiveWindow::closed, this, [this, window] { drop(window); });
    m_windows.append(window);
    Q_EMIT added(window->live());
    return window;
}

/// Qt itself moves what is left on the screen, but only once this has been told.
void SecondWindows::leave(const QScreen* screen)
{
    QVector<LiveWindow*> leaving;
    for (LiveWindow* window : qAsConst(m_windows)) {
        const WindowView state = window->state();
        if (state.screen != screen->name())
            continue;
        leaving.append(window);
        if (!m_homes.contains(window))
            m_homes.insert(window, state);
    }
    QTimer::singleShot(0, this, [this, leaving] { comeToFirst(leaving); });
}

void SecondWindows::comeToFirst(const QVector<LiveWindow*>& windows)
{
    for (LiveWindow* window : windows) {
        if (m_windows.contains(window) && m_homes.contains(window))
            window->open(QGuiApplication::primaryScreen(), m_homes.value(window).place, false);
    }
}

void SecondWindows::returnTo(const QString& screen)
{
    QScreen* target = screenOf(screen);
    for (LiveWindow* window : qAsConst(m_windows)) {
        const auto home = m_homes.constFind(window);
        if (!target || home == m_homes.constEnd() || home->screen != screen)
            continue;
        const WindowView state = m_homes.take(window);
        window->open(target, state.place, state.isFull);
    }
}

/// One that only waits for its screen still belongs there.
WindowView SecondWindows::stateOf(const LiveWindow* window) const
{
    const WindowView now = window->state();
    const auto home = m_homes.constFind(window);
    return home == m_homes.constEnd() ? now : WindowView{home->place, home->screen, home->isFull, now.view};
}

void SecondWindows::drop(LiveWindow* window)
{
    m_windows.removeOne(window);
    m_homes.remove(window);
    window->deleteLater();
    keep();
}

void SecondWindows::keep()
{
    QVector<WindowView> states;
    for (const LiveWindow* window : m_windows)
        states.append(stateOf(window));
    QString error;
    if (!m_views->setWindows(states, &error))
        m_log->add(word("client"), error);
}

void SecondWindows::end()
{
    if (std::exchange(m_isEnding, true))
        return;
    if (!m_windows.isEmpty())
        keep();
    qDeleteAll(m_windows);
    m_windows.clear();
}
