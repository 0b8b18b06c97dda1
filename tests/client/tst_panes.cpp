#include "panes/PaneRings.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "tabs/AlarmBoard.h"

Q_DECLARE_METATYPE(QVector<int>)

class tst_panes : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void choosesAlarmPane_data();
    void choosesAlarmPane();
    void ignoresPanesThatAreNone();
    void keepsMinutes_data();
    void keepsMinutes();
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

int main(int argc, char** argv)
{
    return RunTests<tst_panes>(argc, argv);
}

#include "tst_panes.moc"
