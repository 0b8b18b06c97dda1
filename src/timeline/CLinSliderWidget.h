#pragma once

#include <QWidget>

class QSlider;

/// The file view of the playing position: a slider under a ruler of numbers.
class CLinSliderWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CLinSliderWidget(QWidget* parent);

    void SetRange(int nMin, int nMax);
    void SetValue(int nValue);
    int Value() const;

    /// Enables or disables the widget. A slider that is held is let go, with sliderReleased(), in which the
    /// widget may be deleted; setEnabled() doesn't allow that.
    void SetSliderEnabled(bool bEnable);

Q_SIGNALS:
    void sliderReleased();
    void sliderPressed();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSlider* m_pSlider;
    int m_nMin = 0;
    int m_nMax = 0;
    int m_nTicks = 20;
};
