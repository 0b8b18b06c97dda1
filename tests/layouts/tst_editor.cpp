#include "layouts/BuiltInLayouts.h"
#include "layouts/CSplitWidget.h"
#include "layouts/Tilings.h"
#include "support/DeckTestCase.h"
#include "support/Mouse.h"
#include "support/Pixels.h"
#include "support/SignalLog.h"

#include <QScreen>

#include <cstring>

namespace {

using Cells = QList<SplitCell>;

SplitMatrix MatrixOf(const SplitLayout& layout)
{
    SplitMatrix matrix;
    SplitLines::FromLayout(layout, matrix);
    return matrix;
}

SplitLayout LayoutOf(const SplitMatrix& matrix)
{
    SplitLayout layout;
    SplitLines::ToLayout(matrix, layout);
    return layout;
}

SplitLayout SingleSquares(int rows, int cols)
{
    SplitLayout layout{rows, cols, rows * cols, {}};
    for (int i = 0; i < rows * cols; ++i)
        layout.cells.append({i / cols, i % cols, i / cols + 1, i % cols + 1});
    return layout;
}

SplitLayout OneCell(int rows, int cols)
{
    return {rows, cols, 1, {{0, 0, rows, cols}}};
}

bool IsSame(const SplitMatrix& a, const SplitMatrix& b)
{
    return std::memcmp(a.cells, b.cells, sizeof a.cells) == 0 && a.rows == b.rows && a.cols == b.cols;
}

/// The colours of the pixels that the widget draws in a row or column of it.
QImage Picture(CSplitWidget& widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

int CountOf(const QImage& image, QRgb color)
{
    return CountPixels(image, [&](int x, int y) { return image.pixel(x, y) == color; });
}

constexpr QRgb Background = 0xff383e4a;
constexpr QRgb LayoutLine = 0xffa4c746;
constexpr QRgb Added = 0xff00fa00;
constexpr QRgb Removed = 0xfffa0000;

} // namespace

class tst_editor : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void hit();
    void click();
    void resize();
    void anyClickAnywhereIsSafe();
    void randomWalkKeepsTiling();
    void paintsLayout();
    void paintsPreview();
    void repaintsUnderMouse();
    void diesInItsSignal();
    void keys();
};

void tst_editor::hit()
{
    // A grid of 4 by 4 on 203 by 202 pixels: lines at 0, 50, 100, 150 and 200.
    struct
    {
        const char* name;
        int x, y;
        bool near;
        int row, col;
    } const rows[] = {
        {"three pixels before", 47, 20, false, 0, 0},
        {"two pixels before", 48, 20, true, 0, 2},
        {"one pixel behind", 51, 20, true, 0, 2},
        {"two pixels behind", 52, 20, false, 0, 0},
        {"row line, before", 20, 98, true, 4, 0},
        {"row line, missed", 20, 102, false, 0, 0},
        {"crossing", 149, 51, true, 2, 6},
        {"left border", 0, 20, false, 0, 0},
        {"bottom right corner", 200, 200, false, 8, 8},
        {"column line at the bottom border", 50, 201, true, 8, 2},
        {"strip at the right", 202, 50, false, 0, 0},
    };
    for (const auto& row : rows) {
        SplitHit hit{17, 17};
        const SplitMatrix matrix = MatrixOf(OneCell(4, 4));
        const bool near = SplitEditor::HitTest(matrix, QSize(203, 202), QPoint(row.x, row.y), hit);
        QVERIFY2(near == row.near && hit.row == row.row && hit.col == row.col, row.name);
    }
}

void tst_editor::click()
{
    // On 200 by 200 pixels.
    const Cells four = SingleSquares(2, 2).cells;
    const Cells one = OneCell(2, 2).cells;
    const Cells halves{{0, 0, 2, 1}, {0, 1, 2, 2}};
    const Cells rowHalves{{0, 0, 1, 2}, {1, 0, 2, 2}};
    const Cells wideTop{{0, 0, 1, 2}, {1, 0, 2, 1}, {1, 1, 2, 2}};
    const Cells large{{0, 0, 3, 3}, {0, 3, 1, 4}, {1, 3, 2, 4}, {2, 3, 3, 4},
                      {3, 0, 4, 1}, {3, 1, 4, 2}, {3, 2, 4, 3}, {3, 3, 4, 4}};
    const Cells largeCut = Cells{{0, 0, 3, 2}, {0, 2, 3, 3}} + large.mid(1);
    const std::tuple<const char*, Cells, int, QPoint, Cells> rows[] = {
        {"upper half of a cross", four, 2, {100, 30}, wideTop},
        {"right half of a cross", four, 2, {150, 100}, {{0, 0, 1, 1}, {0, 1, 2, 2}, {1, 0, 2, 1}}},
        {"stem of a T", wideTop, 2, {100, 150}, rowHalves},
        {"bar of a T", wideTop, 2, {30, 100}, one},
        {"cross, from its middle", four, 2, {100, 100}, {{0, 0, 2, 1}, {0, 1, 1, 2}, {1, 1, 2, 2}}},
        {"new column line", one, 2, {100, 30}, halves},
        {"row line wins at a free crossing", one, 2, {99, 98}, rowHalves},
        {"column line runs, row line doesn't", halves, 2, {100, 100}, halves},
        {"row line at the right border", rowHalves, 2, {199, 100}, one},
        {"no row line at the right border", one, 2, {199, 100}, one},
        {"column line at the bottom border", wideTop, 2, {100, 199}, wideTop},
        {"column line at the top border", wideTop, 2, {100, 0}, four},
        {"only the cell under the cursor is cut", large, 4, {100, 70}, largeCut},
        {"a line between corners of other cells",
         {{0, 0, 1, 1}, {0, 1, 1, 2}, {0, 2, 1, 4}, {1, 0, 2, 4}, {2, 0, 4, 4}},
         4,
         {25, 50},
         {{0, 0, 2, 4}, {2, 0, 4, 4}}}};
    for (const auto& [name, before, grid, pos, after] : rows) {
        CSplitWidget widget(nullptr);
        widget.resize(200, 200);
        widget.SetMatrix(MatrixOf({grid, grid, int(before.size()), before}));
        SignalLog log;
        log.WatchAll(&widget);
        Mouse::Press(&widget, pos, Qt::MiddleButton);
        QVERIFY2(log.Take() == QStringList("sig_update()"), name);
        QVERIFY2(LayoutOf(widget.m_matrix).cells == after, name);
    }
}

void tst_editor::resize()
{
    const Cells one = OneCell(2, 2).cells;
    const Cells wideTop{{0, 0, 1, 2}, {1, 0, 2, 1}, {1, 1, 2, 2}};
    const std::tuple<Cells, int, int, Cells> steps[] = {
        {one, 0, 3, {{0, 0, 2, 2}, {2, 0, 3, 1}, {2, 1, 3, 2}}},
        {one, 1, 3, {{0, 0, 2, 2}, {0, 2, 1, 3}, {1, 2, 2, 3}}},
        {wideTop, 0, 1, {{0, 0, 1, 2}}},
        {wideTop, 1, 1, {{0, 0, 1, 1}, {1, 0, 2, 1}}},
        {wideTop, 0, 2, wideTop},
    };
    for (const auto& [before, kind, value, after] : steps) {
        CSplitWidget widget(nullptr);
        widget.SetMatrix(MatrixOf({2, 2, int(before.size()), before}));
        SignalLog log;
        log.WatchAll(&widget);
        widget.SetGridSize(kind, value);
        QCOMPARE(log.Take(), QStringList("sig_update()"));
        QCOMPARE(kind == 0 ? widget.m_matrix.rows : widget.m_matrix.cols, value);
        QCOMPARE(LayoutOf(widget.m_matrix).cells, after);
        for (int bad : {0, 9, 2147483647})
            widget.SetGridSize(kind, bad);
        QCOMPARE(log.Take(), QStringList());
    }
}

/// From no content at all over 0 to 3 pixels for a column to wild numbers.
void tst_editor::anyClickAnywhereIsSafe()
{
    const std::tuple<int, int, QSize> grids[] = {
        {0, 0, {50, 50}}, {8, 0, {50, 50}}, {1, 1, {50, 50}}, {8, 8, {7, 90}},
        {8, 8, {15, 15}}, {8, 8, {23, 17}}, {7, 8, {31, 31}}, {2000000000, -7, {40, 40}}};
    for (const auto& [rows, cols, size] : grids) {
        const bool grid = rows > 0 && rows <= 8 && cols > 0;
        CSplitWidget widget(nullptr);
        widget.resize(size);
        SplitMatrix matrix = MatrixOf(OneCell(rows, cols));
        matrix.rows = rows;
        matrix.cols = cols;
        widget.SetMatrix(matrix);
        for (int i = 0; i < 3000; ++i) {
            Mouse::Press(&widget, QPoint(i % 53 - 2, i / 53 - 2));
            QVERIFY(!grid || IsTiling(LayoutOf(widget.m_matrix)));
        }
        widget.grab();
        QVERIFY(rows != 1 || IsSame(widget.m_matrix, matrix));
    }
}

void tst_editor::randomWalkKeepsTiling()
{
    constexpr int Steps = 100000;
    const QSize size(397, 301);
    QRandomGenerator random = SeededGenerator();
    SplitMatrix matrix = MatrixOf(BuiltInLayout(2));
    int erased = 0, added = 0;
    for (int step = 0; step < Steps;) {
        const QPoint pos(random.bounded(size.width()), random.bounded(size.height()));
        SplitHit hit;
        SplitSegment segment;
        if (random.bounded(200) == 0) {
            QVERIFY(SplitEditor::Resize(matrix, random.bounded(2), random.bounded(1, 9)));
        } else if (random.bounded(2000) == 0) {
            SplitLines::FromLayout(RandomTiling(random), matrix);
        } else if (!SplitEditor::HitTest(matrix, size, pos, hit)) {
            continue;
        } else if (SplitEditor::ClassifyHit(matrix, size, pos, hit, segment)) {
            SplitMatrix scratch = matrix;
            segment = SplitEditor::Widened(segment);
            QVERIFY(SplitEditor::PreviewErase(scratch, segment) ==
                    SplitEditor::EraseSegment(matrix, segment));
            ++erased;
        } else {
            const int count = LayoutOf(matrix).count;
            QVERIFY(SplitEditor::ExtendSegment(matrix, segment));
            SplitEditor::AddLine(matrix, segment);
            QCOMPARE(LayoutOf(matrix).count, count + 1);
            ++added;
        }
        ++step;
        const SplitLayout layout = LayoutOf(matrix);
        QVERIFY2(IsTiling(layout), qPrintable(QString("step %1").arg(step)));
        const SplitMatrix redrawn = MatrixOf(layout);
        for (int row = 0; row <= matrix.LastRow(); ++row) {
            for (int col = 0; col <= matrix.LastCol(); ++col)
                QCOMPARE(matrix.cells[row][col], redrawn.cells[row][col]);
        }
    }
    QVERIFY(erased > 1000 && added > 1000);
}

void tst_editor::paintsLayout()
{
    CSplitWidget widget(nullptr);
    widget.resize(203, 203);
    QCursor::setPos(2000, 2000);
    widget.SetMatrix(MatrixOf({2, 2, 2, {{0, 0, 1, 2}, {1, 0, 2, 2}}}));
    const QImage image = Picture(widget);
    QCOMPARE(image.pixel(202, 202), Background);
    QCOMPARE(image.pixel(0, 50), Background);
    for (int x : {1, 70, 150, 200}) {
        QCOMPARE(image.pixel(x, 101), LayoutLine);
        QVERIFY(image.pixel(x, 103) != LayoutLine);
    }
    QVERIFY(CountOf(image.copy(101, 0, 1, 90), 0xff586f1b) > 20);
    QCOMPARE(CountOf(image, Added) + CountOf(image, Removed), 0);
}

void tst_editor::paintsPreview()
{
    // Two cells side by side, the right one cut once more: lines at x 100, and at y 100 from x 100 on.
    // It adds a line in the left cell, removes the stem, the bar and the stem, and nothing in the open or
    // outside.
    const std::tuple<QPoint, QRgb, QRect> rows[] = {{{30, 100}, Added, {0, 99, 101, 2}},
                                                    {{150, 100}, Removed, {99, 99, 102, 2}},
                                                    {{100, 30}, Removed, {99, 0, 102, 201}},
                                                    {{30, 30}, Background, {}},
                                                    {{30, 260}, Background, {}}};
    CSplitWidget widget(nullptr);
    widget.resize(200, 200);
    widget.show();
    widget.SetMatrix(MatrixOf({2, 2, 3, {{0, 0, 2, 1}, {0, 1, 1, 2}, {1, 1, 2, 2}}}));
    const SplitMatrix before = widget.m_matrix;
    for (const auto& [cursor, color, where] : rows) {
        Mouse::PlaceCursor(&widget, cursor);
        const QImage image = Picture(widget);
        QVERIFY(IsSame(widget.m_matrix, before));
        const int painted = CountOf(image, Added) + CountOf(image, Removed);
        QCOMPARE(painted > 0, !where.isEmpty());
        QCOMPARE(painted, where.isEmpty() ? 0 : CountOf(image.copy(where & image.rect()), color));
        QCOMPARE(CountOf(image, LayoutLine) == 0, cursor == QPoint(100, 30));
    }
    QCursor::setPos(2000, 2000);
}

void tst_editor::repaintsUnderMouse()
{
    CSplitWidget widget(nullptr);
    widget.resize(200, 200);
    widget.SetMatrix(MatrixOf(OneCell(2, 2)));
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QVERIFY(widget.hasMouseTracking());
    SignalLog log;
    log.WatchAll(&widget);
    Mouse::PlaceCursor(&widget, QPoint(100, 40));
    Mouse::Move(&widget, QPoint(100, 40));
    const auto shown = [&] { return widget.screen()->grabWindow(widget.winId()).toImage(); };
    QTRY_VERIFY(shown().pixel(100, 5) != Background);
    QCursor::setPos(2000, 2000);
    Mouse::Leave(&widget);
    QTRY_COMPARE(CountOf(shown().convertToFormat(QImage::Format_RGB32), Added), 0);
    QCOMPARE(log.Take(), QStringList());
}

void tst_editor::diesInItsSignal()
{
    auto* widget = new CSplitWidget(nullptr);
    widget->resize(200, 200);
    widget->SetMatrix(MatrixOf(OneCell(2, 2)));
    SignalLog log;
    log.WatchAll(widget);
    log.onSignal = [&](const QString&) { delete widget; };
    Mouse::Press(widget, QPoint(100, 30));
    QCOMPARE(log.Take(), QStringList("sig_update()"));
}

void tst_editor::keys()
{
    const Cells four = SingleSquares(2, 2).cells;
    const Cells wideTop{{0, 0, 1, 2}, {1, 0, 2, 1}, {1, 1, 2, 2}};
    // Arrows as letters: small ones go, capitals select, ^ before one cuts; _ joins.
    const std::tuple<const char*, Cells, int> rows[] = {
        {"R_", wideTop, 1},
        {"_r_", four, 0},
        {"R_rdU_", OneCell(2, 2).cells, 2}, // grown to whole cells
        {"R_^l", four, 2},
        {"D_d^u", four, 2},
        {"^r^d", four, 0},
        {"^l^urrr^r", four, 0},
        {"rRL_", wideTop, 1},
    };
    const QMap<QChar, Qt::Key> arrows{
        {'l', Qt::Key_Left}, {'r', Qt::Key_Right}, {'u', Qt::Key_Up}, {'d', Qt::Key_Down}};
    for (const auto& [presses, cells, updates] : rows) {
        CSplitWidget widget(nullptr);
        widget.resize(200, 200);
        widget.SetMatrix(MatrixOf(SingleSquares(2, 2)));
        const QSignalSpy updated(&widget, &CSplitWidget::sig_update);
        for (const char* press = presses; *press; ++press) {
            const bool cuts = *press == '^';
            const QChar key(*(cuts ? ++press : press));
            const auto modifier = cuts            ? Qt::ControlModifier
                                  : key.isUpper() ? Qt::ShiftModifier
                                                  : Qt::NoModifier;
            QTest::keyClick(&widget, arrows.value(key.toLower(), Qt::Key_Space), modifier);
        }
        QVERIFY2(LayoutOf(widget.m_matrix).cells == cells && updated.count() == updates, presses);
    }
}

QTEST_MAIN(tst_editor)

#include "tst_editor.moc"
