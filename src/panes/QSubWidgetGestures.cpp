#include "panes/QSubWidget.h"

#include "common/TickCount.h"
#include "common/WheelDelta.h"
#include "panes/AlarmMark.h"
#include "panes/PtzZone.h"
#include "panes/QMyLabel.h"

#include <QDateTime>
#include <QMouseEvent>
#include <QPointer>
#include <QResizeEvent>
#include <QTimerEvent>
#include <QWheelEvent>

#include <utility>

namespace {

constexpr int RectPeriod = 50;
constexpr int WheelPeriod = 1000;
constexpr int WheelRest = 10;
constexpr quint32 DragMessageTicks = 100;
constexpr QPoint NoPoint(-1, -1);

enum PtzType
{
    PtzStart = 0,
    PtzStop = 1
};

enum MouseType
{
    MouseLeft = 0,
    MouseRight = 1,
    MouseDoubleClick = 2,
    MouseMove = 3
};

enum DownUp
{
    MouseDown = 0,
    MouseUp = 1
};

} // namespace

quint32 QSubWidget::s_dwLastMouseMsgTick = 0;

int QSubWidget::ZoneAt(const QPoint& pt) const
{
    return ZoneOfPoint(pt, QSize(m_nHalfW, m_nHalfH), QSize(m_nCenterW, m_nCenterH));
}

bool QSubWidget::IsOffLabel(const QPoint& pt) const
{
    return pt.x() < 0 || pt.y() < 0 || pt.x() > 2 * m_nHalfW || pt.y() > 2 * m_nHalfH;
}

bool QSubWidget::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    const bool bFiltered = QFrame::eventFilter(pWatched, pEvent);
    if (pWatched != m_pLabel)
        return bFiltered;
    const QPointer<QSubWidget> alive(this);
    const QPointer<QMyLabel> pLabel(m_pLabel);
    const bool bOutermost = m_nLabelEvents++ == 0;
    HandleLabelEvent(pEvent);
    if (alive) {
        --m_nLabelEvents;
        return bFiltered;
    }
    if (bOutermost && pLabel)
        pLabel->deleteLater();
    // Nobody is left to deliver the event to.
    pEvent->accept();
    return true;
}

void QSubWidget::HandleLabelEvent(QEvent* pEvent)
{
    switch (pEvent->type()) {
    case QEvent::MouseButtonPress:
        return PressOnLabel(*static_cast<QMouseEvent*>(pEvent));
    case QEvent::MouseButtonRelease:
        return ReleaseOnLabel(*static_cast<QMouseEvent*>(pEvent));
    case QEvent::MouseMove:
        return MoveOnLabel(static_cast<QMouseEvent*>(pEvent)->pos());
    case QEvent::Enter:
        return EnterLabel();
    case QEvent::Leave:
        return m_pLabel->setMouseTracking(false);
    case QEvent::Resize:
        return ResizeOfLabel(static_cast<QResizeEvent*>(pEvent)->size());
    case QEvent::Wheel:
        return TurnWheel(*static_cast<QWheelEvent*>(pEvent));
    default:
        return;
    }
}

void QSubWidget::PressOnLabel(const QMouseEvent& event)
{
    if (event.button() == Qt::LeftButton)
        return LeftPressOnLabel(event.pos());
    if (event.button() != Qt::RightButton)
        return;
    if (m_bMouseMsg)
        Q_EMIT sig_sendMouseMsg(MouseRight, MouseDown, Told(event.pos()));
    else
        Q_EMIT sig_rightBtnClick();
}

void QSubWidget::LeftPressOnLabel(const QPoint& pt)
{
    BeginPress();
    m_ptHeld = pt;
    if (m_bPtzMode) {
        // The drag of a pane leaves zones behind that no camera knows.
        const bool bCommand = m_nZone >= PTZ_ZONE_CENTER && m_nZone <= PTZ_ZONE_RIGHT_DOWN;
        m_nPtzCommand = bCommand ? m_nZone : ZoneAt(pt);
        Q_EMIT sig_sendPtzCommand(m_nPtzCommand, PtzStart);
    } else if (m_bRectMode) {
        m_ptStart = pt;
        m_ptCur = NoPoint;
        StopRectTimer();
        m_nRectTimer = startTimer(RectPeriod);
    } else if (m_bMouseMsg) {
        Q_EMIT sig_sendMouseMsg(MouseLeft, MouseDown, Told(pt));
    }
}

void QSubWidget::ReleaseOnLabel(const QMouseEvent& event)
{
    if (event.button() == Qt::LeftButton)
        LeftReleaseOnLabel(event.pos());
    else if (event.button() == Qt::RightButton && m_bMouseMsg)
        Q_EMIT sig_sendMouseMsg(MouseRight, MouseUp, Told(event.pos()));
}

void QSubWidget::LeftReleaseOnLabel(const QPoint& pt)
{
    const QPointer<QSubWidget> alive(this);
    EndPress();
    StopRectTimer();
    if (m_bPtzMode) {
        Q_EMIT sig_sendPtzCommand(m_nPtzCommand, PtzStop);
        if (!alive)
            return;
        m_nPtzCommand = 0;
    }
    if (m_bRectMode)
        EndRectangle();
    else
        Q_EMIT sig_mouseRelease();
    if (alive && m_bMouseMsg)
        Q_EMIT sig_sendMouseMsg(MouseLeft, MouseUp, Told(pt));
}

void QSubWidget::BeginPress()
{
    m_ePress = Press::Begun;
    m_heldButton.Press(m_pLabel);
}

void QSubWidget::EndPress()
{
    m_bPressed = false;
    if (m_ePress == Press::Begun)
        m_ePress = Press::Over;
    m_heldButton.Release();
}

bool QSubWidget::IsHeld() const
{
    return m_bPressed || m_ePress == Press::Begun;
}

/// No camera goes on moving for a release that never comes, no rectangle goes on being told, and no button
/// stays down on a screen far away.
void QSubWidget::EndHeldGesture()
{
    if (!IsHeld())
        return;
    EndPress();
    StopRectTimer();
    if (m_bPtzMode) {
        Q_EMIT sig_sendPtzCommand(std::exchange(m_nPtzCommand, 0), PtzStop);
    } else if (m_bRectMode) {
        m_ptStart = m_ptCur = QPoint();
        Q_EMIT sig_RectanglePoint(m_nWndIndex, m_ptStart, m_ptCur);
    } else if (m_bMouseMsg) {
        Q_EMIT sig_sendMouseMsg(MouseLeft, MouseUp, Told(m_ptHeld));
    }
}

void QSubWidget::EndRectangle()
{
    const QPointer<QSubWidget> alive(this);
    // A click without a move has no second point to tell.
    const QPoint ptEnd = m_ptCur == NoPoint ? NoPoint : Told(m_ptCur);
    Q_EMIT sig_selectRegion(m_nWndIndex, Told(m_ptStart), ptEnd);
    if (!alive)
        return;
    m_ptStart = QPoint();
    m_ptCur = QPoint();
    Q_EMIT sig_RectanglePoint(m_nWndIndex, m_ptStart, m_ptCur);
}

/// What the application is told of a point: where it lies in the whole picture, also while a part shows.
QPoint QSubWidget::Told(const QPoint& pt) const
{
    return m_pLabel->InWholeFrame(pt);
}

void QSubWidget::StopRectTimer()
{
    if (m_nRectTimer != 0)
        killTimer(m_nRectTimer);
    m_nRectTimer = 0;
}

void QSubWidget::MoveOnLabel(const QPoint& pt)
{
    if (m_bPtzMode)
        MovePtz(pt);
    else if (m_bPressed)
        DragOther(pt);
}

void QSubWidget::MovePtz(const QPoint& pt)
{
    if (IsOffLabel(pt))
        return StopOffLabel();
    SetCursorZone(ZoneAt(pt));
    if (m_bPressed && m_nZone != m_nPtzCommand)
        DragPtz();
}

void QSubWidget::StopOffLabel()
{
    const QPointer<QSubWidget> alive(this);
    SetCursorZone(PTZ_ZONE_OUTSIDE);
    Q_EMIT sig_sendPtzCommand(m_nPtzCommand, PtzStop);
    if (!alive)
        return;
    m_nPtzCommand = 0;
    m_nZone = PTZ_ZONE_CENTER;
}

void QSubWidget::DragPtz()
{
    const QPointer<QSubWidget> alive(this);
    if (m_nPtzCommand > 0) {
        Q_EMIT sig_sendPtzCommand(m_nPtzCommand, PtzStop);
        if (!alive || !m_bPressed)
            return;
    }
    m_nPtzCommand = m_nZone;
    if (m_nZone > 0)
        Q_EMIT sig_sendPtzCommand(m_nZone, PtzStart);
}

void QSubWidget::DragOther(const QPoint& pt)
{
    m_ptHeld = pt;
    if (m_bRectMode)
        m_ptCur = QPoint(qBound(0, pt.x(), 2 * m_nHalfW), qBound(0, pt.y(), 2 * m_nHalfH));
    if (!m_bMouseMsg)
        return;
    const quint32 dwTick = TickCount();
    if (!IsTickPast(dwTick, s_dwLastMouseMsgTick, DragMessageTicks))
        return;
    Q_EMIT sig_sendMouseMsg(MouseMove, MouseUp, Told(pt));
    s_dwLastMouseMsgTick = dwTick;
}

void QSubWidget::EnterLabel()
{
    m_pLabel->setMouseTracking(true);
    m_pLabel->setCursor(Qt::PointingHandCursor);
}

void QSubWidget::ResizeOfLabel(const QSize& size)
{
    SetHalfSizes(size);
    m_pAlarmLabel->setGeometry(PlaceOfAlarmMark(width()));
}

void QSubWidget::TurnWheel(const QWheelEvent& event)
{
    if (!m_bPtzMode)
        return;
    const QPointer<QSubWidget> alive(this);
    m_llWheelTime = QDateTime::currentMSecsSinceEpoch();
    const int nCommand = WheelDelta(event) > 0 ? PTZ_ZONE_WHEEL_FORWARD : PTZ_ZONE_WHEEL_BACKWARD;
    if (m_nWheelTimer != 0 && m_nWheelCommand == nCommand)
        return;
    if (m_nWheelTimer != 0)
        Q_EMIT sig_sendPtzCommand(m_nWheelCommand, PtzStop);
    if (alive)
        Q_EMIT sig_sendPtzCommand(nCommand, PtzStart);
    if (!alive)
        return;
    m_nWheelCommand = nCommand;
    if (m_nWheelTimer == 0)
        m_nWheelTimer = startTimer(WheelPeriod);
}

void QSubWidget::timerEvent(QTimerEvent* pEvent)
{
    if (pEvent->timerId() == m_nRectTimer) {
        if (m_bPressed && m_ptCur.x() > 0 && m_ptCur.y() > 0)
            Q_EMIT sig_RectanglePoint(m_nWndIndex, Told(m_ptStart), Told(m_ptCur));
    } else if (pEvent->timerId() == m_nWheelTimer) {
        TickWheel();
    }
}

void QSubWidget::TickWheel()
{
    if (QDateTime::currentMSecsSinceEpoch() - m_llWheelTime < WheelRest)
        return;
    const QPointer<QSubWidget> alive(this);
    Q_EMIT sig_sendPtzCommand(m_nWheelCommand, PtzStop);
    if (!alive)
        return;
    killTimer(m_nWheelTimer);
    m_nWheelTimer = 0;
    m_nWheelCommand = 0;
}

void QSubWidget::mousePressEvent(QMouseEvent* pEvent)
{
    const QPointer<QSubWidget> alive(this);
    if (pEvent->button() == Qt::LeftButton) {
        if (m_ePress == Press::None || !m_pLabel->geometry().contains(pEvent->pos()))
            BeginPress();
        m_bPressed = std::exchange(m_ePress, Press::None) == Press::Begun;
        Q_EMIT action(this);
    }
    if (alive)
        QFrame::mousePressEvent(pEvent);
}

void QSubWidget::mouseDoubleClickEvent(QMouseEvent* pEvent)
{
    const QPointer<QSubWidget> alive(this);
    if (pEvent->button() == Qt::LeftButton) {
        BeginPress();
        Q_EMIT DoubleClickVideoWidget(m_nWndIndex, m_bRectMode ? 1 : 0);
        if (alive && m_bMouseMsg)
            Q_EMIT sig_sendMouseMsg(MouseDoubleClick, MouseDown, Told(pEvent->pos()));
    }
    if (alive)
        QFrame::mouseDoubleClickEvent(pEvent);
}
