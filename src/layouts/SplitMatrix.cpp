#include "layouts/SplitMatrix.h"

#include <optional>

namespace {

void MarkLine(int& position)
{
    if (position == SplitMatrix::Empty)
        position = SplitMatrix::Line;
}

void DrawCell(const SplitCell& cell, SplitMatrix& out)
{
    const int top = 2 * cell.x1, left = 2 * cell.y1, bottom = 2 * cell.x2, right = 2 * cell.y2;
    for (int row : {top, bottom}) {
        for (int col : {left, right})
            out.cells[row][col] = SplitMatrix::Corner;
    }
    for (int col = left + 1; col < right; ++col) {
        MarkLine(out.cells[top][col]);
        MarkLine(out.cells[bottom][col]);
    }
    for (int row = top + 1; row < bottom; ++row) {
        MarkLine(out.cells[row][left]);
        MarkLine(out.cells[row][right]);
    }
}

bool IsBoxSolid(const SplitMatrix& matrix, int top, int left, int bottom, int right)
{
    return SplitLines::IsSolid(matrix, top, left, top, right) &&
           SplitLines::IsSolid(matrix, top, right, bottom, right) &&
           SplitLines::IsSolid(matrix, top, left, bottom, left) &&
           SplitLines::IsSolid(matrix, bottom, left, bottom, right);
}

/// Walks down from a possible top right corner. The bottom line, 0 if the right edge runs out of the grid
/// before it closes a cell, and nothing if it ends in the open, so that no wider cell can be there either.
std::optional<int> BottomOf(const SplitMatrix& matrix, int top, int left, int right)
{
    for (int row = top + 1; row <= matrix.LastRow(); ++row) {
        const int mark = matrix.At(row, right);
        const bool corner = mark == SplitMatrix::Corner && matrix.At(row, right - 1) > 0 &&
                            matrix.At(row, left) == SplitMatrix::Corner;
        if (corner && IsBoxSolid(matrix, top, left, row, right))
            return row;
        if (mark == SplitMatrix::Empty)
            return std::nullopt;
    }
    return 0;
}

/// The cell whose top left corner lies at the position: the narrowest that closes, and of those the
/// shallowest.
std::optional<SplitCell> CellAt(const SplitMatrix& matrix, int top, int left)
{
    for (int right = left + 1; right <= matrix.LastCol(); ++right) {
        const int mark = matrix.At(top, right);
        if (mark == SplitMatrix::Corner && matrix.At(top + 1, right) > 0) {
            const std::optional<int> bottom = BottomOf(matrix, top, left, right);
            if (!bottom)
                return std::nullopt;
            if (*bottom > 0)
                return SplitCell{top / 2, left / 2, *bottom / 2, right / 2};
        } else if (mark == SplitMatrix::Empty) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

/// The distance to the next corner in a direction; 0 if the line ends before one.
int DistanceToCorner(const SplitMatrix& matrix, int row, int col, int rowStep, int colStep)
{
    for (int distance = 1; distance < SplitMatrix::Stride; ++distance) {
        const int mark = matrix.At(row + distance * rowStep, col + distance * colStep);
        if (mark == SplitMatrix::Corner)
            return distance;
        if (mark == SplitMatrix::Empty)
            return 0;
    }
    return 0;
}

} // namespace

void SplitLines::FromLayout(const SplitLayout& layout, SplitMatrix& out)
{
    out.rows = qBound(0, layout.rows, SplitMatrix::MaxGrid);
    out.cols = qBound(0, layout.cols, SplitMatrix::MaxGrid);
    for (int row = 0; row <= out.LastRow(); ++row) {
        for (int col = 0; col <= out.LastCol(); ++col)
            out.cells[row][col] = SplitMatrix::Empty;
    }
    for (int i = 0; i < qMin(layout.count, layout.cells.size()); ++i) {
        if (IsInGrid(layout.cells.at(i), out.rows, out.cols))
            DrawCell(layout.cells.at(i), out);
    }
}

void SplitLines::ToLayout(const SplitMatrix& matrix, SplitLayout& out)
{
    out.rows = matrix.rows;
    out.cols = matrix.cols;
    out.count = 0;
    for (int row = 0; row < matrix.LastRow(); ++row) {
        for (int col = 0; col < matrix.LastCol(); ++col) {
            if (matrix.At(row, col) != SplitMatrix::Corner)
                continue;
            if (const std::optional<SplitCell> cell = CellAt(matrix, row, col)) {
                out.cells.append(*cell);
                ++out.count;
            }
        }
    }
}

bool SplitLines::IsSolid(const SplitMatrix& matrix, int r1, int c1, int r2, int c2)
{
    if (r1 == r2) {
        for (int col = c1; col <= c2; ++col) {
            if (matrix.At(r1, col) == SplitMatrix::Empty)
                return false;
        }
    } else if (c1 == c2) {
        for (int row = r1; row <= r2; ++row) {
            if (matrix.At(row, c1) == SplitMatrix::Empty)
                return false;
        }
    }
    return true;
}

QVector<QLine> SplitLines::Inner(const SplitMatrix& matrix)
{
    const int bottom = matrix.LastRow(), right = matrix.LastCol();
    QVector<QLine> lines;
    for (int row = 0; row <= bottom; ++row) {
        for (int col = 0; col <= right; ++col) {
            if (matrix.At(row, col) != SplitMatrix::Corner)
                continue;
            const int across = DistanceToCorner(matrix, row, col, 0, 1);
            if (across > 0 && row > 0 && row < bottom)
                lines.append(QLine(col, row, col + across, row));
            const int down = DistanceToCorner(matrix, row, col, 1, 0);
            if (down > 0 && col > 0 && col < right)
                lines.append(QLine(col, row, col, row + down));
        }
    }
    return lines;
}
