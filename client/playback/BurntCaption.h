#pragma once

#include <QString>

class QImage;
class QRect;

/// Writes a camera's name and the time, to the second, into the lower left corner of its part of a picture.
/// Any thread.
void paintBurntCaption(QImage& picture, const QRect& tile, const QString& name, qint64 ms);
