#include "playback/ScalePlace.h"

#include <CPaneDeck.h>

#include <QMouseEvent>

namespace {

/// Eighths of a degree that a wheel turns by a notch; each adds the scale's width at no zoom.
constexpr int Notch = 120;
/// The deck zooms no farther.
constexpr int MostZoom = 200;

} // namespace

ScalePlace::ScalePlace(CPaneDeck* deck) : QObject(deck), m_deck(deck)
{
    connect(deck, &CPaneDeck::sig_DayRectChanged, this, &ScalePlace::changed);
    connect(deck, &CPaneDeck::sig_TimeDragged, this, &ScalePlace::draggedTo);
    connect(deck, &CPaneDeck::sig_TimePointed, this, [this](int second) {
        if (second < 0)
            Q_EMIT left();
        else
            Q_EMIT pointedAt(second);
    });
}

QPoint ScalePlace::globalOf(const QMouseEvent& event)
{
#if QT_VERSION_MAJOR < 6
    return event.globalPos();
#else
    return event.globalPosition().toPoint();
#endif
}

QRect ScalePlace::day() const
{
    const QRect all = m_deck->DayRect();
    return all.isNull() ? all : QRect(m_deck->mapToGlobal(all.topLeft()), all.size());
}

QPoint ScalePlace::top() const
{
    return m_deck->mapToGlobal(m_deck->TimeScaleRect().topLeft());
}

int ScalePlace::secondAt(int globalX) const
{
    const QRect all = day();
    if (all.width() < 1)
        return 0;
    return int(qBound(qint64(0), qint64(globalX - all.left()) * SecondsOfDay / all.width(),
                      qint64(SecondsOfDay - 1)));
}

int ScalePlace::xOf(int second) const
{
    const QRect all = day();
    return all.left() + int(qint64(all.width()) * second / SecondsOfDay);
}

void ScalePlace::turn(int globalX, const QPoint& angle)
{
    const QRect all = m_deck->DayRect();
    const qint64 base = m_deck->TimeScaleRect().width();
    if (all.isEmpty() || base < 1)
        return;
    const int notches = (angle.y() != 0 ? angle.y() : angle.x()) / Notch;
    const qint64 most = qMin(base * MostZoom, qint64(QWIDGETSIZE_MAX));
    const qint64 width = qBound(base, all.width() + notches * base, most);
    const int x = m_deck->mapFromGlobal(QPoint(globalX, 0)).x();
    m_deck->SetDayRect(x - int((x - all.left()) * width / all.width()), int(width));
}

void ScalePlace::hold(int globalX)
{
    m_heldX = globalX;
    m_heldLeft = m_deck->DayRect().left();
}

void ScalePlace::drag(int globalX)
{
    m_deck->SetDayRect(m_heldLeft + globalX - m_heldX, m_deck->DayRect().width());
}
