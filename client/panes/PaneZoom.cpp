#include "panes/PaneZoom.h"

#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "panes/PaneMap.h"

#include <CPaneDeck.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimerEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr double NotchFactor = 1.25;
constexpr double NotchAngle = 120;
constexpr int MapMs = 1000;
constexpr double PanStep = 0.2;
constexpr QPointF Middle(0.5, 0.5);

bool isOfMouse(QEvent::Type type)
{
    return (type >= QEvent::MouseButtonPress && type <= QEvent::MouseMove) || type == QEvent::Wheel;
}

} // namespace

PaneZoom::PaneZoom(CPaneDeck* deck, DeckStreams* streams)
    : QObject(streams), m_deck(deck), m_streams(streams), m_panes(streams->paneCount())
{
    for (int pane = 0; pane < m_panes.size(); ++pane) {
        m_paneOf.insert(deck->PaneWidget(pane), pane);
        deck->PaneWidget(pane)->installEventFilter(this);
    }
    connect(streams, &DeckStreams::cleared, this, [this](int pane) { setOn(pane, false); });
}

void PaneZoom::setOn(int pane, bool on)
{
    const bool isOn = on && m_streams->cameraAt(pane);
    if (pane < 0 || pane >= m_panes.size())
        return;
    m_deck->SetBtnCheck(pane, BTN_ZOOM, isOn);
    if (m_panes[pane].isOn == isOn)
        return;
    m_panes[pane].isOn = isOn;
    m_deck->PaneWidget(pane)->setCursor(isOn ? Qt::OpenHandCursor : Qt::PointingHandCursor);
    show(pane, ZoomView());
    Q_EMIT changed(pane);
}

void PaneZoom::setView(int pane, const ZoomView& view)
{
    setOn(pane, !view.isWhole());
    if (isOn(pane))
        show(pane, view);
}

void PaneZoom::takeKeys()
{
    m_deck->installEventFilter(this);
}

QVector<QPair<QString, QString>> PaneZoom::help()
{
    return {{word("+ and -, with digital zoom on"), word("Nearer and farther")},
            {word("Shift and arrows, with digital zoom on"), word("Move what is shown")}};
}

bool PaneZoom::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && pressKey(*static_cast<QKeyEvent*>(event)))
        return true;
    const int pane = m_paneOf.value(watched, -1);
    // A deck that dies hides its panes and can be asked nothing any more.
    if (event->type() == QEvent::Hide && pane == m_heldPane)
        m_heldPane = -1;
    if (pane < 0 || !isOfMouse(event->type()) || !handle(pane, *event))
        return QObject::eventFilter(watched, event);
    event->accept();
    return true;
}

bool PaneZoom::handle(int pane, QEvent& event)
{
    // What the zoom has begun is the zoom's to the end.
    if (pane != m_heldPane && (!isOn(pane) || m_deck->mousMsg(pane)))
        return false;
    switch (event.type()) {
    case QEvent::MouseMove:
        return move(pane, static_cast<QMouseEvent&>(event));
    case QEvent::MouseButtonRelease:
        return pane == m_heldPane && release(static_cast<QMouseEvent&>(event));
    case QEvent::Wheel:
        return turn(pane, static_cast<QWheelEvent&>(event));
    default:
        return press(pane, static_cast<QMouseEvent&>(event));
    }
}

bool PaneZoom::press(int pane, const QMouseEvent& event)
{
    if (event.button() != Qt::LeftButton)
        return false;
    m_heldPane = pane;
    m_isDragged = event.type() == QEvent::MouseButtonPress;
    m_dragFrom = QPointF(event.pos());
    m_deck->PaneWidget(pane)->setCursor(Qt::ClosedHandCursor);
    if (!m_isDragged)
        show(pane, ZoomView());
    if (m_deck->GetCurrentWnd() != pane)
        m_deck->SetActiveWnd(pane);
    return true;
}

bool PaneZoom::move(int pane, const QMouseEvent& event)
{
    if (m_heldPane != pane) {
        if (event.buttons() == Qt::NoButton)
            m_deck->PaneWidget(pane)->setCursor(Qt::OpenHandCursor);
        return event.buttons() == Qt::NoButton;
    }
    if (m_isDragged && isOn(pane)) {
        ZoomView view = m_panes[pane].view;
        view.pan(onPicture(pane, QPointF(event.pos())) - onPicture(pane, m_dragFrom));
        m_dragFrom = QPointF(event.pos());
        show(pane, view);
    }
    return true;
}

bool PaneZoom::release(const QMouseEvent& event)
{
    if (event.button() != Qt::LeftButton)
        return false;
    m_deck->PaneWidget(m_heldPane)->setCursor(Qt::OpenHandCursor);
    m_heldPane = -1;
    return true;
}

bool PaneZoom::turn(int pane, const QWheelEvent& event)
{
    ZoomView view = m_panes[pane].view;
    view.zoom(onPicture(pane, event.position()), std::pow(NotchFactor, event.angleDelta().y() / NotchAngle));
    show(pane, view);
    return true;
}

bool PaneZoom::pressKey(const QKeyEvent& event)
{
    const int pane = m_deck->GetCurrentWnd();
    if (!isOn(pane) || m_deck->mousMsg(pane))
        return false;
    const QPointF ways[] = {{PanStep, 0}, {0, PanStep}, {-PanStep, 0}, {0, -PanStep}};
    const bool isShifted = event.modifiers() == Qt::ShiftModifier;
    const int key = event.key();
    ZoomView view = m_panes[pane].view;
    if (isShifted && key >= Qt::Key_Left && key <= Qt::Key_Down)
        view.pan(ways[key - Qt::Key_Left]);
    else if (key == Qt::Key_Plus || key == Qt::Key_Equal)
        view.zoom(Middle, NotchFactor);
    else if (key == Qt::Key_Minus)
        view.zoom(Middle, 1 / NotchFactor);
    else
        return false;
    show(pane, view);
    return true;
}

QPointF PaneZoom::onPicture(int pane, QPointF point) const
{
    const QSize size = m_deck->PaneWidget(pane)->size();
    return {point.x() / qMax(1, size.width()), point.y() / qMax(1, size.height())};
}

void PaneZoom::show(int pane, const ZoomView& view)
{
    if (m_panes[pane].view == view)
        return;
    m_panes[pane].view = view;
    m_streams->setZoom(pane, view);
    drawMap(pane);
    const auto isZoomed = [](const Pane& one) { return !one.view.isWhole(); };
    if (std::none_of(m_panes.cbegin(), m_panes.cend(), isZoomed))
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start(MapMs, this);
}

void PaneZoom::drawMap(int pane)
{
    Pane& one = m_panes[pane];
    if (!one.map)
        one.map = new PaneMap(m_deck->PaneWidget(pane));
    one.map->show(one.view, one.view.isWhole() ? QImage() : m_streams->wholeAt(pane));
}

void PaneZoom::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    for (int pane = 0; pane < m_panes.size(); ++pane) {
        if (!m_panes[pane].view.isWhole())
            drawMap(pane);
    }
}
