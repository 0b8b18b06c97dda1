#pragma once

#include <QSlider>

/// A slider that may be deleted inside its sliderReleased(): the signal is the last thing a release does.
/// QSlider itself goes on working after it.
class CSeekSlider : public QSlider
{
public:
    using QSlider::QSlider;

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
};
