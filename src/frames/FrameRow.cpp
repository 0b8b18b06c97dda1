#include "frames/FrameRow.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int GROUP = 4;
constexpr int LOAD_BYTES = 16;
constexpr int WIDE_BYTES = 32;
constexpr int RGB_BYTES = 3;
constexpr uchar NO_BYTE = 0x80;
constexpr int RARE = 64; // one pixel of so many may be taken by itself, which is still less than another load

} // namespace

FrameRow::FrameRow(const QVector<int>& vecColumns, int nSourceWidth, int nPixelBytes)
    : m_nPixelBytes(nPixelBytes)
{
    m_vecOffsets.reserve(vecColumns.size());
    for (int nColumn : vecColumns)
        m_vecOffsets.push_back(nColumn * nPixelBytes);
    const int nSourceBytes = nSourceWidth * nPixelBytes;
    const int nGroups = vecColumns.size() / GROUP;
    if (nSourceBytes < LOAD_BYTES || nGroups == 0)
        return;
    m_shuffle.loads = NearlyFitsOneLoad(4, LOAD_BYTES) ? 1 : NearlyFitsOneLoad(2, LOAD_BYTES) ? 2 : 4;
    const bool bWide = nPixelBytes == 4 && nSourceBytes >= WIDE_BYTES && m_shuffle.loads > 1;
    if (bWide && NearlyFitsOneLoad(4, WIDE_BYTES) && LooksUpWide()) {
        AddWideLoads(nGroups, nSourceBytes);
        return;
    }
    const int nPixels = GROUP / m_shuffle.loads;
    m_shuffle.starts.resize(FrameShuffle::Place(nGroups + nGroups % 2, 0, m_shuffle.loads));
    m_shuffle.lookup.resize(m_shuffle.starts.size() * LOAD_BYTES, NO_BYTE);
    for (int nFirst = 0; nFirst < nGroups * GROUP; nFirst += nPixels)
        AddLoad(nFirst, nPixels, nSourceBytes);
}

void FrameRow::AddWideLoads(int nGroups, int nSourceBytes)
{
    m_shuffle.loads = 1;
    m_shuffle.wide = true;
    // The loads of the lookup go on beyond the last group.
    m_shuffle.lookup.resize((nGroups + 1) * LOAD_BYTES);
    for (int nGroup = 0; nGroup < nGroups; ++nGroup) {
        const int nStart = qMin(m_vecOffsets[nGroup * GROUP], nSourceBytes - WIDE_BYTES);
        m_shuffle.starts.push_back(nStart);
        for (int n = nGroup * GROUP; n < (nGroup + 1) * GROUP; ++n) {
            quint32 nPixel = quint32(m_vecOffsets[n] - nStart) / 4;
            if (nPixel >= WIDE_BYTES / 4) {
                m_vecMisfits.push_back(n);
                nPixel = 0;
            }
            std::memcpy(m_shuffle.lookup.data() + n * sizeof nPixel, &nPixel, sizeof nPixel);
        }
    }
}

bool FrameRow::NearlyFitsOneLoad(int nPixels, int nLoadBytes) const
{
    const int nWhole = int(m_vecOffsets.size()) / GROUP * GROUP;
    int nMisfits = 0;
    for (int n = 0; n < nWhole; ++n)
        nMisfits += m_vecOffsets[n] + m_nPixelBytes - m_vecOffsets[n / nPixels * nPixels] > nLoadBytes;
    return nMisfits * RARE <= nWhole;
}

/// The load of the last pixels starts early enough to end with the row; the lookup makes up for it. What lies
/// beyond a load is left to PatchMisfits().
void FrameRow::AddLoad(int nFirst, int nPixels, int nSourceBytes)
{
    const int nStart = qMin(m_vecOffsets[nFirst], nSourceBytes - LOAD_BYTES);
    const int nPlace = FrameShuffle::Place(nFirst / GROUP, nFirst % GROUP / nPixels, m_shuffle.loads);
    m_shuffle.starts[nPlace] = nStart;
    uchar* pLookup = m_shuffle.lookup.data() + nPlace * LOAD_BYTES;
    for (int n = nFirst; n < nFirst + nPixels; ++n) {
        uchar* pPixel = pLookup + n % GROUP * sizeof(QRgb);
        const int nByte = m_vecOffsets[n] - nStart;
        if (nByte + m_nPixelBytes > LOAD_BYTES) {
            m_vecMisfits.push_back(n);
            std::fill_n(pPixel, RGB_BYTES, uchar(0));
            continue;
        }
        for (int i = 0; i < RGB_BYTES; ++i)
            pPixel[i] = uchar(nByte + (m_nPixelBytes == RGB_BYTES ? RGB_BYTES - 1 - i : i));
    }
}

void FrameRow::Copy(const uchar* pSource, QRgb* pTarget, int nFrom, int nTo) const
{
    const int nFirstGroup = (nFrom + GROUP - 1) / GROUP;
    const int nLastGroup = m_shuffle.loads == 0 ? 0 : nTo / GROUP;
    if (nFirstGroup >= nLastGroup) {
        CopyOneByOne(pSource, pTarget, nFrom, nTo);
        return;
    }
    const int nFirst = nFirstGroup * GROUP;
    const int nLast = nLastGroup * GROUP;
    CopyOneByOne(pSource, pTarget, nFrom, nFirst);
    ShuffleGroups(m_shuffle, pSource, pTarget + (nFirst - nFrom), nFirstGroup, nLastGroup);
    PatchMisfits(pSource, pTarget, nFrom, nLast);
    CopyOneByOne(pSource, pTarget + (nLast - nFrom), nLast, nTo);
}

void FrameRow::CopyOneByOne(const uchar* pSource, QRgb* pTarget, int nFrom, int nTo) const
{
    for (int n = nFrom; n < nTo; ++n)
        *pTarget++ = Pixel(pSource, n);
}

/// Writes the pixels that lie beyond their group's loads; `pTarget` is where column `nFrom` goes.
void FrameRow::PatchMisfits(const uchar* pSource, QRgb* pTarget, int nFrom, int nTo) const
{
    auto it = std::lower_bound(m_vecMisfits.begin(), m_vecMisfits.end(), nFrom);
    for (; it != m_vecMisfits.end() && *it < nTo; ++it)
        pTarget[*it - nFrom] = Pixel(pSource, *it);
}

QRgb FrameRow::Pixel(const uchar* pSource, int n) const
{
    const uchar* pPixel = pSource + m_vecOffsets[n];
    return m_nPixelBytes == RGB_BYTES ? qRgb(pPixel[0], pPixel[1], pPixel[2])
                                      : qRgb(pPixel[2], pPixel[1], pPixel[0]);
}

void FrameRow::Prefetch(const uchar* pSource, int nFrom, int nTo) const
{
    const int nFirstByte = m_vecOffsets[nFrom];
    PrefetchBytes(pSource + nFirstByte, m_vecOffsets[nTo - 1] + m_nPixelBytes - nFirstByte);
}

int FrameRow::Bytes() const
{
    return int((m_vecOffsets.size() + m_vecMisfits.size() + m_shuffle.starts.size()) * sizeof(int) +
               m_shuffle.lookup.size());
}
