#include "common/TickCount.h"
#include "panes/PtzZone.h"
#include "panes/SurfaceStage.h"
#include "support/DeckTestCase.h"

#include <QElapsedTimer>

#include <climits>

class tst_surface : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsZone();
    void playsGesture_data();
    void playsGesture();
    void diesInAnySignal_data() { playsGesture_data(); }
    void diesInAnySignal();
    void diesInRightPressOfWindow();
    void losesTheReleaseToAnotherWindow();
    void reportsRectangleByOneTimer();
    void wheelRunsToItsFirstRest();
    void limitsDragMessagesOfAllSurfaces();
    void ticksPassTheStartAtZero();
    void passesLabelSignalsOn();
};

void tst_surface::findsZone()
{
    // Corner of the centre, beside and below it, edges by the short pi, flat and steep, and far away.
    QVector<std::pair<QPoint, int>> rows = {{{-20, 10}, 0},
                                            {{21, 10}, 8},
                                            {{20, 11}, 8},
                                            {{1000000000, 414213558}, 8},
                                            {{10000000, 24142135}, 2},
                                            {{INT_MIN, INT_MIN}, 5}};
    const int zones[4][3] = {{3, 5, 1}, {3, 6, 2}, {4, 7, 1}, {4, 8, 2}};
    const QPoint points[] = {{1000, 414}, {1000, 415}, {1000, 2414}, {1000, 2415}};
    for (int i = 0; i < 16; ++i) {
        const QPoint pt = points[i % 4];
        rows.append(
            {QPoint(i < 8 ? -pt.x() : pt.x(), i % 8 < 4 ? -pt.y() : pt.y()), zones[i / 4][(i % 4 + 1) / 2]});
    }
    for (const auto& [offset, zone] : qAsConst(rows)) {
        QCOMPARE(ZoneOfPoint(offset, QSize(0, 0), QSize(20, 10)), zone);
        if (offset.x() > INT_MIN)
            QCOMPARE(ZoneOfPoint(offset + QPoint(100, 50), QSize(100, 50), QSize(20, 10)), zone);
    }
}

void tst_surface::playsGesture_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("signals_");
    const auto row = [](const char* name, const char* script, const char* expected) {
        QTest::newRow(name) << QString("E " + QString(script)) << QString(expected);
    };
    row("hover, wheel and edges without function", "M190,50 W120 P50,50 R50,50", "action release");
    row("right click", "p5,6 r5,6", "rightBtnClick");
    row("double click", "D50,50", "action release double(7,0) action release");
    row("unknown mode keeps PTZ", "F1 F3 F-2 M190,50 P190,50", "ptz(4,0) action");
    row("mode -1 ends PTZ", "F1 F-1 M190,50 P190,50", "action");
    row("reset ends PTZ", "F1 X M190,50 P190,50", "action");

    row("PTZ, hover and off", "F1 M190,50 M100,5 M250,50 P190,50", "ptz(0,1) ptz(0,0) action");
    row("PTZ, click in the centre", "F1 M100,50 P100,50 R100,50", "ptz(0,0) action ptz(0,1) release");
    row("PTZ, lower edge of the centre", "F1 M100,60 P100,60 M100,61", "ptz(0,0) action ptz(2,0)");
    row("PTZ, right to up", "F1 M190,50 P190,50 M191,50 M100,5 R100,5",
        "ptz(4,0) action ptz(4,1) ptz(1,0) ptz(1,1) release");
    row("PTZ, through the centre", "F1 M190,50 P190,50 M100,50 M101,50 M10,50 R10,50",
        "ptz(4,0) action ptz(4,1) ptz(3,0) ptz(3,1) release");
    row("PTZ, from the centre", "F1 M100,50 P100,50 M10,95 R10,95",
        "ptz(0,0) action ptz(6,0) ptz(6,1) release");
    row("PTZ, off the label", "F1 M190,50 P190,50 M200,50 M201,50 M-1,50 M200,100 R100,200",
        "ptz(4,0) action ptz(4,1) ptz(0,1) ptz(8,0) ptz(8,1) release");
    row("PTZ, release off the label", "F1 M190,50 P190,50 M100,101 M100,-1 R100,-1",
        "ptz(4,0) action ptz(4,1) ptz(0,1) ptz(0,1) release");
    row("PTZ, the hover's zone counts", "F1 M190,50 P10,50", "ptz(4,0) action");
    row("PTZ, zone of a pane drag", "F1 Z12 P10,50 R10,50 Z11 P100,50",
        "ptz(3,0) action ptz(3,1) release ptz(0,0) action");
    row("PTZ, zones of a label in the middle", "G400,300 A7 F1 M199,111 P199,111 R199,111 M199,20 P199,20",
        "ptz(0,0) action ptz(0,1) release ptz(1,0) action");
    row("PTZ, double click", "F1 M190,50 D190,50",
        "ptz(4,0) action ptz(4,1) release double(7,0) action ptz(0,1) release");
    row("PTZ, press beside the label", "F1 S0,0 M190,50 R190,50 M10,50", "action ptz(4,0) ptz(4,1) release");
    row("PTZ, mouse messages", "F1 B1 M100,50 P100,50 R101,51 p3,4 r3,4",
        "ptz(0,0) action ptz(0,1) release msg(0,1,(101,51)) msg(1,0,(3,4)) msg(1,1,(3,4))");
    row("PTZ, left while it runs", "F1 M190,50 P190,50 F0 M100,5 R100,5", "ptz(4,0) action release");
    row("PTZ, the release never comes to a disabled pane", "F1 L0 M190,50 P190,50 L0 L0 M100,5 M190,50",
        "ptz(4,0) action ptz(4,1)");
    row("PTZ, the release never comes to a blocked window", "F1 M190,50 P190,50 L1 M100,5 R100,5",
        "ptz(4,0) action ptz(4,1) ptz(0,1) release");
    row("PTZ, the release never comes to a hidden window", "F1 M190,50 P190,50 L2 M100,5 M190,50",
        "ptz(4,0) action ptz(4,1)");
    row("PTZ, the release goes to a menu", "F1 M190,50 P190,50 L3 M100,5", "ptz(4,0) action ptz(4,1)");
    row("PTZ, a dialog of another window takes the release", "F1 M190,50 P190,50 L4 M100,5",
        "ptz(4,0) action ptz(4,1)");
    row("PTZ, hidden after the release", "F1 M190,50 P190,50 R190,50 L2", "ptz(4,0) action ptz(4,1) release");
    row("PTZ, double click, the release never comes", "F1 M190,50 P190,50 R190,50 d190,50 M100,5 L2 M190,50",
        "ptz(4,0) action ptz(4,1) release double(7,0) action ptz(1,0) ptz(1,1)");
    row("PTZ, dialog at the start", "N1 F1 M190,50 P190,50 M100,5", "ptz(4,0) ptz(4,1) action");
    row("PTZ, dialog at a crossing", "N3 F1 M190,50 P190,50 M100,5 M10,50",
        "ptz(4,0) action ptz(4,1) ptz(4,1)");
    row("PTZ, dialog at a crossing from the centre", "N3 F1 M100,50 P100,50 M100,5 M10,50",
        "ptz(0,0) action ptz(1,0) ptz(1,1)");
    row("PTZ, dialog at a double click", "N5 F1 M190,50 P190,50 R190,50 d190,50 M100,5",
        "ptz(4,0) action ptz(4,1) release double(7,0) ptz(0,1) action");
    row("PTZ, press beside the label after a dialog", "N1 F1 M190,50 P190,50 S0,0 M10,50",
        "ptz(4,0) ptz(4,1) action action ptz(3,0)");
    row("PTZ, in the centre without a release", "F1 M100,50 P100,50 L1", "ptz(0,0) action ptz(0,1)");
    row("wheel", "F1 W120 W1 W-1 W0 W120", "ptz(9,0) ptz(9,1) ptz(10,0) ptz(10,1) ptz(9,0)");
    row("wheel without delta", "F1 W0", "ptz(10,0)");

    row("rectangle, click", "F2 P50,40 T50 R50,40",
        "action selectRegion(7,(50,40),(-1,-1)) RectanglePoint(7,(0,0),(0,0))");
    row("rectangle, move", "F2 M9,9 P50,40 M60,45 T50 T50 R70,50 M80,80",
        "action RectanglePoint(7,(50,40),(60,45)) RectanglePoint(7,(50,40),(60,45)) "
        "selectRegion(7,(50,40),(60,45)) RectanglePoint(7,(0,0),(0,0))");
    row("rectangle, held to the label", "F2 P50,40 M999,999 T50 M-5,20 T50 M20,-5 T50 R20,-5",
        "action RectanglePoint(7,(50,40),(200,100)) selectRegion(7,(50,40),(20,0)) "
        "RectanglePoint(7,(0,0),(0,0))");
    row("rectangle, left while it runs", "F2 P50,40 M60,45 F0 T50 R60,45",
        "action RectanglePoint(7,(50,40),(60,45)) release");
    row("rectangle, the release never comes", "F2 P50,40 M60,45 L1 T50 M70,50",
        "action RectanglePoint(7,(0,0),(0,0))");
    row("rectangle, double click", "F2 B1 D50,40",
        "action selectRegion(7,(50,40),(-1,-1)) RectanglePoint(7,(0,0),(0,0)) msg(0,1,(50,40)) "
        "double(7,1) msg(2,0,(51,41)) action "
        "selectRegion(7,(0,0),(0,0)) RectanglePoint(7,(0,0),(0,0)) msg(0,1,(50,40))");

    row("mouse messages, the release never comes", "B1 P5,6 L1 M9,9 R9,9",
        "msg(0,0,(5,6)) action msg(0,1,(5,6)) release msg(0,1,(9,9))");
    row("mouse messages, dialog at the press", "N1 B1 P5,6 M9,9", "msg(0,0,(5,6)) msg(0,1,(5,6)) action");
    row("mouse messages", "B1 M9,9 P5,6 R7,8 p5,6 r7,8",
        "msg(0,0,(5,6)) action release msg(0,1,(7,8)) msg(1,0,(5,6)) msg(1,1,(7,8))");
}

void tst_surface::playsGesture()
{
    QFETCH(QString, script);
    QFETCH(QString, signals_);
    Stage stage;
    stage.Play(script);
    QString seen = stage.log.Take().join(' ');
    seen.replace("sig_sendPtzCommand", "ptz").replace("sig_mouseRelease()", "release");
    seen.replace("action(pointer)", "action").replace("DoubleClickVideoWidget", "double");
    seen.replace("sig_rightBtnClick()", "rightBtnClick").replace("sig_sendMouseMsg", "msg").remove("sig_");
    QCOMPARE(seen, signals_);
}

void tst_surface::diesInAnySignal()
{
    QFETCH(QString, script);
    QFETCH(QString, signals_);
    for (int fatal = 1; fatal <= signals_.split(' ').size(); ++fatal) {
        Stage stage;
        stage.log.onSignal = [&](const QString&) {
            if (stage.log.Entries().size() == fatal)
                delete stage.pane;
        };
        stage.Play(script);
        QVERIFY(!stage.surface);
        QCOMPARE(stage.log.Entries().size(), fatal);
    }
}

void tst_surface::diesInRightPressOfWindow()
{
    QWidget window;
    window.resize(300, 200);
    Stage stage;
    stage.pane->setParent(&window);
    stage.pane->show();
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QPointer<QMyLabel> label(stage.label);
    stage.log.onSignal = [&](const QString&) { delete stage.pane; };
    // Qt sends a context menu event after it, and takes the label for alive.
    QTest::mousePress(window.windowHandle(), Qt::RightButton, Qt::NoModifier, QPoint(60, 50));
    QVERIFY(!stage.surface);
    QTRY_VERIFY(!label);
}

void tst_surface::losesTheReleaseToAnotherWindow()
{
    QWidget window;
    window.resize(300, 200);
    QWidget other;
    QDialog dialog(&other);
    dialog.setWindowModality(Qt::WindowModal);
    QMenu menu;
    Stage stage;
    stage.pane->setParent(&window);
    stage.pane->show();
    window.show();
    other.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    stage.surface->SetFunctionMode(1);
    for (QWidget* taker : {static_cast<QWidget*>(&menu), static_cast<QWidget*>(&dialog)}) {
        QTest::mousePress(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 50));
        taker->show();
        QTest::mouseRelease(taker == &menu ? menu.windowHandle() : window.windowHandle(), Qt::LeftButton,
                            Qt::NoModifier, QPoint(100, 50));
        taker->hide();
        QCoreApplication::processEvents();
        QCOMPARE(stage.log.Take().join(' '),
                 QString("sig_sendPtzCommand(0,0) action(pointer) sig_sendPtzCommand(0,1)"));
    }
}

void tst_surface::reportsRectangleByOneTimer()
{
    Stage stage;
    stage.Play("E F2 P50,40 M60,45");
    stage.log.Take();
    QTRY_COMPARE(stage.log.Entries().value(2), QString("sig_RectanglePoint(7,(50,40),(60,45))"));
    stage.Play("P1,1 P2,2");
    QCOMPARE(stage.Timers(50).size(), 1);
    stage.Play("R2,2 R2,2");
    QCOMPARE(stage.Timers(50).size(), 0);
}

void tst_surface::wheelRunsToItsFirstRest()
{
    Stage stage;
    stage.Play("F1 W120");
    const QList<int> timers = stage.Timers(1000);
    QCOMPARE(timers.size(), 1);
    for (int timely = 0, tries = 0; timely < 3 && tries < 1000; ++tries) {
        stage.log.Take();
        QElapsedTimer timer;
        timer.start();
        stage.Play("W120 T1000");
        if (timer.elapsed() >= 9)
            continue;
        ++timely;
        QVERIFY(!stage.log.Entries().contains("sig_sendPtzCommand(9,1)"));
        QCOMPARE(stage.Timers(1000), timers);
    }
    stage.Play("W-120 F0");
    stage.log.Take();
    QTRY_COMPARE(stage.log.Entries(), QStringList("sig_sendPtzCommand(10,1)"));
    stage.Play("W120");
    QCOMPARE(stage.log.Entries().size(), 1);
    QCOMPARE(stage.Timers(1000), QList<int>());
}

void tst_surface::limitsDragMessagesOfAllSurfaces()
{
    Stage first;
    Stage second;
    first.Play("E B1 F2 P5,5");
    second.Play("E B1 P5,5");
    first.log.Take();
    second.log.Take();
    QElapsedTimer timer;
    QTRY_VERIFY((timer.start(), first.Play("M30,20"), !first.log.Entries().isEmpty()));
    second.Play("M30,20 M31,20");
    if (timer.elapsed() < 100)
        QCOMPARE(second.log.Entries(), QStringList());
    QCOMPARE(first.log.Take(), QStringList("sig_sendMouseMsg(3,1,(30,20))"));
    QTRY_VERIFY((second.Play("M40,30"), !second.log.Entries().isEmpty()));
    QVERIFY2(timer.elapsed() >= 98, "the clocks may differ by a tick");
    QCOMPARE(second.log.Take(), QStringList("sig_sendMouseMsg(3,1,(40,30))"));
    first.log.Take();
    first.Play("T50");
    QCOMPARE(first.log.Take(), QStringList("sig_RectanglePoint(7,(5,5),(30,20))"));
}

void tst_surface::ticksPassTheStartAtZero()
{
    QVERIFY(!IsTickPast(1100, 1000, 100));
    QVERIFY(IsTickPast(1101, 1000, 100));
    QVERIFY(!IsTickPast(49, 0xffffffff - 50, 100));
    QVERIFY(IsTickPast(50, 0xffffffff - 50, 100));
    QVERIFY(IsTickPast(1000, 1001, 100));
}

void tst_surface::passesLabelSignalsOn()
{
    Stage stage;
    stage.log.WatchAll(stage.pane, "pane:");
    QMetaObject::invokeMethod(stage.label, "sig_DragEvent", Q_ARG(QTreeWidgetItem*, nullptr));
    QMetaObject::invokeMethod(stage.label, "sig_VideoResize", Q_ARG(int, 640), Q_ARG(int, 480));
    QCOMPARE(stage.log.Take(), QStringList({"pane:sig_DragEvent(null,7)", "sig_DragEvent(null,7)"}));
    stage.Play("D50,50");
    QVERIFY(stage.log.Take().contains("pane:doubleClicked(7,0)"));
    QSize size;
    stage.surface->GetVideoSize(size.rwidth(), size.rheight());
    QCOMPARE(size, QSize(640, 480));
}

QTEST_MAIN(tst_surface)

#include "tst_surface.moc"
