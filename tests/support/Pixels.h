#pragma once

#include <QImage>

/// How many places (x, y) of a picture pass a test.
template <class Test> int CountPixels(const QImage& image, Test test)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += test(x, y) ? 1 : 0;
    }
    return count;
}

/// How many of its pixels have that colour.
inline int CountColor(const QImage& image, const QColor& color)
{
    return CountPixels(image, [&](int x, int y) { return image.pixelColor(x, y) == color; });
}
