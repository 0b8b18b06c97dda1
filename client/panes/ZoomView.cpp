#include "panes/ZoomView.h"

#include <cmath>

namespace {

/// Below it, the fractions of a notch that lead back to the whole would never quite arrive there.
constexpr double NearlyWhole = 1.001;

/// The stretch of `length` pixels that begins at a fraction and is that much smaller.
std::pair<int, int> stretch(double from, double factor, int length)
{
    const int size = qMax(qMin(2, length), qRound(length / factor) & ~1);
    return {qBound(0, qRound(from * length) & ~1, length - size), size};
}

} // namespace

ZoomView::ZoomView(QPointF topLeft, double factor) : m_topLeft(topLeft), m_factor(factor)
{
    if (!std::isfinite(topLeft.x()) || !std::isfinite(topLeft.y()) || !std::isfinite(factor))
        *this = ZoomView();
    fit();
}

void ZoomView::fit()
{
    m_factor = m_factor < NearlyWhole ? 1 : qMin(m_factor, MostFactor);
    const double most = 1 - 1 / m_factor;
    m_topLeft = {qBound(0.0, m_topLeft.x(), most), qBound(0.0, m_topLeft.y(), most)};
}

QRect ZoomView::pixels(QSize picture) const
{
    if (isWhole())
        return {QPoint(), picture};
    const auto [left, width] = stretch(m_topLeft.x(), m_factor, picture.width());
    const auto [top, height] = stretch(m_topLeft.y(), m_factor, picture.height());
    return {left, top, width, height};
}

void ZoomView::zoom(QPointF point, double by)
{
    if (!(by > 0) || !std::isfinite(by))
        return;
    const QPointF fixed = m_topLeft + point / m_factor;
    const double factor = qBound(1.0, m_factor * by, MostFactor);
    *this = ZoomView(fixed - point / factor, factor);
}

void ZoomView::pan(QPointF by)
{
    *this = ZoomView(m_topLeft - by / m_factor, m_factor);
}
