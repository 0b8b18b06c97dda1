#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "cameras/ClientArchive.h"
#include "common/ClientSettings.h"
#include "common/EventLog.h"
#include "common/UserFiles.h"
#include "common/VisibleTimer.h"
#include "deck/CPaneDeck.h"
#include "panes/PaneRings.h"
#include "panes/StreamChoice.h"
#include "playback/DayField.h"
#include "playback/DayScale.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "tabs/AlarmBoard.h"

#include <QPlainTextEdit>
#include <QTemporaryFile>

Q_DECLARE_METATYPE(QVector<int>)

class tst_panes : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void choosesAlarmPane_data();
    void choosesAlarmPane();
    void ignoresPanesThatAreNone();
    void takesTheStreamWithItsPixels();
    void keepsMinutes_data();
    void keepsMinutes();
    void beginsTheDay_data();
    void beginsTheDay();
    void scaleTakesTimeBothWays();
    void ticksOnScreenOnly();
    void filesAndLogBearAnyName();
};

/// Steps: "+X" camera X comes up where the board says, "-2" pane 2 is taken down, "=X2" X is put into pane 2.
void tst_panes::choosesAlarmPane_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<int>("pane"); // of the next alarm of camera A
    QTest::newRow("empty deck") << QStringList{} << 0;
    QTest::newRow("next free") << QStringList{"+B", "+C"} << 2;
    QTest::newRow("gap is filled") << QStringList{"+B", "+C", "+D", "-1"} << 1;
    QTest::newRow("is up already") << QStringList{"+B", "+A"} << -1;
    QTest::newRow("up and all full") << QStringList{"+B", "+A", "+C"} << -1;
    QTest::newRow("up again after it was taken down") << QStringList{"+A", "+B", "-0"} << 0;
    QTest::newRow("full: the oldest") << QStringList{"+B", "+C", "+D"} << 0;
    QTest::newRow("full: oldest is not the first pane") << QStringList{"+B", "+C", "+D", "-0", "+E"} << 1;
    QTest::newRow("full: the oldest was replaced") << QStringList{"+B", "+C", "+D", "+E"} << 1;
    QTest::newRow("replaced by hand counts as new") << QStringList{"+B", "+C", "+D", "=E0"} << 1;
    QTest::newRow("replaced camera may come again") << QStringList{"+A", "+C", "+D", "=E0"} << 1;
}

void tst_panes::choosesAlarmPane()
{
    QFETCH(QStringList, steps);
    AlarmBoard board(3);
    for (const QString& step : steps) {
        const QString camera = step.mid(1, 1);
        if (step[0] == '+')
            board.bringUp(board.paneFor(camera), camera);
        else if (step[0] == '-')
            board.takeDown(step.mid(1).toInt());
        else
            board.bringUp(step.mid(2).toInt(), camera);
    }
    QTEST(board.paneFor("A"), "pane");
}

void tst_panes::ignoresPanesThatAreNone()
{
    AlarmBoard board(2);
    for (int pane : {-1, 2}) {
        board.bringUp(pane, "A");
        QVERIFY(!board.isUp(pane));
        board.takeDown(pane);
    }
    QCOMPARE(board.paneFor("A"), 0);
    QCOMPARE(AlarmBoard(0).paneFor("A"), -1);
    QCOMPARE(board.paneFor(QString()), 0); // a free pane is not one with a nameless camera
}

void tst_panes::takesTheStreamWithItsPixels()
{
    const QSize small(640, 360);
    StreamKind now = StreamKind::Small;
    const auto at = [&](int width) { return now = chooseStream({width, width * 9 / 16}, small, now); };
    QCOMPARE(chooseStream({2000, 1000}, QSize(), StreamKind::Main), StreamKind::Small);
    QCOMPARE(at(640), StreamKind::Small);
    QCOMPARE(at(656), StreamKind::Main);
    // A size in between doesn't go to and fro.
    QCOMPARE(at(624), StreamKind::Main);
    QCOMPARE(at(560), StreamKind::Small);
    QCOMPARE(chooseStream({600, 400}, small, now), StreamKind::Main);
}

void tst_panes::keepsMinutes_data()
{
    QTest::addColumn<QVector<int>>("playing");
    QTest::addColumn<int>("active");
    QTest::addColumn<QVector<int>>("kept");
    QTest::newRow("none plays") << QVector<int>{} << 0 << QVector<int>{};
    QTest::newRow("four play") << QVector<int>{4, 5, 6, 7} << 0 << QVector<int>{4, 5, 6, 7};
    QTest::newRow("five play") << QVector<int>{0, 1, 2, 3, 4} << 4 << QVector<int>{4};
    QTest::newRow("active one is idle") << QVector<int>{0, 1, 2, 3, 4} << 5 << QVector<int>{};
    QTest::newRow("no active one") << QVector<int>{0, 1, 2, 3, 4} << -1 << QVector<int>{};
}

void tst_panes::keepsMinutes()
{
    QFETCH(QVector<int>, playing);
    QFETCH(int, active);
    QTEST(panesWithRing(playing, active), "kept");
}

namespace {

/// The scale of a playback deck whose archive is empty.
struct ScaleOfDeck
{
    ExpectedWarning strip{"Specified color without alpha value but alpha given: 'rgb 255, 255, 255,255'"};
    CameraList cameras;
    CameraHub hub{cameras};
    EventLog log;
    ClientArchive archive{cameras, &hub, &log, ClientSettings()};
    CPaneDeck deck{nullptr, WND_TYPE_PLAYBACK, 4};
    DayScale scale{&deck, &archive, &deck};
    QScopedPointer<DayField> field{scale.field()};
};

qint64 momentOn(int day, int hour, int minute = 0, int second = 0)
{
    return QDateTime(QDate(2024, 5, day), QTime(hour, minute, second)).toMSecsSinceEpoch();
}

} // namespace

void tst_panes::beginsTheDay_data()
{
    QTest::addColumn<QVector<int>>("hours"); // the start of each piece, from midnight of the sixth
    QTest::addColumn<int>("first");
    QTest::newRow("nothing") << QVector<int>{} << 0;
    QTest::newRow("later that day") << QVector<int>{-30, 7, 9} << 7;
    QTest::newRow("over midnight") << QVector<int>{-1, 9} << 0;
    QTest::newRow("the next day") << QVector<int>{-30, 24} << 0;
}

void tst_panes::beginsTheDay()
{
    QFETCH(QVector<int>, hours);
    QFETCH(int, first);
    constexpr qint64 HourMs = 3'600'000;
    QVector<TrackPiece> pieces;
    for (int hour : hours)
        pieces.append({"", momentOn(6, 0) + hour * HourMs, momentOn(6, 0) + (hour + 2) * HourMs});
    const SegmentTrack track(pieces);
    ScaleOfDeck deck;
    deck.scale.setDay(QDate(2024, 5, 6));
    QCOMPARE(deck.scale.firstMoment(&track), momentOn(6, first));
    QCOMPARE(deck.scale.firstMoment(nullptr), momentOn(6, 0));
}

void tst_panes::scaleTakesTimeBothWays()
{
    ScaleOfDeck deck;
    QSignalSpy chosen(&deck.scale, &DayScale::dayChanged);
    for (const qint64 moment : {momentOn(6, 13, 14, 15), momentOn(7, 0), momentOn(7, 23, 59, 59)}) {
        deck.scale.showMoment(moment + 400);
        QCOMPARE(deck.scale.chosenMoment(), moment);
    }
    QCOMPARE(deck.field->date(), QDate(2024, 5, 7));
    QCOMPARE(chosen.count(), 0);
    deck.field->setDate(QDate(2024, 5, 8));
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(deck.scale.chosenMoment(), momentOn(8, 23, 59, 59));
}

void tst_panes::ticksOnScreenOnly()
{
    QWidget widget;
    VisibleTimer timer(&widget, 1);
    QSignalSpy ticks(&timer, &QTimer::timeout);
    QVERIFY(!timer.isActive());
    widget.show();
    QTRY_VERIFY(ticks.count() > 1);
    widget.hide();
    QVERIFY(!timer.isActive());
}

void tst_panes::filesAndLogBearAnyName()
{
    QStandardPaths::setTestModeEnabled(true);
    const QString name = QString::fromUtf8("Tor\n<img src=x>/大门").leftJustified(300, QChar(0x5927));
    const QString path = UserFiles::newPath(UserFiles::Kind::Snapshot, name);
    QImage picture(2, 2, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY2(picture.save(path), qPrintable(path));
    QVERIFY(UserFiles::newPath(UserFiles::Kind::Snapshot, name) != path && QFile::remove(path));
    EventLog log;
    QTemporaryFile file;
    QVERIFY(file.open() && log.writeTo(file.fileName()));
    log.add("live", name);
    QCOMPARE(file.readAll().count('\n'), 1);
    QVERIFY(log.findChild<QPlainTextEdit*>()->toPlainText().contains("Tor <img src=x>"));
}

int main(int argc, char** argv)
{
    return RunTests<tst_panes>(argc, argv);
}

#include "tst_panes.moc"
