#include "common/CSeekSlider.h"

#include <QEvent>
#include <QPointer>
#include <QSignalBlocker>

bool CSeekSlider::event(QEvent* event)
{
    if (event->type() == QEvent::DeferredDelete)
        return QSlider::event(event);
    const bool wasDown = isSliderDown();
    const int oldPosition = sliderPosition();
    const int oldValue = value();
    bool known = false;
    {
        const QSignalBlocker blocker(this);
        known = QSlider::event(event);
    }
    if (!wasDown && isSliderDown())
        m_heldButton.Press(this);
    else if (wasDown && !isSliderDown())
        m_heldButton.Release();
    Report(wasDown, oldPosition, oldValue);
    return known;
}

void CSeekSlider::Report(bool bWasDown, int nOldPosition, int nOldValue)
{
    const bool down = isSliderDown();
    const int position = sliderPosition();
    const int newValue = value();
    const QPointer<CSeekSlider> alive(this);
    if (!bWasDown && down)
        Q_EMIT sliderPressed();
    if (alive && down && position != nOldPosition)
        Q_EMIT sliderMoved(position);
    if (alive && bWasDown && !down)
        Q_EMIT sliderReleased();
    if (alive && newValue != nOldValue)
        Q_EMIT valueChanged(newValue);
}
