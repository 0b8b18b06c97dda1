#pragma once

#include <QRectF>
#include <QSize>

/// Which part of a picture is shown: one of the picture's own shape, that lies within it. Points and
/// distances on what is shown count from 0 to 1 across it, whatever its size on the screen.
class ZoomView
{
public:
    /// The largest factor, so that a part never has too few pixels to tell anything.
    static constexpr double MostFactor = 16;

    /// The whole picture.
    ZoomView() = default;
    /// That part of a picture, fitted into it; anything that isn't a part gives the whole.
    ZoomView(QPointF topLeft, double factor);

    bool isWhole() const { return m_factor <= 1; }
    double factor() const { return m_factor; }
    /// In fractions of the picture.
    QRectF part() const { return {m_topLeft, QSizeF(1 / m_factor, 1 / m_factor)}; }
    /// In pixels of a picture of that size, at even places, as colours come by twos.
    QRect pixels(QSize picture) const;

    /// What is under the point stays there.
    void zoom(QPointF point, double by);
    /// What is shown moves along, up to the picture's edges.
    void pan(QPointF by);

    bool operator==(const ZoomView& other) const
    {
        return m_topLeft == other.m_topLeft && m_factor == other.m_factor;
    }
    bool operator!=(const ZoomView& other) const { return !(*this == other); }

private:
    void fit();

    QPointF m_topLeft;
    double m_factor = 1;
};
