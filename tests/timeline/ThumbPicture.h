#pragma once

#include "support/Installation.h"

#include <QPainter>
#include <QPixmapCache>

/// Gives an installation of the dark style a thumb of that width: red, with a clear border of two pixels.
inline void WriteThumb(const Installation& installation, int width)
{
    const QString path = "playback/PlaybackThumb.png";
    installation.Write("ResourcesBlank/" + path, QByteArray());
    QImage image(width, 14, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter(&image).fillRect(image.rect().adjusted(2, 2, -2, -2), Qt::red);
    // The cache knows a file by its size and the second it was written in.
    QPixmapCache::clear();
    image.save(installation.Resources() + "/" + path);
}
