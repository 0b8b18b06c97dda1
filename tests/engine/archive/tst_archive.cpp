#include "archive/Archive.h"
#include "archive/DayColors.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <QDir>
#include <QTemporaryDir>

namespace {

const QTimeZone Berlin("Europe/Berlin");

bool writeFile(const QString& path, int bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(QByteArray(bytes, 'x')) == bytes;
}

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

class tst_archive : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void colorsDay_data();
    void colorsDay();
    void alarmLiesOverMotion();
    void momentsOfUnevenDays();
    void keepsAndFindsSegments();
    void recoversWhatAnEarlierRunLeft();
    void deletesTheOldestOverTheLimit();
    void deletesNothingOutside();
    void removesTheSampleInOneStep();
    void tellsWhyItCannotOpen();
};

void tst_archive::colorsDay_data()
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

void tst_archive::colorsDay()
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

void tst_archive::alarmLiesOverMotion()
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

void tst_archive::momentsOfUnevenDays()
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

void tst_archive::keepsAndFindsSegments()
{
    const QTemporaryDir root;
    QString error;
    Archive archive([](const QString&) { return qint64(0); });
    QVERIFY2(archive.open(root.path() + "/deep/er", &error), qPrintable(error));
    for (const qint64 start : {5000, 1000, 9000}) {
        const QString part = archive.partPath("Gate / 1", start);
        QVERIFY(writeFile(part, 10));
        QVERIFY(archive.finish(part, "Gate / 1", start, start + 2000));
        QVERIFY(!QFile::exists(part));
    }
    const ArchiveIndex& index = archive.index();
    QCOMPARE(index.segments("Gate / 1", 3000, 9000).size(), 1);
    QCOMPARE(index.segments("Gate / 1", 2999, 9001).size(), 3);
    QVERIFY(index.segments("Other", 0, 20000).isEmpty());
    QVERIFY(QFile::exists(archive.fullPath(*index.oldest())));

    // Nothing in it, and no time.
    for (const int bytes : {0, 10}) {
        const QString empty = archive.partPath("Gate / 1", 20000);
        QVERIFY(writeFile(empty, bytes));
        QVERIFY(!archive.finish(empty, "Gate / 1", 20000, bytes == 0 ? 22000 : 20000));
        QVERIFY(!QFile::exists(empty));
    }
}

void tst_archive::recoversWhatAnEarlierRunLeft()
{
    const QTemporaryDir root;
    QString error;
    QString unfinished;
    QString broken;
    {
        Archive archive([](const QString&) { return qint64(0); });
        QVERIFY(archive.open(root.path(), &error));
        const QString part = archive.partPath("A", 1000);
        QVERIFY(writeFile(part, 10));
        QVERIFY(archive.finish(part, "A", 1000, 4000));
        unfinished = archive.partPath("A", 60000);
        broken = archive.partPath("A", 90000);
        QVERIFY(writeFile(unfinished, 20));
        QVERIFY(writeFile(broken, 30));
    }
    QVERIFY(QFile::remove(root.path() + "/index.sqlite"));
    QFile::remove(root.path() + "/index.sqlite-wal");
    QVERIFY(writeFile(root.path() + "/A/stranger.txt", 5));

    Archive archive([&](const QString& path) { return path == broken ? qint64(0) : qint64(2500); });
    QVERIFY(archive.open(root.path(), &error));
    const QVector<Segment> found = archive.index().segments("A", 0, 1000000);
    QCOMPARE(found.size(), 2);
    QCOMPARE(found.at(0).endMs, qint64(3500));
    QCOMPARE(found.at(1).startMs, qint64(60000));
    QVERIFY(!found.at(1).path.endsWith(".part"));
    QVERIFY(!QFile::exists(unfinished));
    QVERIFY(!QFile::exists(broken));
    QVERIFY(QFile::exists(root.path() + "/A/stranger.txt"));

    QVERIFY(QFile::remove(archive.fullPath(found.at(0))));
    Archive again([](const QString&) { return qint64(2500); });
    QVERIFY(again.open(root.path(), &error));
    QCOMPARE(again.index().segments("A", 0, 1000000).size(), 1);
}

void tst_archive::deletesTheOldestOverTheLimit()
{
    const QTemporaryDir root;
    QString error;
    Archive archive([](const QString&) { return qint64(0); });
    QVERIFY(archive.open(root.path(), &error));
    for (const qint64 start : {3000, 1000, 2000}) {
        const QString part = archive.partPath("A", start);
        QVERIFY(writeFile(part, 100));
        QVERIFY(archive.finish(part, "A", start, start + 1000));
        QVERIFY(archive.index().addSpan("A", {Span::Motion, start + 100, start + 200}));
    }
    archive.limit(250);
    archive.limit(200);
    QCOMPARE(archive.index().totalBytes(), qint64(200));
    QCOMPARE(archive.index().oldest()->startMs, qint64(2000));
    QCOMPARE(archive.index().spans("A", 0, 10000).size(), 2);
    archive.limit(0);
    QCOMPARE(archive.index().totalBytes(), qint64(0));
    QVERIFY(archive.index().spans("A", 0, 10000).isEmpty());
}

void tst_archive::deletesNothingOutside()
{
    const QTemporaryDir home;
    const QString outside = home.path() + "/letters/today/1.mkv";
    QVERIFY(QDir(home.path()).mkpath("letters/today") && writeFile(outside, 10));
    QVERIFY(QDir(home.path()).mkpath("archive") &&
            QFile::link(home.path() + "/letters", home.path() + "/archive/A"));
    const QString rows[] = {"../letters/today/1.mkv", outside,        "B/../../letters/today/1.mkv",
                            "A/today/1.mkv",          "index.sqlite", ".."};
    Archive archive([](const QString&) { return qint64(0); });
    QString error;
    QVERIFY(archive.open(home.path() + "/archive", &error));
    const auto plant = [&] {
        for (const QString& path : rows)
            QVERIFY(archive.index().add({path, "A", 1000, 2000, 10, false}));
    };
    plant();
    archive.limit(0);
    QCOMPARE(archive.index().totalBytes(), qint64(0));
    plant();
    Archive again([](const QString&) { return qint64(0); });
    QVERIFY(again.open(home.path() + "/archive", &error));
    QVERIFY(again.index().all().isEmpty());
    QVERIFY(QFile::exists(outside) && QFile::exists(home.path() + "/archive/index.sqlite"));
}

void tst_archive::removesTheSampleInOneStep()
{
    const QTemporaryDir root;
    QString error;
    Archive archive([](const QString&) { return qint64(0); });
    QVERIFY(archive.open(root.path(), &error));
    for (const bool sample : {true, false}) {
        const qint64 start = sample ? 1000 : 5000;
        const QString part = archive.partPath("A", start, sample);
        QVERIFY(writeFile(part, 100));
        QVERIFY(archive.finish(part, "A", start, start + 1000, sample));
        QVERIFY(archive.index().addSpan("A", {Span::Alarm, start, start + 10}, sample));
    }
    QCOMPARE(archive.removeSample(), 1);
    QCOMPARE(archive.index().segments("A", 0, 10000).size(), 1);
    QCOMPARE(archive.index().spans("A", 0, 10000).size(), 1);
    QCOMPARE(archive.removeSample(), 0);
}

void tst_archive::tellsWhyItCannotOpen()
{
    const QTemporaryDir root;
    QVERIFY(writeFile(root.path() + "/file", 3));
    QVERIFY(QDir().mkpath(root.path() + "/taken/index.sqlite"));
    for (const char* name : {"/file", "/taken"}) {
        QString error;
        Archive archive([](const QString&) { return qint64(0); });
        QVERIFY(!archive.open(root.path() + name, &error));
        QVERIFY(!error.isEmpty() && !error.contains('\n'));
        QVERIFY(!archive.index().isOpen());
    }
}

int main(int argc, char** argv)
{
    return RunTests<tst_archive, QCoreApplication>(argc, argv);
}

#include "tst_archive.moc"
