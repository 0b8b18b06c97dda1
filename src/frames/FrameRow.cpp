#include "frames/FrameRow.h"

namespace {

constexpr int GROUP = 4;
constexpr int LOAD_BYTES = 16;
constexpr int RGB_BYTES = 3;
constexpr uchar NO_BYTE = 0x80;

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
    m_shuffle.loads = FitsOneLoad(4) ? 1 : FitsOneLoad(2) ? 2 : 4;
    const int nPixels = GROUP / m_shuffle.loads;
    m_shuffle.starts.resize(FrameShuffle::Place(nGroups + nGroups % 2, 0, m_shuffle.loads));
    m_shuffle.lookup.resize(m_shuffle.starts.size() * LOAD_BYTES, NO_BYTE);
    for (int nFirst = 0; nFirst < nGroups * GROUP; nFirst += nPixels)
        AddLoad(nFirst, nPixels, nSourceBytes);
}

bool FrameRow::FitsOneLoad(int nPixels) const
{
    const int nWhole = int(m_vecOffsets.size()) / GROUP * GROUP;
    for (int nFirst = 0; nFirst < nWhole; nFirst += nPixels) {
        const int nSpan = m_vecOffsets[nFirst + nPixels - 1] + m_nPixelBytes - m_vecOffsets[nFirst];
        if (nSpan > LOAD_BYTES)
            return false;
    }
    return true;
}

/// The load of the last pixels starts early enough to end with the row; the lookup makes up for it.
void FrameRow::AddLoad(int nFirst, int nPixels, int nSourceBytes)
{
    const int nStart = qMin(m_vecOffsets[nFirst], nSourceBytes - LOAD_BYTES);
    const int nPlace = FrameShuffle::Place(nFirst / GROUP, nFirst % GROUP / nPixels, m_shuffle.loads);
    m_shuffle.starts[nPlace] = nStart;
    uchar* pLookup = m_shuffle.lookup.data() + nPlace * LOAD_BYTES;
    for (int n = nFirst; n < nFirst + nPixels; ++n) {
        uchar* pPixel = pLookup + n % GROUP * sizeof(QRgb);
        const int nByte = m_vecOffsets[n] - nStart;
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
    CopyOneByOne(pSource, pTarget + (nLast - nFrom), nLast, nTo);
}

void FrameRow::CopyOneByOne(const uchar* pSource, QRgb* pTarget, int nFrom, int nTo) const
{
    const bool bRgb = m_nPixelBytes == RGB_BYTES;
    for (int n = nFrom; n < nTo; ++n) {
        const uchar* pPixel = pSource + m_vecOffsets[n];
        *pTarget++ = bRgb ? qRgb(pPixel[0], pPixel[1], pPixel[2]) : qRgb(pPixel[2], pPixel[1], pPixel[0]);
    }
}

void FrameRow::Prefetch(const uchar* pSource, int nFrom, int nTo) const
{
    const int nFirstByte = m_vecOffsets[nFrom];
    PrefetchBytes(pSource + nFirstByte, m_vecOffsets[nTo - 1] + m_nPixelBytes - nFirstByte);
}

int FrameRow::Bytes() const
{
    return int((m_vecOffsets.size() + m_shuffle.starts.size()) * sizeof(int) + m_shuffle.lookup.size());
}
