#pragma once

#include <QImage>
#include <QRandomGenerator>

#include <cstring>

inline int Between(QRandomGenerator& random, int low, int high)
{
    return random.bounded(low, high + 1);
}

inline QImage Noise(const QSize& size, QImage::Format format)
{
    QImage image(size, QImage::Format_RGB32);
    QRandomGenerator random(1);
    for (int y = 0; y < size.height(); ++y)
        random.fillRange(reinterpret_cast<quint32*>(image.scanLine(y)), size.width());
    return image.convertToFormat(format);
}

/// The first pixel in which two pictures differ, with all 32 bits; empty if none does.
inline QString Difference(const QImage& one, const QImage& other)
{
    if (one.size() != other.size() || one.format() != other.format())
        return "of another size or format";
    const int bytes = one.width() * one.depth() / 8;
    for (int y = 0; y < one.height(); ++y) {
        if (std::memcmp(one.constScanLine(y), other.constScanLine(y), bytes) == 0)
            continue;
        int x = 0;
        while (one.pixel(x, y) == other.pixel(x, y) && x < one.width() - 1)
            ++x;
        return QString("at %1,%2: %3, not %4")
            .arg(x)
            .arg(y)
            .arg(one.pixel(x, y), 8, 16)
            .arg(other.pixel(x, y), 8, 16);
    }
    return QString();
}

inline QString TextOf(const QSize& size)
{
    return QString("%1x%2").arg(size.width()).arg(size.height());
}
