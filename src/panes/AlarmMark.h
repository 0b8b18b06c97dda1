#pragma once

#include <QRect>

class QLabel;

/// Gives a label the alarm picture of the installation and cuts it to the picture's outline.
void SetAlarmPicture(QLabel& label);

/// The alarm mark's place in the top right corner of a surface.
QRect PlaceOfAlarmMark(int nSurfaceWidth);
