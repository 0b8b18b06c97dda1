#pragma once

#include <QRect>

class QLabel;

/// While one lives, the file of the alarm picture is looked at once, for all the marks that are made.
class AlarmPictureHold
{
public:
    AlarmPictureHold();
    ~AlarmPictureHold();
    Q_DISABLE_COPY(AlarmPictureHold)
};

/// Gives a label the alarm picture of the installation and cuts it to the picture's outline.
void SetAlarmPicture(QLabel& label);

/// The alarm mark's place in the top right corner of a surface.
QRect PlaceOfAlarmMark(int nSurfaceWidth);
