#pragma once

#include "common/WindowWatch.h"

#include <QSlider>

/// A slider that may be deleted inside any signal that the user's mouse, wheel or keys cause: the signals
/// come after all that the event does, in the order in which QSlider has them. QSlider itself goes on working
/// after them. A slider that is held when a dialog blocks its window, or when the window leaves the screen,
/// is let go.
class CSeekSlider : public QSlider
{
public:
    using QSlider::QSlider;

protected:
    bool event(QEvent* event) override;

private:
    void LetGo();
    void Report(bool bWasDown, int nOldPosition, int nOldValue);

    WindowWatch m_windowWatch{this, [this] { LetGo(); }};
};
