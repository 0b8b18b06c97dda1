#include "layouts/SplitEditor.h"

#include <QRect>

namespace {

/// A matrix seen along its row lines, or along its column lines: `line` is the position across, `along` the
/// one on the line.
class LineView
{
public:
    LineView(SplitMatrix& matrix, bool horizontal) : m_matrix(matrix), m_bHorizontal(horizontal) {}

    int At(int line, int along) const
    {
        return m_bHorizontal ? m_matrix.At(line, along) : m_matrix.At(along, line);
    }

    /// Places one beyond the grid may be written, and no others.
    void Set(int line, int along, int mark)
    {
        (m_bHorizontal ? m_matrix.cells[line][along] : m_matrix.cells[along][line]) = mark;
    }

    int LastLine() const { return m_bHorizontal ? m_matrix.LastRow() : m_matrix.LastCol(); }
    int LastAlong() const { return m_bHorizontal ? m_matrix.LastCol() : m_matrix.LastRow(); }

private:
    SplitMatrix& m_matrix;
    bool m_bHorizontal;
};

/// The stretch of a line between two neighbouring crossings.
struct Unit
{
    bool horizontal = false;
    int line = 0;
    int start = 0;
};

SplitSegment SegmentOf(const Unit& unit)
{
    if (unit.horizontal)
        return {true, unit.line, unit.start, unit.line, unit.start + 2};
    return {false, unit.start, unit.line, unit.start + 2, unit.line};
}

/// Follows a line from a unit that goes to what must go with it.
class EraseWalk
{
public:
    EraseWalk(SplitMatrix& matrix, bool marksPoints) : m_matrix(matrix), m_bMarksPoints(marksPoints) {}

    /// `from` is the unit that led here, null for the first one.
    void EraseSegment(const Unit& unit, const Unit* from)
    {
        LineView view(m_matrix, unit.horizontal);
        const int start = unit.start, end = unit.start + 2;
        if (unit.line < 1 || unit.line >= view.LastLine() || start < 0 || end > view.LastAlong())
            return;
        m_vecVisits.append({SegmentOf(unit), view.At(unit.line, start + 1) > 0});
        MarkPoint(view, unit.line, start, start - 1);
        view.Set(unit.line, start + 1, SplitMatrix::Empty);
        MarkPoint(view, unit.line, end, end + 1);
        GoOn(unit, start, start - 2, from);
        GoOn(unit, end, end, from);
    }

    QVector<SplitVisit> Visits() const { return m_vecVisits; }

private:
    void MarkPoint(LineView& view, int line, int along, int beyond) const
    {
        if (!m_bMarksPoints)
            return;
        const bool crossed = view.At(line + 1, along) > 0 || view.At(line - 1, along) > 0;
        const int mark = view.At(line, beyond) > 0 ? SplitMatrix::Corner : SplitMatrix::Line;
        view.Set(line, along, crossed ? mark : int(SplitMatrix::Empty));
    }

    /// From one end of the unit; `next` is where the unit beyond that end starts.
    void GoOn(const Unit& unit, int along, int next, const Unit* from)
    {
        const LineView view(m_matrix, unit.horizontal);
        const auto after = [&] { return view.At(unit.line + 1, along); };
        const auto before = [&] { return view.At(unit.line - 1, along); };
        if (after() == 0 || before() == 0)
            EraseUnlessFrom({unit.horizontal, unit.line, next}, unit, from);
        if (after() == 0 && before() == 1)
            EraseUnlessFrom({!unit.horizontal, along, unit.line - 2}, unit, from);
        if (after() == 1 && before() == 0)
            EraseUnlessFrom({!unit.horizontal, along, unit.line}, unit, from);
    }

    void EraseUnlessFrom(const Unit& next, const Unit& unit, const Unit* from)
    {
        if (!from || !(SegmentOf(next) == SegmentOf(*from)))
            EraseSegment(next, &unit);
    }

    SplitMatrix& m_matrix;
    bool m_bMarksPoints;
    QVector<SplitVisit> m_vecVisits;
};

QVector<SplitVisit> Walk(SplitMatrix& matrix, const SplitSegment& segment, bool marksPoints)
{
    EraseWalk walk(matrix, marksPoints);
    if (segment.horizontal)
        walk.EraseSegment({true, segment.rowStart, segment.colStart}, nullptr);
    else
        walk.EraseSegment({false, segment.colStart, segment.rowStart}, nullptr);
    return walk.Visits();
}

/// The matrix position of the grid line that catches a pixel, 0 if there is none.
int LineNear(int pixel, int pitch)
{
    if ((pixel + 2) % pitch < 2)
        return (pixel + 2) / pitch * 2;
    return pixel % pitch < 2 ? pixel / pitch * 2 : 0;
}

/// Whether the walk over plain line in a direction ends at a corner.
bool RunsToCorner(const SplitMatrix& matrix, int row, int col, int rowStep, int colStep)
{
    while (matrix.At(row, col) == SplitMatrix::Line) {
        row += rowStep;
        col += colStep;
    }
    return matrix.At(row, col) == SplitMatrix::Corner;
}

} // namespace

QSize SplitEditor::Pitch(const SplitMatrix& matrix, const QSize& size)
{
    if (matrix.LastRow() == 0 || matrix.LastCol() == 0)
        return QSize(0, 0);
    return QSize(size.width() * 2 / matrix.LastCol(), size.height() * 2 / matrix.LastRow());
}

bool SplitEditor::HitTest(const SplitMatrix& matrix, const QSize& size, const QPoint& pos, SplitHit& hit)
{
    hit = SplitHit();
    const QSize pitch = Pitch(matrix, size);
    if (pitch.isEmpty())
        return false;
    const QRect grid(0, 0, matrix.LastCol() / 2 * pitch.width(), matrix.LastRow() / 2 * pitch.height());
    if (!grid.adjusted(0, 0, 2, 2).contains(pos))
        return false;
    hit.col = LineNear(pos.x(), pitch.width());
    hit.row = LineNear(pos.y(), pitch.height());
    const bool rowBorder = hit.row == 0 || hit.row == matrix.LastRow();
    const bool colBorder = hit.col == 0 || hit.col == matrix.LastCol();
    return hit.row <= matrix.LastRow() && hit.col <= matrix.LastCol() && !(rowBorder && colBorder);
}

bool SplitEditor::ClassifyHit(const SplitMatrix& matrix, const QSize& size, const QPoint& pos,
                              const SplitHit& hit, SplitSegment& segment)
{
    const QSize pitch = Pitch(matrix, size);
    if (hit.row > 0 && hit.col > 0) {
        segment = {true, hit.row, hit.col - 1, hit.row, hit.col};
        return matrix.At(hit.row, hit.col) > 0;
    }
    if (hit.row > 0) {
        const int col = pos.x() / pitch.width() * 2;
        segment = {true, hit.row, col, hit.row, col + 1};
        return RunsToCorner(matrix, hit.row, col, 0, -1) && RunsToCorner(matrix, hit.row, col + 1, 0, 1);
    }
    const int row = pos.y() / pitch.height() * 2;
    segment = {false, row, hit.col, row + 1, hit.col};
    return RunsToCorner(matrix, row, hit.col, -1, 0) && RunsToCorner(matrix, row + 1, hit.col, 1, 0);
}

SplitSegment SplitEditor::Widened(const SplitSegment& segment)
{
    SplitSegment unit = segment;
    int& start = unit.horizontal ? unit.colStart : unit.rowStart;
    int& end = unit.horizontal ? unit.colEnd : unit.rowEnd;
    start -= start % 2;
    end += end % 2;
    return unit;
}

bool SplitEditor::ExtendSegment(const SplitMatrix& matrix, SplitSegment& segment)
{
    if (segment.rowStart < 0 || segment.rowEnd > matrix.LastRow() || segment.colStart < 0 ||
        segment.colEnd > matrix.LastCol())
        return false;
    int& start = segment.horizontal ? segment.colStart : segment.rowStart;
    int& end = segment.horizontal ? segment.colEnd : segment.rowEnd;
    const int last = segment.horizontal ? matrix.LastCol() : matrix.LastRow();
    while (start > 0 && matrix.At(segment.rowStart, segment.colStart) == SplitMatrix::Empty)
        --start;
    while (end < last && matrix.At(segment.rowEnd, segment.colEnd) == SplitMatrix::Empty)
        ++end;
    return true;
}

void SplitEditor::AddLine(SplitMatrix& matrix, const SplitSegment& segment)
{
    for (int row = segment.rowStart; row <= segment.rowEnd; ++row) {
        for (int col = segment.colStart; col <= segment.colEnd; ++col) {
            if (matrix.cells[row][col] == SplitMatrix::Empty)
                matrix.cells[row][col] = SplitMatrix::Line;
        }
    }
    matrix.cells[segment.rowStart][segment.colStart] = SplitMatrix::Corner;
    matrix.cells[segment.rowEnd][segment.colEnd] = SplitMatrix::Corner;
}

QVector<SplitVisit> SplitEditor::EraseSegment(SplitMatrix& matrix, const SplitSegment& unit)
{
    return Walk(matrix, unit, true);
}

QVector<SplitVisit> SplitEditor::PreviewErase(SplitMatrix& scratch, const SplitSegment& unit)
{
    return Walk(scratch, unit, false);
}

bool SplitEditor::Resize(SplitMatrix& matrix, int kind, int value)
{
    if (kind < 0 || kind > 1 || value < 1 || value > SplitMatrix::MaxGrid)
        return false;
    int& units = kind == 0 ? matrix.rows : matrix.cols;
    LineView view(matrix, kind == 0);
    const int border = 2 * value;
    for (int line = view.LastLine() + 2; line <= border; line += 2) {
        for (int along = 0; along <= view.LastAlong(); along += 2) {
            view.Set(line - 2, along, SplitMatrix::Corner);
            view.Set(line - 1, along, SplitMatrix::Line);
            view.Set(line, along, SplitMatrix::Corner);
            view.Set(line, along + 1, SplitMatrix::Line);
        }
    }
    for (int along = 0; border < view.LastLine() && along <= view.LastAlong(); along += 2) {
        const bool meetsLine = view.At(border - 1, along) >= 1;
        view.Set(border, along, meetsLine ? SplitMatrix::Corner : SplitMatrix::Line);
        view.Set(border, along + 1, SplitMatrix::Line);
    }
    units = value;
    return true;
}
