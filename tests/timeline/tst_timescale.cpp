#include "support/DeckTestCase.h"
#include "support/SeededGenerator.h"
#include "timeline/ScaleView.h"
#include "timeline/ThumbTrack.h"
#include "timeline/TimeScale.h"

namespace {

constexpr int s_nDay = 86400;

ThumbTrack Track(int width, int thumbWidth)
{
    return {double(width), double(-(thumbWidth / 2)), double(thumbWidth), s_nDay};
}

} // namespace

class tst_timescale : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void rowsBeginAtTheirRatios();
    void valueComesBack();
    void survivesAnyTrack();
    void zooms();
    void keepsThePointUnderTheCursor();
    void staysOverTheViewportWhateverComes();
};

void tst_timescale::rowsBeginAtTheirRatios()
{
    const std::pair<double, int> rows[] = {{-3.0, 48},  {1.7, 120},   {3.4, 144},   {5.3, 288},
                                           {8.0, 1440}, {16.0, 1440}, {192.0, 2880}};
    int before = 48;
    for (const auto& [from, intervals] : rows) {
        QCOMPARE(TimeScale(1000, from).Intervals(), intervals);
        QCOMPARE(TimeScale(1000, from - 0.0001).Intervals(), before);
        before = intervals;
    }
    QCOMPARE(TimeScale(1000, qQNaN()).Intervals(), 48);
    QVERIFY(TimeScale(1000, 15.9).IsLabelled(10) && !TimeScale(1000, 15.9).IsLabelled(5));
    QVERIFY(TimeScale(1000, 16).IsLabelled(5));
}

void tst_timescale::valueComesBack()
{
    for (int width : {800, 1600, 3200, 4800, 6400, 12800, 153600, 160000}) {
        for (int thumb : {20, 21}) {
            const ThumbTrack track = Track(width, thumb);
            const int secondsInAPixel = s_nDay / width + 1;
            int edge = track.EdgeOf(0);
            QCOMPARE(edge, -(thumb / 2));
            for (int value = 0; value <= s_nDay; ++value) {
                const int next = track.EdgeOf(value);
                QVERIFY(next >= edge);
                edge = next;
                // Truncation towards zero rounds up where the edge lies left of the scale's start, and there
                // alone.
                const int error = value - track.ValueAt(edge);
                if (error > secondsInAPixel || error < (edge <= 0 ? -secondsInAPixel : 0))
                    QFAIL(qPrintable(QString("%1 comes back %2 off").arg(value).arg(error)));
            }
        }
    }
}

void tst_timescale::survivesAnyTrack()
{
    const int extremes[] = {INT_MIN, INT_MIN + 1, -1, 0, 1, s_nDay, INT_MAX};
    const double places[] = {0, -1e300, 1e300, -10, 16777215, qInf(), qQNaN()};
    for (int extreme : extremes) {
        for (double place : places) {
            const ThumbTrack tracks[] = {
                {place, -10, 20, s_nDay}, {800, place, 20, 0}, {800, -10, place, extreme}};
            for (const ThumbTrack& track : tracks) {
                track.EdgeOf(extreme);
                track.ValueAt(extreme);
            }
            TimeScale(place, place).FirstTick(extreme);
            TimeScale(place, place).LastTick(extreme);
            ScaleView{place, place, extreme / 64}.Zoomed(extreme, extreme);
        }
    }
    QCOMPARE((ThumbTrack{800, -10, 20, 0}.EdgeOf(5)), -10);
    QCOMPARE((ThumbTrack{0, 0, 0, s_nDay}.ValueAt(5)), 0);
}

void tst_timescale::zooms()
{
    struct
    {
        const char* name;
        double ratio;
        int x, cursor, notches, width, newX;
    } const rows[] = {
        {"in, at the right end", 1.0, 0, 800, 1, 1600, -800},
        {"in, three at once", 1.0, 0, 400, 3, 3200, -1200},
        {"out beyond the whole day", 3.0, -700, 900, -9, 800, 0},
        {"out, right end held", 3.0, -1600, 1650, -1, 1600, -800},
        {"out, truncated towards zero", 3.0, -801, 1000, -1, 1600, -467},
        {"less than a notch", 3.0, -801, 1000, 0, 2400, -801},
        {"beyond the end", 200.0, -1000, 1400, 1, 160000, -1000},
    };
    for (const auto& row : rows) {
        const ScaleView view = ScaleView{800, 800 * row.ratio, row.x}.Zoomed(row.notches, row.cursor);
        QVERIFY2(view.zoomWidth == row.width && view.x == row.newX, row.name);
    }
}

void tst_timescale::keepsThePointUnderTheCursor()
{
    for (int base : {1, 333, 800, 1919}) {
        for (int screen : {base / 3, base / 2, base - 1}) {
            ScaleView view{double(base), double(base), 0};
            for (int step = 0; step < 199; ++step) {
                const double share = (screen - view.x) / view.zoomWidth;
                view = view.Zoomed(1, screen - view.x);
                QVERIFY(qAbs(view.x + share * view.zoomWidth - screen) <= 1.0);
            }
            QCOMPARE(view.Ratio(), 200.0);
            QCOMPARE(view.Zoomed(-1000, screen - view.x).Ratio(), 1.0);
        }
    }
}

void tst_timescale::staysOverTheViewportWhateverComes()
{
    QRandomGenerator random = SeededGenerator();
    for (double base : {1.0, 7.0, 801.0, 100000.0, 16777215.0}) {
        ScaleView view{base, base, 0};
        for (int i = 0; i < 3000; ++i) {
            view = view.Zoomed(random.bounded(-9, 12), random.bounded(-50, int(base) + 50) - view.x);
            view.x = view.Panned(view.x + random.bounded(-500, 500), view.zoomWidth);
            QVERIFY(view.zoomWidth >= base && view.zoomWidth <= QWIDGETSIZE_MAX && view.Ratio() <= 200);
            QVERIFY(view.x <= 0 && view.x + view.zoomWidth >= base);
        }
    }
}

QTEST_MAIN(tst_timescale)

#include "tst_timescale.moc"
