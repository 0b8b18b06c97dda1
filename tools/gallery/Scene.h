#pragma once

#include <QPixmap>
#include <QString>
#include <QVector>

/// One picture of the gallery.
struct Scene
{
    QString name;      ///< of the file, without the skin and the ending
    QPixmap (*draw)(); ///< shows the widgets and takes their picture
};

/// Every scene that the widgets allow, in the order of the gallery.
QVector<Scene> Scenes();
