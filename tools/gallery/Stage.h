#pragma once

#include <QPixmap>
#include <QVector>

class QAbstractButton;
class QWidget;

/// What scenes need to put widgets into the states that an operator brings about with the mouse.
namespace Stage {

/// Lays a widget out as if it were on a screen and takes its picture.
QPixmap Shot(QWidget* widget);

/// Makes a button look as if the mouse were over it.
void Hover(QWidget* button);

/// A column of pictures on the colour of a window, with a margin around.
QPixmap Column(const QVector<QPixmap>& pictures, int spacing);

/// A picture such as a camera gives: a street, another one and at another hour for each number, so that both
/// light and dark lie below a title bar.
QImage CameraPicture(int camera);

/// A day's recordings in the colours that the client uses: continuous, motion, alarm, and gaps between them.
QVector<unsigned int> Recordings();

} // namespace Stage
