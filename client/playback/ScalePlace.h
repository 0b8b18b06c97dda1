#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QRect>

class CPaneDeck;
class QMouseEvent;
class QWidget;

/// Where the scale of a playback deck lies, zoomed and panned as it is, and what the pointer does on it. The
/// deck's operations tell nothing of that, but its scale bears a name for the style sheets, and it is zoomed
/// by being wider than its parent: this is what all is read from. A deck without such a scale counts as one
/// that shows the whole day.
class ScalePlace : public QObject
{
    Q_OBJECT

public:
    static constexpr int SecondsOfDay = 86400;

    explicit ScalePlace(CPaneDeck* deck);

    /// The part of the screen on which the scale is seen; null while there is none.
    QRect window() const;
    /// The whole day, from midnight to midnight, on the screen: wider than window() while it is zoomed.
    QRect day() const;
    /// The second of the day at a place of the screen, 0 to 86399.
    int secondAt(int globalX) const;

    /// Where on the screen the pointer was, under either Qt.
    static QPoint globalOf(const QMouseEvent& event);

    /// Lets the scale be turned by a wheel, or dragged, that another widget got; what is pressed here pans.
    void turn(const QPoint& global, const QPoint& angle, Qt::KeyboardModifiers modifiers);
    void drag(const QPoint& global, QEvent::Type type);

Q_SIGNALS:
    /// window() or day() is new.
    void changed();
    /// The pointer is at a second of the day.
    void pointedAt(int second, const QPoint& global);
    /// The thumb is being dragged: the time that it is at.
    void draggedTo(int second, const QPoint& global);
    void left();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watch(QWidget* widget);
    void follow(QWidget* watched, const QMouseEvent& event);

    CPaneDeck* m_deck;
    QPointer<QWidget> m_scale;
};
