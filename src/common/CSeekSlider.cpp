#include "common/CSeekSlider.h"

#include <QEvent>
#include <QPointer>
#include <QSignalBlocker>

bool CSeekSlider::event(QEvent* event)
{
    if (event->type() == QEvent::DeferredDelete)
        return QSlider::event(event);
    // The release never comes to a window that a dialog blocks.
    if (event->type() == QEvent::WindowBlocked)
        LetGo();
    const bool wasDown = isSliderDown();
    const int oldPosition = sliderPosition();
    const int oldValue = value();
    bool known = false;
    {
        const QSignalBlocker blocker(this);
        known = QSlider::event(event);
    }
    if (wasDown != isSliderDown())
        m_windowWatch.Watch(!wasDown);
    Report(wasDown, oldPosition, oldValue);
    return known;
}

/// By an event of its own: the one at hand goes through all of the window's widgets, and none may be deleted
/// meanwhile.
void CSeekSlider::LetGo()
{
    QMetaObject::invokeMethod(
        this, [this] { setSliderDown(false); }, Qt::QueuedConnection);
}

void CSeekSlider::Report(bool bWasDown, int nOldPosition, int nOldValue)
{
    const bool down = isSliderDown();
    const int position = sliderPosition();
    const int newValue = value();
    const QPointer<CSeekSlider> guard(this);
    if (!bWasDown && down)
        Q_EMIT sliderPressed();
    if (guard && down && position != nOldPosition)
        Q_EMIT sliderMoved(position);
    if (guard && bWasDown && !down)
        Q_EMIT sliderReleased();
    if (guard && newValue != nOldValue)
        Q_EMIT valueChanged(newValue);
}
