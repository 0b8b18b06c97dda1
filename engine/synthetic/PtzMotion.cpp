#include "synthetic/PtzMotion.h"

#include <chrono>
#include <cmath>

namespace {

constexpr double ViewsPerSecond = 0.4;
constexpr double ZoomPerSecond = 2.0;
constexpr double ClosestZoom = 4;

/// The numbers of the commands.
constexpr int Home = 0;
constexpr int FirstTurn = 1;
constexpr int LastTurn = 8;
constexpr int Closer = 9;
constexpr int Wider = 10;

/// By command number; the first entry is that of home.
constexpr QPointF Turns[] = {{0, 0}, {0, -1}, {0, 1}, {-1, 0}, {1, 0}, {-1, -1}, {-1, 1}, {1, -1}, {1, 1}};

qint64 nowMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

} // namespace

PtzMotion::PtzMotion(QSizeF whole, QSizeF view)
    : m_whole(whole), m_view(view), m_centre(whole.width() / 2, whole.height() / 2)
{
}

void PtzMotion::command(int number, bool start, qint64 nowMs)
{
    advance(nowMs);
    if (number == Home && start) {
        m_centre = {m_whole.width() / 2, m_whole.height() / 2};
        m_zoom = 1;
    }
    if (number >= FirstTurn && number <= LastTurn)
        m_turn = start ? Turns[number] : QPointF();
    if (number == Closer || number == Wider)
        m_zoomDirection = !start ? 0 : number == Closer ? 1 : -1;
}

QRectF PtzMotion::view(qint64 nowMs)
{
    advance(nowMs);
    const QSizeF size = windowSize();
    QRectF window(QPointF(), size);
    window.moveCenter(m_centre);
    return window;
}

void PtzMotion::advance(qint64 nowMs)
{
    const double seconds = double(qMax<qint64>(0, nowMs - m_lastMs)) / 1000;
    m_lastMs = nowMs;
    const double widest = qMax(m_view.width() / m_whole.width(), m_view.height() / m_whole.height());
    m_zoom = qBound(widest, m_zoom * std::pow(ZoomPerSecond, m_zoomDirection * seconds), ClosestZoom);

    const QSizeF size = windowSize();
    const QSizeF margin = size / 2;
    m_centre += {m_turn.x() * size.width() * ViewsPerSecond * seconds,
                 m_turn.y() * size.height() * ViewsPerSecond * seconds};
    m_centre.setX(qBound(margin.width(), m_centre.x(), m_whole.width() - margin.width()));
    m_centre.setY(qBound(margin.height(), m_centre.y(), m_whole.height() - margin.height()));
}

QSizeF PtzMotion::windowSize() const
{
    return (m_view / m_zoom).boundedTo(m_whole);
}

void PtzControl::command(int number, bool start)
{
    const std::lock_guard lock(m_mutex);
    m_motion.command(number, start, nowMs());
}

QRectF PtzControl::view()
{
    const std::lock_guard lock(m_mutex);
    return m_motion.view(nowMs());
}
