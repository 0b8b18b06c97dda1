#include "frames/FramePainter.h"
#include "support/DeckTestCase.h"
#include "support/Mouse.h"
#include "support/PaintCounter.h"
#include "support/SeededGenerator.h"
#include "support/SignalLog.h"
#include "timeline/CTimerLine.h"
#include "timeline/PlainStrip.h"

namespace {

constexpr unsigned int s_nRed = 0xffff0000u;
constexpr unsigned int s_nGreen = 0xff00ff00u;
constexpr unsigned int s_nBlue = 0xff0000ffu;
constexpr int s_nHeight = 13;

using Table = QVector<unsigned int>;

// Every entry that changes gets a colour of its own, so that a wrong run can't look right.
Table Changing(int count, double share, QRandomGenerator& random)
{
    Table table(count, 1);
    for (int i = 1; i < count; ++i)
        table[i] = random.generateDouble() < share ? table.at(i - 1) + 1 : table.at(i - 1);
    return table;
}

Table Alternating(int count)
{
    Table table(count, s_nRed);
    for (int i = 1; i < count; i += 2)
        table[i] = s_nGreen;
    return table;
}

struct Strip
{
    Strip(const Table& table, int width) : line(nullptr, 0)
    {
        line.SetCount(table.size());
        line.SetColors(table.constData());
        line.resize(width, s_nHeight);
    }

    QImage Grab(const QRect& clip) { return line.grab(clip).toImage().convertToFormat(QImage::Format_RGB32); }
    QImage Grab() { return Grab(line.rect()); }

    ExpectedWarning warning{"Specified color without alpha value but alpha given"};
    CTimerLine line;
};

// What a grab of the clip must show: a column for every pixel of the screen.
QImage Plain(const Table& table, int width, const QRect& clip)
{
    const qreal ratio = qApp->devicePixelRatio();
    const QRect strip = DevicePixels(QRect(-clip.topLeft(), QSize(width, s_nHeight)), ratio);
    QImage image(DevicePixels(QRect(QPoint(), clip.size()), ratio).size(), QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    painter.translate(strip.topLeft());
    DrawPlainStrip(painter, table, strip.width(), strip.height());
    painter.end();
    image.setDevicePixelRatio(ratio);
    return image;
}

} // namespace

class tst_strip : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void looksLikeRuns();
    void looksLikeRunsWhereverExposed();
    void ignoresTopByte();
    void repaintsForNewColors();
    void survivesAnyTable();
    void reportsDoubleClick();
};

void tst_strip::looksLikeRuns()
{
    QRandomGenerator random = SeededGenerator();
    for (int count : {1, 2, 3, 4, 5, 7, 10, 60, 997, 3600, 86400}) {
        QVector<Table> tables{Table(count, s_nBlue), Alternating(count)};
        for (double share : {0.9, 0.5, 0.1, 0.01, 0.001})
            tables.append(Changing(count, share, random));
        QVector<int> widths{1, 2, 3, 7, 60, 800, 1920};
        for (int i = 0; i < 25; ++i)
            widths.append(random.bounded(1, 2 * qMin(count, 1000) + 2));
        for (const Table& table : qAsConst(tables)) {
            Strip strip(table, 1);
            for (int width : qAsConst(widths)) {
                strip.line.resize(width, s_nHeight);
                QVERIFY2(strip.Grab() == Plain(table, width, strip.line.rect()),
                         qPrintable(QString("%1 entries on %2 pixels").arg(count).arg(width)));
            }
        }
    }
}

void tst_strip::looksLikeRunsWhereverExposed()
{
    QRandomGenerator random = SeededGenerator();
    for (double share : {0.5, 0.01, 0.001}) {
        const Table table = Changing(86400, share, random);
        Strip strip(table, 1);
        for (int width : {800, 8000, 86400, 160000, 160001}) {
            strip.line.resize(width, s_nHeight);
            QVector<QRect> clips{{0, 0, 1, 13}, {width - 1, 0, 1, 13}, {width - 400, 3, 400, 4}};
            for (int i = 0; i < 5; ++i)
                clips.append(QRect(random.bounded(width - 300), random.bounded(13), 300, 13) &
                             strip.line.rect());
            for (const QRect& clip : qAsConst(clips))
                QVERIFY(strip.Grab(clip) == Plain(table, width, clip));
        }
    }
}

void tst_strip::ignoresTopByte()
{
    Table table(100, 0x00ff0000u);
    table[40] = 0x7fff0000u;
    Strip strip(table, 200);
    QCOMPARE(strip.Grab(), Plain(Table(100, s_nRed), 200, strip.line.rect()));
}

void tst_strip::repaintsForNewColors()
{
    Strip strip(Table(10, s_nRed), 100);
    PaintCounter counter;
    strip.line.installEventFilter(&counter);
    strip.line.show();
    QTRY_VERIFY(counter.paints > 0);
    QCoreApplication::processEvents();
    const int before = counter.paints;
    strip.line.SetColors(Table(10, s_nBlue).constData());
    QTRY_VERIFY(counter.paints > before);
}

void tst_strip::survivesAnyTable()
{
    Strip strip(Table(), 50);
    strip.Grab();
    strip.line.SetColors(nullptr);
    strip.line.SetCount(-5);
    strip.line.SetColors(Table(3, s_nRed).constData());
    strip.line.SetCount(3);
    QCOMPARE(strip.Grab().pixel(10, 5), qRgb(0, 0, 0));
    strip.line.SetColors(Table(3, s_nRed).constData());
    strip.line.SetColors(nullptr);
    QCOMPARE(strip.Grab().pixel(10, 5), s_nRed);
    strip.line.resize(0, 0);
    strip.Grab(QRect(0, 0, 5, 5));
    strip.line.resize(QWIDGETSIZE_MAX, s_nHeight);
    QCOMPARE(strip.Grab(QRect(QWIDGETSIZE_MAX - 3, 0, 3, 3)).pixel(2, 0), s_nRed);
}

void tst_strip::reportsDoubleClick()
{
    Strip strip(Table(10, s_nRed), 100);
    SignalLog log;
    log.WatchAll(&strip.line);
    Mouse::DoubleClick(&strip.line, QPoint(33, 4), Qt::RightButton);
    QCOMPARE(log.Take(), QStringList());
    Mouse::DoubleClick(&strip.line, QPoint(33, 4));
    QCOMPARE(log.Take(), QStringList("sig_mouseDbClick(33)"));
}

QTEST_MAIN(tst_strip)

#include "tst_strip.moc"
