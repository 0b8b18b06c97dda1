#include "panes/LabelPlace.h"

#include "deck/PaneDeckTypes.h"

namespace {

constexpr int Rim = 2;

constexpr int Ratios[][2] = {{0, 0}, {1, 1},  {4, 3},  {3, 4},  {5, 4},
                             {4, 5}, {16, 9}, {9, 16}, {64, 9}, {9, 64}};

/// The height that belongs to a width, or the reverse with the ratio's terms exchanged.
qint64 OtherSide(int nSide, int nOtherTerm, int nTerm)
{
    return qint64(nSide) * nOtherTerm / nTerm;
}

QSize FittedSize(const QSize& surface, const QSize& ratio)
{
    if (ratio.width() < 1 || ratio.height() < 1)
        return surface;
    const qint64 height = OtherSide(surface.width(), ratio.height(), ratio.width());
    if (height < surface.height())
        return QSize(surface.width(), int(height));
    return QSize(int(OtherSide(surface.height(), ratio.width(), ratio.height())), surface.height());
}

} // namespace

QSize RatioOfScale(int nScale, const QSize& video, const QSize& current)
{
    if (nScale == WND_SCASE_VIDEO)
        return video;
    if (nScale < WND_SCASE_FILL || nScale > WND_SCASE_9_64)
        return current;
    const int* pRatio = Ratios[nScale - WND_SCASE_FILL];
    return QSize(pRatio[0], pRatio[1]);
}

QRect PlaceOfLabel(const QSize& surface, const QSize& ratio)
{
    const QSize size = FittedSize(surface, ratio) - QSize(Rim, Rim);
    return QRect(QPoint((surface.width() - size.width()) / 2, (surface.height() - size.height()) / 2), size);
}
