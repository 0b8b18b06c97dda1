#include "layouts/Tilings.h"

#include <QVector>

namespace {

class Cover
{
public:
    explicit Cover(const SplitLayout& layout)
        : m_nRows(layout.rows), m_nCols(layout.cols), m_vecCount(layout.rows * layout.cols, 0)
    {
    }

    bool IsFree(const SplitCell& cell) const
    {
        if (cell.x1 < 0 || cell.y1 < 0 || cell.x2 > m_nRows || cell.y2 > m_nCols)
            return false;
        for (int row = cell.x1; row < cell.x2; ++row) {
            for (int col = cell.y1; col < cell.y2; ++col) {
                if (m_vecCount.at(row * m_nCols + col))
                    return false;
            }
        }
        return true;
    }

    void Add(const SplitCell& cell)
    {
        for (int row = cell.x1; row < cell.x2; ++row) {
            for (int col = cell.y1; col < cell.y2; ++col)
                ++m_vecCount[row * m_nCols + col];
        }
    }

    bool IsFull() const { return !m_vecCount.contains(0); }

private:
    int m_nRows;
    int m_nCols;
    QVector<int> m_vecCount;
};

} // namespace

SplitLayout RandomTiling(int rows, int cols, QRandomGenerator& random)
{
    SplitLayout layout{rows, cols, 0, {}};
    Cover cover(layout);
    for (int square = 0; square < rows * cols; ++square) {
        SplitCell cell{square / cols, square % cols, square / cols + 1, square % cols + 1};
        if (!cover.IsFree(cell))
            continue;
        for (int tries = random.bounded(8); tries > 0; --tries) {
            SplitCell wider = cell;
            ++(random.bounded(2) ? wider.x2 : wider.y2);
            if (cover.IsFree(wider))
                cell = wider;
        }
        cover.Add(cell);
        layout.cells.append(cell);
    }
    layout.count = layout.cells.size();
    return layout;
}

bool Tiles(const SplitLayout& layout)
{
    Cover cover(layout);
    for (const SplitCell& cell : layout.cells) {
        if (cell.x1 >= cell.x2 || cell.y1 >= cell.y2 || !cover.IsFree(cell))
            return false;
        cover.Add(cell);
    }
    return cover.IsFull() && layout.count == layout.cells.size();
}
