#include "alarms/AlarmBook.h"
#include "alarms/AlarmPanel.h"
#include "alarms/AlarmRules.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <QPushButton>
#include <QSettings>
#include <QTreeWidget>

namespace {

constexpr qint64 Noon = 1'700'000'000'000;

QString textOf(const AlarmBook& book)
{
    QStringList lines;
    for (const Alarm& alarm : book.alarms())
        lines.append(
            QString("%1%2%3").arg(alarm.cameraName, alarm.endMs == 0 ? "~" : "", alarm.isSeen ? "" : "!"));
    return lines.join(' ');
}

} // namespace

/// What is known of alarms, and what the user does about them.
class tst_alarms : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void joinsWhatFollowsSoon();
    void keepsTheNewest();
    void quietTime_data();
    void quietTime();
    void rulesAreKept();
    void panelActs();
};

void tst_alarms::joinsWhatFollowsSoon()
{
    AlarmBook book;
    QSignalSpy changes(&book, &AlarmBook::changed);
    QVERIFY(book.begin("1", "Gate", Noon));
    QVERIFY(!book.begin("1", "Gate", Noon + 5));
    QVERIFY(book.begin("2", "Yard", Noon + 10));
    QCOMPARE(textOf(book), QString("Yard~! Gate~!"));
    book.end("1", Noon + 100);
    book.end("1", Noon + 200);
    book.end("3", Noon + 200);
    QVERIFY(!book.begin("1", "Gate", Noon + 5000));
    QCOMPARE(textOf(book), QString("Yard~! Gate~!"));
    // Once it was seen, or later, it is news.
    book.end("1", Noon + 6000);
    book.setSeenOf("1");
    QVERIFY(book.begin("1", "Gate", Noon + 7000));
    book.end("1", Noon + 8000);
    QVERIFY(book.begin("1", "Gate", Noon + 8000 + AlarmBook::SoonMs));
    QCOMPARE(textOf(book), QString("Gate~! Gate! Yard~! Gate"));
    QCOMPARE(book.unseenCount(), 3);
    changes.clear();
    book.setAllSeen();
    book.setAllSeen();
    QCOMPARE(changes.count(), 1);
    QCOMPARE(book.unseenCount(), 0);
    // The clock is set back while one lasts.
    book.end("1", Noon - 1000);
    QVERIFY(book.alarms().first().endMs > book.alarms().first().startMs);
}

void tst_alarms::keepsTheNewest()
{
    AlarmBook book;
    for (int i = 0; i < AlarmBook::Most + 10; ++i)
        book.begin(QString::number(i), "Gate", Noon + i);
    QCOMPARE(book.alarms().size(), AlarmBook::Most);
    QCOMPARE(book.alarms().last().cameraId, QString("10"));
    // What was over long ago has its place by time, and the camera's last one still lasts.
    book.addPast("100", "Late", Noon + 50, Noon + 60);
    QCOMPARE(book.alarms().at(AlarmBook::Most - 41).cameraName, QString("Late"));
    QVERIFY(!book.begin("100", "Gate", Noon + 1000));
    // Two recorders have seen it.
    const QVector<Alarm> before = book.alarms();
    book.addPast("100", "Late", Noon + 55, Noon + 70);
    QCOMPARE(book.alarms().size(), before.size());
    QCOMPARE(book.alarms().last().number, before.last().number);
}

void tst_alarms::quietTime_data()
{
    QTest::addColumn<QTime>("from");
    QTest::addColumn<QTime>("to");
    QTest::addColumn<QTime>("time");
    QTest::addColumn<bool>("quiet");
    const auto row = [](const char* name, int from, int to, int hour, int minute, bool quiet) {
        QTest::newRow(name) << QTime(from, 0) << QTime(to, 0) << QTime(hour, minute) << quiet;
    };
    row("by day", 12, 14, 13, 0, true);
    row("at its end", 12, 14, 14, 0, false);
    row("over midnight, before", 22, 6, 23, 59, true);
    row("over midnight, after", 22, 6, 0, 0, true);
    row("over midnight, noon", 22, 6, 12, 0, false);
    row("all day", 8, 8, 3, 0, true);
}

void tst_alarms::quietTime()
{
    QFETCH(QTime, from);
    QFETCH(QTime, to);
    QFETCH(QTime, time);
    AlarmRules rules;
    rules.quietFrom = from;
    rules.quietTo = to;
    QVERIFY(!rules.isQuiet(time));
    rules.hasQuietTime = true;
    QTEST(rules.isQuiet(time), "quiet");
}

void tst_alarms::rulesAreKept()
{
    AlarmRules rules;
    rules.hasSound = false;
    rules.quietTo = QTime(7, 30);
    rules.offCameras = QStringList{"a", "b,c"};
    rules.save();
    QSettings().setValue("alarms/quietFrom", "half past ten");
    const AlarmRules kept = AlarmRules::load();
    QVERIFY(!kept.hasSound && kept.hasNotice && !kept.isOn("b,c") && kept.isOn("b"));
    QCOMPARE(kept.quietTo, QTime(7, 30));
    QCOMPARE(kept.quietFrom, QTime(22, 0));
}

void tst_alarms::panelActs()
{
    AlarmBook book;
    AlarmPanel panel(&book);
    QSignalSpy plays(&panel, &AlarmPanel::playAsked);
    auto* list = panel.findChild<QTreeWidget*>("AlarmList");
    const auto press = [&panel](const char* name) { panel.findChild<QPushButton*>(name)->click(); };
    book.begin("1", "Gate", Noon);
    book.begin("2", "Yard", Noon + 1);
    press("AlarmPlay");
    QCOMPARE(plays.count(), 0);
    list->topLevelItem(1)->setSelected(true);
    book.begin("3", "Door", Noon + 2);
    press("AlarmPlay");
    QCOMPARE(plays.takeFirst(), QList<QVariant>({"1", Noon - 5000}));
    QCOMPARE(textOf(book), QString("Door~! Yard~! Gate~"));
    list->topLevelItem(0)->setSelected(true);
    press("AlarmSeen");
    QCOMPARE(textOf(book), QString("Door~ Yard~! Gate~"));
    press("AlarmAllSeen");
    QCOMPARE(book.unseenCount(), 0);
    QVERIFY(!panel.findChild<QPushButton*>("AlarmAllSeen")->isEnabled());
}

int main(int argc, char** argv)
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName("PaneDeck");
    QCoreApplication::setApplicationName("tst_alarms");
    return RunTests<tst_alarms>(argc, argv);
}

#include "tst_alarms.moc"
