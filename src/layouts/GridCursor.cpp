#include "layouts/GridCursor.h"

#include "layouts/SplitEditor.h"

#include <algorithm>

namespace {

QRect SquaresOf(const SplitCell& cell)
{
    return QRect(cell.y1, cell.x1, cell.y2 - cell.y1, cell.x2 - cell.x1);
}

SplitLayout LayoutOf(const SplitMatrix& matrix)
{
    SplitLayout layout;
    SplitLines::ToLayout(matrix, layout);
    return layout;
}

QPoint Within(const SplitMatrix& matrix, const QPoint& square)
{
    return QPoint(qBound(0, square.x(), qMax(0, matrix.LastCol() / 2 - 1)),
                  qBound(0, square.y(), qMax(0, matrix.LastRow() / 2 - 1)));
}

} // namespace

void GridCursor::Step(const SplitMatrix& matrix, const QPoint& way, bool grows)
{
    at = Within(matrix, at + way);
    if (!grows)
        anchor = at;
}

void GridCursor::Clamp(const SplitMatrix& matrix)
{
    at = Within(matrix, at);
    anchor = Within(matrix, anchor);
}

QRect GridCursor::Selected(const SplitMatrix& matrix) const
{
    const SplitLayout layout = LayoutOf(matrix);
    QRect squares = QRect(at, QSize(1, 1)) | QRect(anchor, QSize(1, 1));
    for (bool grows = true; grows;) {
        grows = false;
        for (const SplitCell& cell : layout.cells) {
            const QRect rect = SquaresOf(cell);
            grows = grows || (squares.intersects(rect) && !squares.contains(rect));
            if (squares.intersects(rect))
                squares |= rect;
        }
    }
    return squares;
}

bool GridKeys::Join(SplitMatrix& matrix, const QRect& squares)
{
    SplitLayout layout = LayoutOf(matrix);
    const auto goes = [&](const SplitCell& cell) { return squares.contains(SquaresOf(cell)); };
    const auto kept = std::remove_if(layout.cells.begin(), layout.cells.end(), goes);
    if (layout.cells.end() - kept < 2)
        return false;
    layout.cells.erase(kept, layout.cells.end());
    layout.cells.append({squares.top(), squares.left(), squares.bottom() + 1, squares.right() + 1});
    layout.count = int(layout.cells.size());
    SplitLines::FromLayout(layout, matrix);
    return true;
}

bool GridKeys::Cut(SplitMatrix& matrix, const QPoint& square, const QPoint& way)
{
    const int row = 2 * square.y(), col = 2 * square.x();
    SplitSegment segment{true, row, col, row, col + 1};
    if (way.x() != 0)
        segment = {false, row, col, row + 1, col};
    if (way.x() > 0)
        segment.colStart = segment.colEnd = col + 2;
    if (way.y() > 0)
        segment.rowStart = segment.rowEnd = row + 2;
    if (matrix.At(segment.rowEnd, segment.colEnd) != SplitMatrix::Empty ||
        !SplitEditor::ExtendSegment(matrix, segment))
        return false;
    SplitEditor::AddLine(matrix, segment);
    return true;
}

int GridKeys::PaneAt(const SplitMatrix& matrix, const QPoint& square)
{
    const SplitLayout layout = LayoutOf(matrix);
    for (int i = 0; i < layout.cells.size(); ++i) {
        if (SquaresOf(layout.cells.at(i)).contains(square))
            return i;
    }
    return -1;
}
