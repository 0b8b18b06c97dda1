#include "panes/CSeekSlider.h"

#include <QSignalBlocker>

void CSeekSlider::mouseReleaseEvent(QMouseEvent* event)
{
    const bool held = isSliderDown();
    {
        const QSignalBlocker blocker(this);
        QSlider::mouseReleaseEvent(event);
    }
    if (held && !isSliderDown())
        Q_EMIT sliderReleased();
}
