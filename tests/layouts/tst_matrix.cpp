#include "layouts/BuiltInLayouts.h"
#include "layouts/CSplitCatalog.h"
#include "layouts/Tilings.h"
#include "support/DeckTestCase.h"
#include "support/Installation.h"

namespace {

/// A matrix from its rows of marks; spaces don't count.
SplitMatrix MatrixFrom(const QStringList& rows)
{
    SplitMatrix matrix;
    matrix.rows = rows.size() / 2;
    matrix.cols = QString(rows.first()).remove(' ').size() / 2;
    for (int i = 0; i < rows.size(); ++i) {
        const QString marks = QString(rows.at(i)).remove(' ');
        for (int j = 0; j < marks.size(); ++j)
            matrix.cells[i][j] = marks.at(j).digitValue();
    }
    return matrix;
}

QStringList RowsOf(const SplitMatrix& matrix)
{
    QStringList rows;
    for (int i = 0; i <= 2 * matrix.rows; ++i) {
        QStringList marks;
        for (int j = 0; j <= 2 * matrix.cols; ++j)
            marks.append(QString::number(matrix.cells[i][j]));
        rows.append(marks.join(' '));
    }
    return rows;
}

SplitMatrix Garbage()
{
    SplitMatrix matrix;
    for (auto& row : matrix.cells)
        std::fill(std::begin(row), std::end(row), 2);
    return matrix;
}

SplitLayout ThereAndBack(const SplitLayout& layout)
{
    SplitMatrix matrix = Garbage();
    CSplitCatalog::LayoutToMatrix(layout, matrix);
    SplitLayout back;
    CSplitCatalog::MatrixToLayout(matrix, back);
    return back;
}

/// The thumbnail by the cells' edges instead of the matrix.
QImage ExpectedThumbnail(const SplitLayout& layout, const QSize& size, QRgb background, QRgb line)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(background);
    const double colW = double(size.width()) / layout.cols, rowH = double(size.height()) / layout.rows;
    for (const SplitCell& cell : layout.cells) {
        const int top = int(cell.x1 * rowH), bottom = int(cell.x2 * rowH);
        const int left = int(cell.y1 * colW), right = int(cell.y2 * colW);
        for (int x = left; cell.x1 > 0 && x <= qMin(right, size.width() - 1); ++x)
            image.setPixel(x, top, line);
        for (int y = top; cell.y1 > 0 && y <= qMin(bottom, size.height() - 1); ++y)
            image.setPixel(left, y, line);
    }
    return image;
}

} // namespace

class tst_matrix : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void drawsLines();
    void ignoresWhatLiesOutside();
    void findsCells();
    void randomTilingsComeBack();
    void lineIsSolid();
    void thumbnailShowsInnerLines();
    void stripGivesPiece();
};

/// The corner is drawn before the line through it and after.
void tst_matrix::drawsLines()
{
    QList<SplitCell> cells{{1, 1, 2, 2}, {1, 0, 2, 1}, {0, 0, 1, 2}};
    for (int order = 0; order < 2; ++order) {
        SplitMatrix matrix = Garbage();
        CSplitCatalog::LayoutToMatrix({2, 2, int(cells.size()), cells}, matrix);
        QCOMPARE(RowsOf(matrix),
                 QStringList({"2 1 1 1 2", "1 0 0 0 1", "2 1 2 1 2", "1 0 1 0 1", "2 1 2 1 2"}));
        QCOMPARE(matrix.cells[5][0], 2);
        std::reverse(cells.begin(), cells.end());
    }
}

void tst_matrix::ignoresWhatLiesOutside()
{
    SplitMatrix matrix;
    CSplitCatalog::LayoutToMatrix({2, 2, 9, {{0, 0, 2, 2}, {-1, 0, 1, 1}, {0, 0, 1, 400}, {1, 1, 1, 2}}},
                                  matrix);
    QCOMPARE(RowsOf(matrix), (QStringList{"2 1 1 1 2", "1 0 0 0 1", "1 0 0 0 1", "1 0 0 0 1", "2 1 1 1 2"}));
}

void tst_matrix::findsCells()
{
    const std::tuple<const char*, const char*, QList<SplitCell>> drawings[] = {
        {"line that ends in the open", "21112 10101 21201 10001 21112", {{0, 0, 2, 2}}},
        {"line below a corner without a corner at its end", "21212 10101 21112 10001 21112", {{1, 0, 2, 2}}},
        {"region that isn't closed",
         "21212 10101 21202 10101 21212",
         {{0, 0, 1, 1}, {0, 1, 2, 2}, {1, 0, 2, 1}}},
        {"top line with a hole", "20212 10101 21212 10101 21212", {{0, 1, 1, 2}, {1, 0, 2, 1}, {1, 1, 2, 2}}},
        {"scan order", "21212 10101 10212 10101 21212", {{0, 0, 2, 1}, {0, 1, 1, 2}, {1, 1, 2, 2}}}};
    for (const auto& [name, rows, cells] : drawings) {
        SplitLayout layout;
        CSplitCatalog::MatrixToLayout(MatrixFrom(QString(rows).split(' ')), layout);
        QVERIFY2(layout.count == cells.size() && layout.cells == cells, name);
    }
}

void tst_matrix::randomTilingsComeBack()
{
    QRandomGenerator random = SeededGenerator();
    for (int i = 0; i < 5000; ++i) {
        const SplitLayout layout = RandomTiling(random);
        QVERIFY(IsTiling(layout));
        QVERIFY2(ThereAndBack(layout) == layout, qPrintable(QString("tiling %1").arg(i)));
    }
}

void tst_matrix::lineIsSolid()
{
    const SplitMatrix matrix = MatrixFrom({"2 1 1 1 2", "1 0 0 0 1", "2 1 2 0 2", "1 0 1 0 1", "2 1 2 1 2"});
    const std::tuple<const char*, int, int, int, int, bool> rows[] = {
        {"row line with a gap at its end", 2, 0, 2, 3, false},
        {"column line with a gap", 0, 2, 4, 2, false},
        {"a single point", 1, 1, 1, 1, false},
        {"no straight line", 1, 1, 3, 3, true},
        {"outside", 0, 0, 0, INT_MAX, false}};
    for (const auto& [name, x1, y1, x2, y2, solid] : rows)
        QVERIFY2(CSplitCatalog::IsLineSolid(matrix, x1, y1, x2, y2) == solid, name);
}

void tst_matrix::thumbnailShowsInnerLines()
{
    Installation installation;
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    QVERIFY2(catalog->LayoutThumbnail(0, 0, "#000000", "#ffffff").isNull(), "no size yet");
    catalog->LoadLayouts();
    QRandomGenerator random = SeededGenerator();
    for (int i = 0; i < 200; ++i) {
        catalog->thumbnailSize = i < 20 ? QSize(30, 30) : QSize(random.bounded(8, 60), random.bounded(8, 60));
        const bool custom = i >= 10;
        if (custom)
            catalog->customLayouts[i % 10] = RandomTiling(random);
        const QImage image = catalog->LayoutThumbnail(custom ? 7 : 0, i % 10, "#5c6576", "#eeeeee").toImage();
        QCOMPARE(image.convertToFormat(QImage::Format_RGB32),
                 ExpectedThumbnail(catalog->Layout(custom, i % 10), catalog->thumbnailSize, 0xff5c6576,
                                   0xffeeeeee));
    }
    catalog->thumbnailSize = QSize(30, 30);
    QCOMPARE(catalog->LayoutThumbnail(0, 0, "#000000", "not a colour").size(), QSize(30, 30));
    for (int index : {-1, 10})
        QVERIFY(catalog->LayoutThumbnail(1, index, "#000000", "#ffffff").isNull());
}

void tst_matrix::stripGivesPiece()
{
    const Installation installation;
    installation.WritePicture("Resources/strip.png", 103, 7, Qt::black);
    const QString path = installation.Root() + "/Resources/strip.png";
    QCOMPARE(CSplitCatalog::StripPixmap(path, 4, 3).size(), QSize(25, 7));
    for (const auto& [count, index] : {std::pair(4, INT_MAX), {4, -1}, {104, 0}, {0, 0}})
        QVERIFY(CSplitCatalog::StripPixmap(path, count, index).isNull());
}

QTEST_MAIN(tst_matrix)

#include "tst_matrix.moc"
