#include "archive/DayColors.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

namespace {

const QTimeZone Berlin("Europe/Berlin");

/// The seconds at which a table changes its colour, as "second:colour".
QStringList changes(const DayTable& table, const DayPalette& palette)
{
    const QHash<unsigned, QString> names{{palette.empty, "empty"},
                                         {palette.recording, "rec"},
                                         {palette.motion, "motion"},
                                         {palette.alarm, "alarm"}};
    QStringList changes;
    for (int i = 0; i < int(table.size()); ++i) {
        if (i == 0 || table[i] != table[i - 1])
            changes.append(QString("%1:%2").arg(i).arg(names.value(table[i])));
    }
    return changes;
}

} // namespace

class tst_colors : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void colorsDay_data();
    void colorsDay();
    void alarmLiesOverMotion();
    void momentsOfUnevenDays();
};

void tst_colors::colorsDay_data()
{
    QTest::addColumn<QDate>("day");
    QTest::addColumn<QVector<qint64>>("recording");
    QTest::addColumn<QStringList>("expected");
    const QDate common(2026, 6, 10);
    const qint64 start = dayStart(common, Berlin);
    QTest::newRow("nothing") << common << QVector<qint64>{} << QStringList{"0:empty"};
    QTest::newRow("from the day before")
        << common << QVector<qint64>{start - 5000, start + 2000} << QStringList{"0:rec", "2:empty"};
    QTest::newRow("into the next day") << common << QVector<qint64>{start + 86399000, start + 90000000}
                                       << QStringList{"0:empty", "86399:rec"};
    QTest::newRow("part of a second") << common << QVector<qint64>{start + 1500, start + 1900}
                                      << QStringList{"0:empty", "1:rec", "2:empty"};
    const QDate shortDay(2026, 3, 29);
    const qint64 spring = dayStart(shortDay, Berlin);
    QTest::newRow("the hour that isn't")
        << shortDay << QVector<qint64>{spring + 3600000, spring + 3 * 3600000}
        << QStringList{"0:empty", "3600:rec", "7200:empty", "10800:rec", "14400:empty"};
    const QDate longDay(2026, 10, 25);
    const qint64 autumn = dayStart(longDay, Berlin);
    QTest::newRow("the hour that comes twice, second pass")
        << longDay << QVector<qint64>{autumn + 3 * 3600000, autumn + 4 * 3600000}
        << QStringList{"0:empty", "7200:rec", "10800:empty"};
    QTest::newRow("after it") << longDay << QVector<qint64>{autumn + 24 * 3600000, autumn + 25 * 3600000}
                              << QStringList{"0:empty", "82800:rec"};
}

void tst_colors::colorsDay()
{
    QFETCH(QDate, day);
    QFETCH(QVector<qint64>, recording);
    QFETCH(QStringList, expected);
    QVERIFY(Berlin.isValid());
    QVector<Segment> segments;
    if (!recording.isEmpty())
        segments.append({"a.mkv", "A", recording.at(0), recording.at(1), 1, false});
    const DayPalette palette;
    QCOMPARE(changes(dayColors(day, Berlin, segments, {}, palette), palette), expected);
}

void tst_colors::alarmLiesOverMotion()
{
    const QDate day(2026, 6, 10);
    const qint64 start = dayStart(day, Berlin);
    const DayPalette palette;
    const QVector<Segment> segments{{"a.mkv", "A", start, start + 9000, 1, false}};
    const QVector<Span> spans{{Span::Alarm, start + 2000, start + 4000},
                              {Span::Motion, start + 1000, start + 3000}};
    QCOMPARE(changes(dayColors(day, Berlin, segments, spans, palette), palette),
             QStringList({"0:rec", "1:motion", "2:alarm", "4:rec", "9:empty"}));
}

void tst_colors::momentsOfUnevenDays()
{
    const QDate shortDay(2026, 3, 29);
    const QDate longDay(2026, 10, 25);
    QCOMPARE(dayStart(shortDay.addDays(1), Berlin) - dayStart(shortDay, Berlin), qint64(23) * 3600000);
    QCOMPARE(dayStart(longDay.addDays(1), Berlin) - dayStart(longDay, Berlin), qint64(25) * 3600000);
    for (int second = 0; second < 86400; second += 61) {
        const bool missing = second >= 7200 && second < 10800;
        if (!missing)
            QCOMPARE(secondOfDay(momentOf(shortDay, second, Berlin), Berlin), second);
        QCOMPARE(secondOfDay(momentOf(longDay, second, Berlin), Berlin), second);
    }
    QCOMPARE(momentOf(longDay, 90000, Berlin), momentOf(longDay, 86399, Berlin));
}

int main(int argc, char** argv)
{
    return RunTests<tst_colors, QCoreApplication>(argc, argv);
}

#include "tst_colors.moc"
