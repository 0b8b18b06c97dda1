#pragma once

#include "frames/FrameShuffle.h"

#include <QRgb>
#include <QVector>

/// How a row of 32-bit pixels is taken from a row of RGB888 or of 32-bit pixels.
class FrameRow
{
public:
    /// `vecColumns` names the source column of each target column: ascending, and below `nSourceWidth`. A
    /// pixel of the source takes 3 or 4 bytes.
    FrameRow(const QVector<int>& vecColumns, int nSourceWidth, int nPixelBytes);

    /// Writes the target columns from `nFrom` up to, not with, `nTo` as opaque pixels. `pTarget` is where
    /// column `nFrom` goes. Reads no byte outside the pixels of the source row.
    void Copy(const uchar* pSource, QRgb* pTarget, int nFrom, int nTo) const;

    /// Has what a Copy() of these columns would read fetched into the cache.
    void Prefetch(const uchar* pSource, int nFrom, int nTo) const;

    /// What it occupies, in bytes.
    int Bytes() const;

private:
    bool NearlyFitsOneLoad(int nPixels, int nLoadBytes) const;
    void AddWideLoads(int nGroups, int nSourceBytes);
    void AddLoad(int nFirst, int nPixels, int nSourceBytes);
    void CopyOneByOne(const uchar* pSource, QRgb* pTarget, int nFrom, int nTo) const;
    void PatchMisfits(const uchar* pSource, QRgb* pTarget, int nFrom, int nTo) const;
    QRgb Pixel(const uchar* pSource, int n) const;

    int m_nPixelBytes;
    std::vector<int> m_vecOffsets;
    std::vector<int> m_vecMisfits;
    FrameShuffle m_shuffle;
};
