#include "timeline/ScaleWatch.h"

#include "common/QtEvents.h"
#include "timeline/CTimerSlider.h"

#include <QMouseEvent>
#include <QPointer>

#include <utility>

namespace {

/// A move that a widget gets only because its mouse is tracked.
bool IsTracked(const QEvent& event)
{
    return event.type() == QEvent::MouseMove &&
           static_cast<const QMouseEvent&>(event).buttons() == Qt::NoButton;
}

} // namespace

ScaleWatch::ScaleWatch(CTimerSlider* pScale) : QObject(pScale), m_pScale(pScale)
{
    Follow(pScale);
    connect(pScale, SIGNAL(sig_SliderMoved(int)), this, SLOT(slot_Moved(int)));
}

void ScaleWatch::Follow(QWidget* pPart)
{
    pPart->setMouseTracking(true);
    pPart->installEventFilter(this);
}

bool ScaleWatch::eventFilter(QObject* watched, QEvent* event)
{
    const QPointer<ScaleWatch> alive(this);
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
        TellLater();
        break;
    case QEvent::MouseMove:
        TellPointer(*static_cast<QMouseEvent*>(event));
        break;
    case QEvent::Leave:
        if (watched == m_pScale)
            Q_EMIT sig_Pointed(-1);
        break;
    default:
        break;
    }
    // What was watched may be gone with the deck, and the event must go no further then. Nor must a move that
    // only the watch has asked for: by it a pan whose release got lost would follow the pointer.
    return !alive || IsTracked(*event);
}

void ScaleWatch::TellPointer(const QMouseEvent& event)
{
    if (event.buttons() & Qt::LeftButton || m_pScale->width() < 1)
        return;
    const qint64 x = m_pScale->mapFromGlobal(GlobalPosOf(event)).x();
    const qint64 second = x * m_pScale->GetTotal() / m_pScale->width();
    Q_EMIT sig_Pointed(int(qBound(qint64(0), second, qint64(m_pScale->GetTotal() - 1))));
}

void ScaleWatch::TellLater()
{
    if (!std::exchange(m_bTells, true))
        QMetaObject::invokeMethod(this, "slot_Tell", Qt::QueuedConnection);
}

void ScaleWatch::slot_Tell()
{
    m_bTells = false;
    const QRect scale = m_pScale->isVisible() ? m_pScale->geometry() : QRect();
    const QRect parent = m_pScale->parentWidget()->geometry();
    // A layout that takes the zoom away for a moment moves the scale there and back.
    const bool isNew = scale != m_rcTold || parent != m_rcParentTold;
    m_rcTold = scale;
    m_rcParentTold = parent;
    if (isNew)
        Q_EMIT sig_ViewChanged();
}

void ScaleWatch::slot_Moved(int nSecond)
{
    // A double click moves the thumb too.
    if (m_pScale->IsThumbPressed())
        Q_EMIT sig_Dragged(qMin(nSecond, m_pScale->GetTotal() - 1));
}
