#pragma once

#include "panes/ZoomView.h"

#include <QBasicTimer>
#include <QHash>
#include <QObject>
#include <QPair>
#include <QVector>

class CPaneDeck;
class DeckStreams;
class PaneMap;
class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

/// Digital zoom in the panes of a deck. In a pane that has it on the left button and the wheel are its own:
/// the wheel zooms at the pointer, a drag moves what is shown, a double click shows the whole again. Whatever
/// the mouse does there otherwise begins again when it is off; a press that came before it was on is ended by
/// its own release, so that a camera that was being turned stops.
class PaneZoom : public QObject
{
    Q_OBJECT

public:
    PaneZoom(CPaneDeck* deck, DeckStreams* streams);

    bool isOn(int pane) const { return m_panes.value(pane).isOn; }
    /// Off shows the whole picture. The pane's check state follows. A pane without a camera stays off.
    void setOn(int pane, bool on);
    ZoomView view(int pane) const { return m_panes.value(pane).view; }
    /// Has the deck's keys go to the zoom first while it is on in the active pane.
    void takeKeys();
    /// The keys and what they do, in the user's words, for the help.
    static QVector<QPair<QString, QString>> help();

    /// Shows that part, with the zoom on if it isn't the whole.
    void setView(int pane, const ZoomView& view);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// isOn() is new.
    void changed(int pane);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    struct Pane
    {
        bool isOn = false;
        ZoomView view;
        PaneMap* map = nullptr;
    };

    /// Each is true for what is the zoom's.
    bool handle(int pane, QEvent& event);
    bool press(int pane, const QMouseEvent& event);
    bool move(int pane, const QMouseEvent& event);
    bool release(const QMouseEvent& event);
    bool turn(int pane, const QWheelEvent& event);
    bool pressKey(const QKeyEvent& event);
    void show(int pane, const ZoomView& view);
    void drawMap(int pane);
    /// Where a point of the pane's widget lies on what is shown.
    QPointF onPicture(int pane, QPointF point) const;

    CPaneDeck* m_deck;
    DeckStreams* m_streams;
    QVector<Pane> m_panes;
    QHash<QObject*, int> m_paneOf; ///< by the pane's widget
    int m_heldPane = -1;           ///< whose press was the zoom's
    bool m_isDragged = false;
    QPointF m_dragFrom;
    QBasicTimer m_timer; ///< runs while a map is shown
};
