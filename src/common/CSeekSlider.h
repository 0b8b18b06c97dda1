#pragma once

#include "common/HeldButton.h"

#include <QSlider>

/// A slider that may be deleted inside any signal that the user's mouse, wheel or keys cause: the signals
/// come after all that the event does, in the order in which QSlider has them. QSlider itself goes on working
/// after them. A slider whose release never comes is let go.
class CSeekSlider : public QSlider
{
public:
    using QSlider::QSlider;

protected:
    bool event(QEvent* event) override;

private:
    void Report(bool bWasDown, int nOldPosition, int nOldValue);

    HeldButton m_heldButton{this, [this] { setSliderDown(false); }};
};
