#include "timeline/DaySliderScene.h"

#include <QLayout>

using Scene = DaySliderScene;

/// How the day slider's scale is zoomed and panned.
class tst_dayzoom : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void zoomKeepsValueAndShare();
    void zoomStopsAtBothEnds();
    void parentsWidthEndsTheZoom();
    void heightAloneLeavesTheZoom();
    void pans();
    void wheelDuringAPanLosesNothing();
};

void tst_dayzoom::zoomKeepsValueAndShare()
{
    Scene scene;
    scene.day->SetTimerSliderPose(8, 20, 0);
    for (int notches : {1, 4, 20, -7, 100, -30}) {
        scene.Wheel(notches);
        const int width = scene.slider->width();
        QCOMPARE(scene.line->geometry(), QRect(0, 22, width, 13));
        QVERIFY(qAbs(scene.thumb->x() + 10 - width * 30000.0 / 86400) <= width / 800.0);
        QCOMPARE(scene.thumb->y(), 35);
    }
    QCOMPARE(scene.log.Take(), QStringList());
    QCOMPARE(scene.Time(), QString("8 20 0 23 59 59"));
    QCOMPARE(scene.slider->width(), 89 * 800);
}

void tst_dayzoom::zoomStopsAtBothEnds()
{
    Scene scene;
    scene.Wheel(-3);
    QCOMPARE(scene.slider->geometry(), QRect(0, 0, 800, 50));
    Mouse::Wheel(scene.line, QPoint(400, 3), 120);
    for (int i = 0; i < 50; ++i)
        Mouse::Wheel(scene.slider, QPoint(i * 7, 5), i % 2 ? 119 : -15);
    QCOMPARE(scene.slider->geometry(), QRect(-400, 0, 1600, 50));
    Mouse::Wheel(scene.thumb, QPoint(10, 7), 240);
    QCOMPARE(scene.slider->geometry(), QRect(-400, 0, 3200, 50));
    Mouse::Wheel(scene.slider, QPoint(1200, 5), INT_MAX);
    QCOMPARE(scene.slider->geometry(), QRect(-59200, 0, 160000, 50));
    Mouse::Wheel(scene.slider, QPoint(159000, 5), -INT_MAX);
    QCOMPARE(scene.slider->geometry(), QRect(0, 0, 800, 50));
}

void tst_dayzoom::parentsWidthEndsTheZoom()
{
    // The last one is as wide as the zoomed scale, which gets no resize of its own.
    for (int width : {900, 500, 2400}) {
        Scene scene;
        scene.day->SetTimerSliderPose(12, 0, 0);
        scene.Wheel(2, 0);
        scene.day->resize(width, 50);
        scene.day->grab();
        QCOMPARE(scene.slider->geometry(), QRect(0, 0, width, 50));
        QCOMPARE(scene.line->width(), width);
        QVERIFY(qAbs(scene.thumb->x() + 10 - width / 2) <= 1);
        scene.Wheel(1, 0);
        QCOMPARE(scene.slider->width(), 2 * width);
    }
}

void tst_dayzoom::heightAloneLeavesTheZoom()
{
    Scene scene;
    scene.day->SetTimerSliderPose(12, 0, 0);
    scene.Wheel(9, 200);
    const QRect geometry = scene.slider->geometry();
    const QPoint thumb = scene.thumb->pos();
    for (int height : {60, 184, 50}) {
        scene.day->resize(800, height);
        scene.day->grab();
        QCOMPARE(scene.slider->x(), geometry.x());
        QCOMPARE(scene.slider->width(), geometry.width());
        QCOMPARE(scene.thumb->pos(), thumb);
    }
    scene.day->hide();
    scene.slider->parentWidget()->layout()->invalidate();
    scene.day->show();
    scene.day->grab();
    QCOMPARE(scene.slider->geometry(), geometry);
    scene.Wheel(-9, 200);
    QCOMPARE(scene.slider->geometry(), QRect(0, 0, 800, 50));
}

void tst_dayzoom::pans()
{
    struct
    {
        const char* name;
        int notches, y, by, x;
    } const rows[] = {
        {"left", 4, 8, -120, -1720},
        {"right", 4, 8, 120, -1480},
        {"as far as the left end", 4, 8, 5000, 0},
        {"as far as the right end", 4, 8, -5000, -3200},
        {"whole day, left", 0, 8, -100, 0},
        {"whole day, right", 0, 8, 100, 0},
        {"above the dead band", 4, 19, -50, -1650},
        {"its top", 4, 20, -50, -1600},
        {"its bottom", 4, 30, -50, -1600},
        {"below it, on the strip", 4, 31, -50, -1650},
        {"below the strip", 4, 40, -50, -1650},
    };
    for (const auto& row : rows) {
        Scene scene;
        scene.Wheel(row.notches);
        const QPoint press(400 * (row.notches + 1), row.y);
        QWidget* target = scene.slider->childAt(press);
        target = target ? target : scene.slider;
        const QPoint from = target->mapFrom(scene.slider, press);
        Mouse::Drag(target, from, {from + QPoint(row.by, 30)}, Qt::RightButton);
        QVERIFY2(scene.slider->x() == -400 * row.notches, row.name);
        Mouse::Drag(target, from, {from + QPoint(row.by, 30)});
        QVERIFY2(scene.slider->pos() == QPoint(row.x, 0), row.name);
        Mouse::Move(scene.slider, QPoint(100, 8), Qt::LeftButton);
        QVERIFY2(scene.slider->pos() == QPoint(row.x, 0), row.name);
    }
}

void tst_dayzoom::wheelDuringAPanLosesNothing()
{
    Scene scene;
    scene.Wheel(9, 700);
    Mouse::Press(scene.slider, QPoint(6000, 8));
    Mouse::Wheel(scene.slider, QPoint(6000, 8), -120 * 9);
    Mouse::Move(scene.slider, QPoint(3, 8), Qt::LeftButton);
    QCOMPARE(scene.slider->geometry(), QRect(0, 0, 800, 50));
    scene.Wheel(9, 700);
    Mouse::Press(scene.slider, QPoint(6000, 8));
    scene.day->resize(600, 50);
    Mouse::Move(scene.slider, QPoint(3, 8), Qt::LeftButton);
    QCOMPARE(scene.slider->geometry(), QRect(0, 0, 600, 50));
}

QTEST_MAIN(tst_dayzoom)

#include "tst_dayzoom.moc"
