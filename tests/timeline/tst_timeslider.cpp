#include "support/DeckTestCase.h"
#include "support/Mouse.h"
#include "support/RunTests.h"
#include "support/SeededGenerator.h"
#include "support/SignalLog.h"
#include "timeline/CShapeWidget.h"
#include "timeline/CTimerLine.h"
#include "timeline/CTimerSlider.h"
#include "timeline/PlainScale.h"
#include "timeline/ThumbPicture.h"

namespace {

constexpr int s_nDay = 86400;

// The slider in its viewport, laid out as the day slider lays it out. A thumb width of 0 stands for no
// picture.
struct Scene
{
    explicit Scene(int width = 800, int thumbWidth = 20)
    {
        if (thumbWidth > 0)
            WriteThumb(installation, thumbWidth);
        auto* layout = new QVBoxLayout(&viewport);
        layout->setContentsMargins(0, 0, 0, 0);
        slider = new CTimerSlider(&viewport);
        slider->setMinimumSize(0, 50);
        slider->setMaximumSize(QWIDGETSIZE_MAX, 50);
        layout->addWidget(slider);
        slider->InitRange(s_nDay, 0);
        slider->SetColors(QVector<unsigned int>(s_nDay, 0xff808080u).constData());
        line = slider->findChild<CTimerLine*>();
        thumb = slider->findChild<CShapeWidget*>();
        viewport.resize(width, 50);
        viewport.show();
        Paint();
        log.WatchAll(slider);
    }

    QImage Paint() { return viewport.grab().toImage().convertToFormat(QImage::Format_RGB32); }

    // Turns the wheel so that the point of the viewport stays, one notch at a time.
    void Wheel(int notches, int at = 400)
    {
        for (int i = 0; i < qAbs(notches); ++i)
            Mouse::Wheel(slider, QPoint(at - slider->x(), 5), notches > 0 ? 120 : -120);
        Paint();
    }

    void DragThumbTo(int center)
    {
        const QPoint grip(thumb->width() / 2, 7);
        Mouse::Drag(thumb, grip, {grip + QPoint(center - thumb->x() - grip.x(), 0)});
    }

    int Center() const { return thumb->x() + thumb->width() / 2; }

    Installation installation;
    ExpectedWarning warning{"Specified color without alpha value but alpha given"};
    QWidget viewport;
    CTimerSlider* slider;
    CTimerLine* line;
    CShapeWidget* thumb;
    SignalLog log;
};

QPoint OnScale(int x)
{
    return QPoint(x, 8);
}

} // namespace

class tst_timeslider : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void looksLikeEveryTickDrawn_data();
    void looksLikeEveryTickDrawn();
    void placesItsPartsAtTheFirstPaint();
    void firstPlaceIsTheLeftEndWhateverTheValue();
    void paintMovesNothingAgain();
    void valuePlacesThumb_data();
    void valuePlacesThumb();
    void dragReportsEachStepAndTheRelease();
    void releaseWithoutDragKeepsTheLine();
    void doubleClickReportsInOrder();
    void hourModeWraps_data();
    void hourModeWraps();

    void zoomKeepsValueAndShare();
    void wheelReachesTheSliderThroughItsParts();
    void partsOfANotchChangeNothing();
    void zoomStopsAtBothEnds();
    void parentsWidthEndsTheZoom_data();
    void parentsWidthEndsTheZoom();
    void heightAloneLeavesTheZoom();

    void pans_data();
    void pans();
    void deadBandDoesNotPan_data();
    void deadBandDoesNotPan();
    void wheelDuringAPanLosesNothing();
    void otherButtonsDoNothing();

    void survivesEmptySizes();
    void mayDieInItsSignals_data();
    void mayDieInItsSignals();
};

void tst_timeslider::looksLikeEveryTickDrawn_data()
{
    QTest::addColumn<int>("ratio");
    for (int ratio : {1, 2, 4, 6, 8, 16, 200})
        QTest::addRow("ratio %d", ratio) << ratio;
}

void tst_timeslider::looksLikeEveryTickDrawn()
{
    QFETCH(int, ratio);
    QRandomGenerator random = SeededGenerator();
    for (int width : {800, 333, 1021}) {
        Scene scene(width);
        scene.line->hide();
        scene.thumb->hide();
        scene.slider->SetColors(nullptr);
        scene.Wheel(ratio - 1, width / 3);
        QCOMPARE(scene.slider->width(), width * ratio);
        for (int i = 0; i < 20; ++i) {
            const QRect clip =
                QRect(random.bounded(width * ratio), random.bounded(20), 1 + random.bounded(300), 40) &
                scene.slider->rect();
            QImage plain(clip.size(), QImage::Format_RGB32);
            plain.fill(Qt::white);
            QImage image = plain;
            QPainter painter(&plain);
            painter.translate(-clip.topLeft());
            painter.setPen(QColor(157, 156, 155));
            PlainScale::Draw(painter, width * ratio, ratio);
            scene.slider->render(&image, QPoint(), clip, QWidget::RenderFlags());
            QCOMPARE(image, plain);
        }
    }
}

void tst_timeslider::placesItsPartsAtTheFirstPaint()
{
    Scene scene;
    QCOMPARE(scene.line->geometry(), QRect(0, 22, 800, 13));
    QCOMPARE(scene.thumb->pos(), QPoint(-10, 35));
    scene.DragThumbTo(9000);
    QCOMPARE(scene.log.Take(), QStringList({"sig_SliderMoved(86400)", "sig_SliderReleased(86400)"}));
    QCOMPARE(scene.Center(), 800);
}

void tst_timeslider::firstPlaceIsTheLeftEndWhateverTheValue()
{
    Installation installation;
    const ExpectedWarning warning("Specified color without alpha value but alpha given");
    WriteThumb(installation, 20);
    CTimerSlider slider(nullptr);
    slider.InitRange(s_nDay, 0);
    slider.resize(800, 50);
    slider.slot_SetCurNum(43200);
    slider.grab();
    QCOMPARE(slider.findChild<CShapeWidget*>()->pos(), QPoint(-10, 35));
}

void tst_timeslider::paintMovesNothingAgain()
{
    Scene scene;
    scene.thumb->move(123, 20);
    scene.line->move(3, 3);
    scene.Paint();
    QCOMPARE(scene.thumb->pos(), QPoint(123, 20));
    QCOMPARE(scene.line->pos(), QPoint(3, 3));
}

void tst_timeslider::valuePlacesThumb_data()
{
    QTest::addColumn<int>("thumb");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("x");
    QTest::newRow("start") << 20 << 0 << -10;
    QTest::newRow("noon") << 20 << 43200 << 390;
    QTest::newRow("24:00:00") << 20 << 86400 << 790;
    QTest::newRow("truncated") << 20 << 43307 << 390;
    QTest::newRow("beyond the day") << 20 << 2 * 86400 << 1590;
    QTest::newRow("before the day") << 20 << -86400 << -810;
    QTest::newRow("odd thumb at the end") << 21 << 86400 << 789;
    QTest::newRow("no picture") << 0 << 86400 << 800;
}

void tst_timeslider::valuePlacesThumb()
{
    QFETCH(int, thumb);
    QFETCH(int, value);
    QFETCH(int, x);
    Scene scene(800, thumb);
    scene.slider->slot_SetCurNum(value);
    QCOMPARE(scene.thumb->pos(), QPoint(x, 35));
    QCOMPARE(scene.log.Take(), QStringList());
}

void tst_timeslider::dragReportsEachStepAndTheRelease()
{
    Scene scene;
    Mouse::Press(scene.thumb, QPoint(10, 7));
    QVERIFY(scene.slider->IsThumbPressed());
    Mouse::Move(scene.thumb, QPoint(60, 40), Qt::LeftButton);
    Mouse::Move(scene.thumb, QPoint(110, 7), Qt::LeftButton);
    Mouse::Release(scene.thumb, QPoint(10, 7));
    QVERIFY(!scene.slider->IsThumbPressed());
    QCOMPARE(scene.log.Take(),
             QStringList({"sig_SliderMoved(5400)", "sig_SliderMoved(16200)", "sig_SliderReleased(16200)"}));
    QCOMPARE(scene.thumb->pos(), QPoint(140, 35));
}

void tst_timeslider::releaseWithoutDragKeepsTheLine()
{
    Scene scene;
    scene.slider->slot_SetCurNum(43200);
    Mouse::Click(scene.thumb, QPoint(10, 7));
    QCOMPARE(scene.log.Take(), QStringList("sig_SliderReleased(1080)"));
    scene.slider->slot_SetCurNum(43200);
    QCOMPARE(scene.thumb->pos(), QPoint(390, 35));
}

void tst_timeslider::doubleClickReportsInOrder()
{
    Scene scene;
    scene.Wheel(3);
    const QPoint pos(1600, 3);
    Mouse::DoubleClick(scene.line, pos);
    QCOMPARE(scene.log.Take(), QStringList({"sig_SliderMoved(43200)", "sig_MouseDbCLick(43200)"}));
    QCOMPARE(scene.thumb->pos(), QPoint(1590, 35));
    Mouse::DoubleClick(scene.line, pos, Qt::RightButton);
    QCOMPARE(scene.log.Take(), QStringList());
}

void tst_timeslider::hourModeWraps_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("x");
    QTest::newRow("start of the day") << 0 << -10;
    QTest::newRow("within an hour") << 7200 + 1800 << 350;
    QTest::newRow("full hour") << 7200 << 709;
}

void tst_timeslider::hourModeWraps()
{
    QFETCH(int, number);
    QFETCH(int, x);
    Scene scene(720);
    scene.slider->InitRange(3600, 1);
    scene.Paint();
    scene.slider->slot_SetCurNum(number);
    QCOMPARE(scene.thumb->x(), x);
    scene.slider->slot_BtnMoved(710, 35);
    QCOMPARE(scene.log.Take(), QStringList("sig_SliderMoved(3599)"));
}

void tst_timeslider::zoomKeepsValueAndShare()
{
    Scene scene;
    scene.slider->slot_SetCurNum(30000);
    for (int notches : {1, 4, 20, -7, 100, -30}) {
        scene.Wheel(notches);
        QCOMPARE(scene.line->geometry(), QRect(0, 22, scene.slider->width(), 13));
        QVERIFY(qAbs(scene.Center() - scene.slider->width() * 30000.0 / s_nDay) <=
                scene.slider->width() / 800.0);
        QCOMPARE(scene.thumb->y(), 35);
    }
    QCOMPARE(scene.log.Take(), QStringList());
    QCOMPARE(scene.slider->width(), 89 * 800);
}

void tst_timeslider::wheelReachesTheSliderThroughItsParts()
{
    Scene scene;
    Mouse::Wheel(scene.line, QPoint(400, 3), 120);
    QCOMPARE(scene.slider->geometry(), QRect(-400, 0, 1600, 50));
    Mouse::Wheel(scene.thumb, QPoint(10, 7), 240);
    QCOMPARE(scene.slider->geometry(), QRect(-400, 0, 3200, 50));
}

void tst_timeslider::partsOfANotchChangeNothing()
{
    Scene scene;
    scene.slider->slot_SetCurNum(30000);
    scene.Wheel(6, 333);
    const QRect geometry = scene.slider->geometry();
    const QPoint thumb = scene.thumb->pos();
    for (int i = 0; i < 500; ++i) {
        Mouse::Wheel(scene.slider, QPoint(i * 7, 5), i % 2 ? 119 : -15);
        scene.Paint();
    }
    QCOMPARE(scene.slider->geometry(), geometry);
    QCOMPARE(scene.thumb->pos(), thumb);
}

void tst_timeslider::zoomStopsAtBothEnds()
{
    Scene scene;
    scene.Wheel(-3);
    QCOMPARE(scene.slider->geometry(), QRect(0, 0, 800, 50));
    Mouse::Wheel(scene.slider, QPoint(800, 5), 120 * 1000);
    QCOMPARE(scene.slider->geometry(), QRect(800 - 160000, 0, 160000, 50));
    Mouse::Wheel(scene.slider, QPoint(159000, 5), -INT_MAX);
    QCOMPARE(scene.slider->geometry(), QRect(0, 0, 800, 50));
}

void tst_timeslider::parentsWidthEndsTheZoom_data()
{
    QTest::addColumn<int>("width");
    QTest::newRow("wider") << 900;
    QTest::newRow("narrower") << 500;
    QTest::newRow("as wide as the zoomed scale") << 2400;
}

void tst_timeslider::parentsWidthEndsTheZoom()
{
    QFETCH(int, width);
    Scene scene;
    scene.slider->slot_SetCurNum(43200);
    scene.Wheel(2, 0);
    scene.viewport.resize(width, 50);
    scene.Paint();
    QCOMPARE(scene.slider->geometry(), QRect(0, 0, width, 50));
    QCOMPARE(scene.line->width(), width);
    QVERIFY(qAbs(scene.Center() - width / 2) <= 1);
    scene.Wheel(1, 0);
    QCOMPARE(scene.slider->width(), 2 * width);
}

void tst_timeslider::heightAloneLeavesTheZoom()
{
    Scene scene;
    scene.slider->slot_SetCurNum(43200);
    scene.Wheel(9, 200);
    const QRect geometry = scene.slider->geometry();
    const QPoint thumb = scene.thumb->pos();
    for (int height : {60, 184, 50}) {
        scene.viewport.resize(800, height);
        scene.Paint();
        QCOMPARE(scene.slider->x(), geometry.x());
        QCOMPARE(scene.slider->width(), geometry.width());
        QCOMPARE(scene.thumb->pos(), thumb);
    }
    scene.viewport.hide();
    scene.viewport.layout()->invalidate();
    scene.viewport.show();
    scene.Paint();
    QCOMPARE(scene.slider->geometry(), geometry);
    scene.Wheel(-9, 200);
    QCOMPARE(scene.slider->geometry(), QRect(0, 0, 800, 50));
}

void tst_timeslider::pans_data()
{
    QTest::addColumn<int>("notches");
    QTest::addColumn<int>("by");
    QTest::addColumn<int>("x");
    QTest::newRow("left") << 4 << -120 << -1720;
    QTest::newRow("right") << 4 << 120 << -1480;
    QTest::newRow("as far as the left end") << 4 << 5000 << 0;
    QTest::newRow("as far as the right end") << 4 << -5000 << -3200;
    QTest::newRow("whole day, left") << 0 << -100 << 0;
    QTest::newRow("whole day, right") << 0 << 100 << 0;
}

void tst_timeslider::pans()
{
    QFETCH(int, notches);
    QFETCH(int, by);
    QFETCH(int, x);
    Scene scene;
    scene.Wheel(notches);
    const QPoint from = scene.slider->mapToGlobal(OnScale(2000));
    Mouse::Press(scene.slider, OnScale(2000));
    for (int part : {1, 2, 3}) {
        const QPoint to = from + QPoint(by * part / 3, 30 * part);
        Mouse::Move(scene.slider, scene.slider->mapFromGlobal(to), Qt::LeftButton);
    }
    QCOMPARE(scene.slider->pos(), QPoint(x, 0));
    Mouse::Release(scene.slider, OnScale(2000));
    Mouse::Move(scene.slider, OnScale(100), Qt::LeftButton);
    QCOMPARE(scene.slider->pos(), QPoint(x, 0));
}

void tst_timeslider::deadBandDoesNotPan_data()
{
    QTest::addColumn<int>("y");
    QTest::addColumn<bool>("moves");
    QTest::newRow("above") << 19 << true;
    QTest::newRow("its top") << 20 << false;
    QTest::newRow("its bottom") << 30 << false;
    QTest::newRow("below, still on the strip") << 31 << true;
    QTest::newRow("below the strip") << 40 << true;
}

void tst_timeslider::deadBandDoesNotPan()
{
    QFETCH(int, y);
    QFETCH(bool, moves);
    Scene scene;
    scene.Wheel(4);
    QWidget* target = scene.slider->childAt(2000, y);
    if (!target)
        target = scene.slider;
    const QPoint from = target->mapFrom(scene.slider, QPoint(2000, y));
    Mouse::Drag(target, from, {from + QPoint(-50, 0)});
    QCOMPARE(scene.slider->x(), moves ? -1650 : -1600);
}

void tst_timeslider::wheelDuringAPanLosesNothing()
{
    Scene scene;
    scene.Wheel(9, 700);
    Mouse::Press(scene.slider, OnScale(6000));
    Mouse::Wheel(scene.slider, OnScale(6000), -120 * 9);
    Mouse::Move(scene.slider, OnScale(3), Qt::LeftButton);
    QCOMPARE(scene.slider->geometry(), QRect(0, 0, 800, 50));
    scene.Wheel(9, 700);
    Mouse::Press(scene.slider, OnScale(6000));
    scene.viewport.resize(600, 50);
    Mouse::Move(scene.slider, OnScale(3), Qt::LeftButton);
    QCOMPARE(scene.slider->geometry(), QRect(0, 0, 600, 50));
}

void tst_timeslider::otherButtonsDoNothing()
{
    Scene scene;
    scene.Wheel(4);
    Mouse::Drag(scene.slider, OnScale(2000), {OnScale(1900)}, Qt::RightButton);
    Mouse::Drag(scene.thumb, QPoint(10, 7), {QPoint(90, 7)}, Qt::RightButton);
    QCOMPARE(scene.slider->x(), -1600);
    QCOMPARE(scene.thumb->x(), -10);
    QCOMPARE(scene.log.Take(), QStringList());
}

void tst_timeslider::survivesEmptySizes()
{
    const ExpectedWarning warning("Specified color without alpha value but alpha given");
    Installation installation(0);
    QWidget viewport;
    auto* slider = new CTimerSlider(&viewport);
    slider->SetColors(nullptr);
    slider->slot_SetCurNum(INT_MAX);
    slider->slot_MouseDbClice(INT_MIN);
    slider->grab();
    for (int total : {0, -1, 1, s_nDay}) {
        slider->InitRange(total, total % 2);
        for (const QSize& size : {QSize(0, 0), QSize(0, 50), QSize(1, 1), QSize(QWIDGETSIZE_MAX, 50)}) {
            viewport.resize(size);
            slider->resize(size);
            QResizeEvent resize(size, QSize());
            QCoreApplication::sendEvent(slider, &resize);
            for (int delta : {1, 120, -120, INT_MAX, -INT_MAX})
                Mouse::Wheel(slider, QPoint(0, 5), delta);
            slider->grab(QRect(0, 0, 60, 50));
            slider->slot_SetCurNum(INT_MIN);
            slider->slot_BtnMoved(INT_MAX, 0);
            Mouse::Drag(slider, OnScale(0), {OnScale(5), OnScale(-5)});
        }
    }
    QVERIFY(slider->width() <= QWIDGETSIZE_MAX);
}

void tst_timeslider::mayDieInItsSignals_data()
{
    QTest::addColumn<QString>("dying");
    for (const char* name : {"sig_SliderMoved", "sig_SliderReleased", "sig_MouseDbCLick"})
        QTest::newRow(name) << name;
}

void tst_timeslider::mayDieInItsSignals()
{
    QFETCH(QString, dying);
    for (bool thumb : {true, false}) {
        Scene scene;
        const QPointer<CTimerSlider> slider(scene.slider);
        scene.log.onSignal = [&](const QString& entry) {
            if (entry.startsWith(dying))
                delete slider;
        };
        if (thumb)
            scene.DragThumbTo(200);
        else
            Mouse::DoubleClick(scene.line, QPoint(300, 3));
        const QString never = thumb ? "sig_MouseDbCLick" : "sig_SliderReleased";
        QCOMPARE(slider.isNull(), dying != never);
    }
}

int main(int argc, char** argv)
{
    return RunTests<tst_timeslider>(argc, argv);
}

#include "tst_timeslider.moc"
