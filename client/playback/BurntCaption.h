#pragma once

#include <QString>

class QPainter;
class QRect;

/// Writes a camera's name and the time, to the second, into the lower left corner of its part of a picture.
/// Any thread.
void paintBurntCaption(QPainter& painter, const QRect& tile, const QString& name, qint64 ms);
