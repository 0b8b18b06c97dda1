#include "frames/FramePlan.h"

#include <QCache>
#include <QtEndian>

#include <cstring>

namespace {

constexpr int CACHE_BYTES = 8 << 20;

/// Asks Qt which pixels of a line it takes: the pixels of a ruler one pixel thick hold their own numbers.
QVector<int> SourcePixels(int nSource, int nTarget, Qt::Orientation orientation)
{
    const bool bAcross = orientation == Qt::Horizontal;
    QImage ruler(bAcross ? nSource : 1, bAcross ? 1 : nSource, QImage::Format_RGB888);
    for (int n = 0; n < nSource; ++n)
        ruler.setPixel(bAcross ? n : 0, bAcross ? 0 : n, 0xff000000u | QRgb(n));
    const QSize size(bAcross ? nTarget : 1, bAcross ? 1 : nTarget);
    const QImage scaled = ruler.scaled(size, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    QVector<int> vecPixels(nTarget);
    for (int n = 0; n < nTarget; ++n)
        vecPixels[n] = int(scaled.pixel(bAcross ? n : 0, bAcross ? 0 : n) & RGB_MASK);
    return vecPixels;
}

/// Beyond these bounds Qt samples both axes otherwise: beyond the coordinates of its rasterizer, and where a
/// step is no fit for its fixed-point numbers, from 1/256 to 100 pixels.
bool Follows(int nSource, int nTarget)
{
    constexpr int SIDE_LIMIT = 32767;
    return nSource > 0 && nTarget > 0 && nSource <= SIDE_LIMIT && nTarget <= SIDE_LIMIT &&
           nSource < 99 * nTarget && nTarget < 255 * nSource;
}

using PlanKey = QPair<QPair<int, int>, QPair<int, QPair<int, int>>>;

} // namespace

const FramePlan* FramePlan::For(const QSize& source, const QSize& target, int nPixelBytes)
{
    if (Q_BYTE_ORDER != Q_LITTLE_ENDIAN || !Follows(source.width(), target.width()) ||
        !Follows(source.height(), target.height()))
        return nullptr;
    static QCache<PlanKey, FramePlan> s_cache(CACHE_BYTES);
    const PlanKey key({source.width(), source.height()}, {target.width(), {target.height(), nPixelBytes}});
    if (const FramePlan* pPlan = s_cache.object(key))
        return pPlan;
    FramePlan* pPlan = new FramePlan(source, target, nPixelBytes);
    return s_cache.insert(key, pPlan, pPlan->Bytes()) ? pPlan : nullptr;
}

FramePlan::FramePlan(const QSize& source, const QSize& target, int nPixelBytes)
    : m_row(SourcePixels(source.width(), target.width(), Qt::Horizontal), source.width(), nPixelBytes),
      m_vecSourceRows(SourcePixels(source.height(), target.height(), Qt::Vertical))
{
}

void FramePlan::Paint(const QImage& frame, QImage& image, const QPoint& origin, const QRect& part) const
{
    if (part.isEmpty())
        return;
    constexpr int PREFETCH_ROWS = 3;
    const QRect shown = part.translated(-origin);
    const int nTo = shown.right() + 1;
    for (int y = shown.top(); y <= shown.bottom(); ++y) {
        QRgb* pTarget = reinterpret_cast<QRgb*>(image.scanLine(y + origin.y())) + part.left();
        if (y > shown.top() && m_vecSourceRows[y] == m_vecSourceRows[y - 1]) {
            const uchar* pAbove = reinterpret_cast<const uchar*>(pTarget) - image.bytesPerLine();
            std::memcpy(pTarget, pAbove, part.width() * sizeof(QRgb));
            continue;
        }
        const int nAhead = m_vecSourceRows[qMin(y + PREFETCH_ROWS, shown.bottom())];
        m_row.Prefetch(frame.constScanLine(nAhead), shown.left(), nTo);
        m_row.Copy(frame.constScanLine(m_vecSourceRows[y]), pTarget, shown.left(), nTo);
    }
}

int FramePlan::Bytes() const
{
    return int(sizeof *this) + m_row.Bytes() + m_vecSourceRows.size() * int(sizeof(int));
}
