#pragma once

#include <QRectF>
#include <QSizeF>

#include <mutex>

/// The view of a camera that turns and zooms: a window on a larger picture. Time is in milliseconds of any
/// clock.
class PtzMotion
{
public:
    /// `whole` is the picture's size, `view` that of the window at zoom 1, half of it or less to be able to
    /// turn.
    PtzMotion(QSizeF whole, QSizeF view);

    /// Commands: 0 home at once; 1 up, 2 down, 3 left, 4 right, 5 left-up, 6 left-down, 7 right-up, 8
    /// right-down; 9 closer, 10 wider. Turning and zooming run beside each other, and each stops by a stop of
    /// its own kind; a new command takes the place of the running one. Any other number does nothing.
    void command(int number, bool start, qint64 nowMs);
    /// The window at this time, inside the picture; time must not go back.
    QRectF view(qint64 nowMs);

private:
    void advance(qint64 nowMs);
    QSizeF windowSize() const;

    QSizeF m_whole;
    QSizeF m_view;
    QPointF m_centre;
    QPointF m_turn;
    double m_zoom = 1;
    int m_zoomDirection = 0;
    qint64 m_lastMs = 0;
};

/// A motion by the machine's clock, which its owner commands and a source's thread watches.
class PtzControl
{
public:
    PtzControl(QSizeF whole, QSizeF view) : m_motion(whole, view) {}

    void command(int number, bool start);
    QRectF view();

private:
    std::mutex m_mutex;
    PtzMotion m_motion;
};
