#include "timeline/StripColumns.h"

#include <QtGlobal>

namespace {

constexpr QRgb Opaque = 0xff000000u;

} // namespace

StripColumns::StripColumns(const unsigned int* pColors, int nCount, int nWidth)
{
    if (!pColors || nCount < 1 || nWidth < 1)
        return;
    m_pColors = pColors;
    m_nCount = nCount;
    m_nWidth = nWidth;
    FindExceptions();
}

QRgb StripColumns::ColorOf(int nEntry) const
{
    return m_pColors[nEntry] | Opaque;
}

// The end, one past its last entry, of the run that entry nEntry lies in.
int StripColumns::RunEnd(int nEntry) const
{
    const QRgb color = ColorOf(qMax(0, nEntry - 1));
    int i = nEntry;
    while (i < m_nCount - 1 && ColorOf(i) == color)
        ++i;
    return i + 1;
}

int StripColumns::EdgeOf(int nEntry) const
{
    return int(qint64(m_nWidth) * nEntry / m_nCount);
}

// A run is dropped if it ends within the pixels already drawn, but not while the last rectangle drawn begins
// at 0, and one that would have no width gets a pixel. So the run that follows the first wide one is drawn
// however narrow it is, and it then hides those that would have taken its pixel.
void StripColumns::FindExceptions()
{
    int end = RunEnd(0);
    if (EdgeOf(end) == 0) {
        const int second = RunEnd(end);
        const int edge = EdgeOf(second);
        if (edge > 0) {
            m_exceptions[0] = {0, ColorOf(0)};
            if (edge == 1)
                m_exceptions[1] = {1, ColorOf(end - 1)};
            return;
        }
        const int firstWide = (m_nCount - 1) / m_nWidth;
        end = RunEnd(firstWide);
    }
    if (end < m_nCount && EdgeOf(RunEnd(end)) == EdgeOf(end))
        m_exceptions[0] = {EdgeOf(end), ColorOf(end - 1)};
}

void StripColumns::Fill(int nFirst, int nColumns, QRgb* pOut) const
{
    // Column c shows entry ceil((c + 1) * count / width) - 2; quotient and remainder are carried from column
    // to column.
    const qint64 start = qint64(nFirst + 1) * m_nCount - 1;
    qint64 entry = start / m_nWidth - 1;
    qint64 rest = start % m_nWidth;
    const int step = m_nCount / m_nWidth;
    const int restStep = m_nCount % m_nWidth;
    for (int i = 0; i < nColumns; ++i) {
        pOut[i] = ColorOf(int(qMax(qint64(0), entry)));
        entry += step;
        rest += restStep;
        if (rest >= m_nWidth) {
            rest -= m_nWidth;
            ++entry;
        }
    }
    for (const Exception& exception : m_exceptions) {
        if (exception.column >= nFirst && exception.column < nFirst + nColumns)
            pOut[exception.column - nFirst] = exception.color;
    }
}
