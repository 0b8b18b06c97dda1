#pragma once

#include <QObject>
#include <QRect>

class CPaneDeck;
class QMouseEvent;

/// Where the scale of a playback deck lies on the screen, zoomed and panned as it is, and what the pointer
/// does on it.
class ScalePlace : public QObject
{
    Q_OBJECT

public:
    static constexpr int SecondsOfDay = 86400;

    explicit ScalePlace(CPaneDeck* deck);

    /// The whole day, from midnight to midnight, on the screen: only a part of it is seen while it is zoomed.
    /// Null while there is no scale.
    QRect day() const;
    /// The upper end of the scale in the deck.
    QPoint top() const;
    /// The second of the day at a place of the screen, 0 to 86399.
    int secondAt(int globalX) const;
    /// The place of a second on the screen.
    int xOf(int second) const;

    /// Where on the screen the pointer was, under either Qt.
    static QPoint globalOf(const QMouseEvent& event);

    /// Zooms the scale by a wheel that was turned over another widget; what is under the pointer stays there.
    void turn(int globalX, const QPoint& angle);
    /// Takes hold of the scale at a place, and drags it from there.
    void hold(int globalX);
    void drag(int globalX);

Q_SIGNALS:
    /// day() is new.
    void changed();
    /// The pointer is at a second of the day.
    void pointedAt(int second);
    /// The thumb is being dragged: the time that it is at.
    void draggedTo(int second);
    void left();

private:
    CPaneDeck* m_deck;
    int m_heldX = 0;
    int m_heldLeft = 0;
};
