#include "timeline/ScaleView.h"

#include "timeline/ToPixel.h"

#include <QWidget>

double ScaleView::Ratio() const
{
    return baseWidth > 0 ? zoomWidth / baseWidth : 1.0;
}

ScaleView ScaleView::Zoomed(int nNotches, int nCursorX) const
{
    if (baseWidth <= 0 || zoomWidth <= 0)
        return *this;
    const double widest = qMin(baseWidth * MaxRatio, double(QWIDGETSIZE_MAX));
    int width = ToPixel(qMin(baseWidth * (Ratio() + nNotches), widest));
    if (nNotches == 0)
        width = ToPixel(zoomWidth);
    if (baseWidth > width)
        width = ToPixel(baseWidth);
    int left = ToPixel(x + nCursorX * (1 - width / zoomWidth));
    return {baseWidth, double(width), Panned(left, width)};
}

int ScaleView::Panned(int nX, double fEnd) const
{
    const int left = qMin(nX, 0);
    if (baseWidth >= left + fEnd && fEnd >= baseWidth)
        return ToPixel(baseWidth - fEnd);
    return left;
}
