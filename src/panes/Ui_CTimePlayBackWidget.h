#pragma once

class QPushButton;
class QSlider;
class QWidget;

/// The form of the instant playback bar: pause button, position slider, close button.
class Ui_CTimePlayBackWidget
{
public:
    QPushButton* btnStop = nullptr;
    QSlider* SdrTime = nullptr;
    QPushButton* btnclose = nullptr;

    void setupUi(QWidget* bar);
};
