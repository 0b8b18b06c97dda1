#pragma once

#include <QRgb>

/// Which colour of a table each pixel column of the strip shows, without walking the table's runs.
///
/// The strip is drawn as runs of equal colour. The entry that ends a run still belongs to it, in the run's
/// colour, so entry j shows the colour of entry j - 1, and a column shows the first run whose right edge lies
/// beyond it. Only at the start of the table do the rules for narrow runs give up to two columns another run;
/// these are found once, when the object is made.
///
/// The table isn't copied: it must outlive the object and stay as it is.
class StripColumns
{
public:
    StripColumns() = default;

    /// nWidth is the strip's width in pixels. A table without entries or a width below 1 has no columns.
    StripColumns(const unsigned int* pColors, int nCount, int nWidth);

    int Width() const { return m_nWidth; }

    /// Writes the opaque colours of nColumns columns from nFirst on; all of them must lie between 0 and
    /// Width() - 1.
    void Fill(int nFirst, int nColumns, QRgb* pOut) const;

private:
    struct Exception
    {
        int column = -1;
        QRgb color = 0;
    };

    QRgb ColorOf(int nEntry) const;
    int RunEnd(int nEntry) const;
    int EdgeOf(int nEntry) const;
    void FindExceptions();

    const unsigned int* m_pColors = nullptr;
    int m_nCount = 0;
    int m_nWidth = 0;
    Exception m_exceptions[2];
};
