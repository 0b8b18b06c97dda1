#include "support/DeckTestCase.h"
#include "support/Mouse.h"
#include "support/RunTests.h"
#include "support/SignalLog.h"
#include "timeline/CLinSliderWidget.h"
#include "timeline/CPlaybackSliderWidget.h"
#include "timeline/CShapeWidget.h"
#include "timeline/CTimerLine.h"
#include "timeline/CTimerSlider.h"
#include "timeline/ThumbPicture.h"

namespace {

struct Scene
{
    explicit Scene(int width = 800, int thumbWidth = 20)
    {
        WriteThumb(installation, thumbWidth);
        day.reset(new CPlaybackSliderWidget(nullptr));
        slider = day->findChild<CTimerSlider*>("m_dayWidget");
        thumb = day->findChild<CShapeWidget*>();
        line = day->findChild<CTimerLine*>();
        day->resize(width, 50);
        day->show();
        day->grab();
        log.WatchAll(day.data());
    }

    void Drag(int by)
    {
        Mouse::Drag(thumb, QPoint(thumb->width() / 2, 7), {QPoint(thumb->width() / 2 + by, 7)});
    }

    QString Time() const
    {
        short part[6];
        day->GetSelectedTime(part[0], part[1], part[2], part[3], part[4], part[5]);
        QStringList texts;
        for (short value : part)
            texts.append(QString::number(value));
        return texts.join(' ');
    }

    Installation installation;
    ExpectedWarning warning{"Specified color without alpha value but alpha given"};
    QScopedPointer<CPlaybackSliderWidget> day;
    CTimerSlider* slider;
    CShapeWidget* thumb;
    CTimerLine* line;
    SignalLog log;
};

} // namespace

class tst_dayslider : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty();
    void copiesItsTable();
    void takesATime_data();
    void takesATime();
    void dragSeeksAtTheRelease();
    void neverSelectsBeyondTheDay();
    void releaseWithoutDragKeepsTheThumbOnItsLine();
    void heldThumbDropsTimes();
    void doubleClickSeeksOnce();
    void ignoresStrangers();
    void looksTheSameRightToLeft();

    void rulerAndHandle_data();
    void rulerAndHandle();
    void fileSliderReportsPressAndRelease();
};

void tst_dayslider::startsEmpty()
{
    Scene scene;
    QCOMPARE(scene.Time(), QString("0 0 0 23 59 59"));
    QCOMPARE(scene.thumb->pos(), QPoint(-10, 35));
    QImage grey(800, 13, QImage::Format_RGB32);
    grey.fill(qRgb(128, 128, 128));
    QCOMPARE(scene.line->grab().toImage().convertToFormat(QImage::Format_RGB32), grey);
}

void tst_dayslider::copiesItsTable()
{
    Scene scene;
    QVector<unsigned int> table(CPlaybackSliderWidget::DaySeconds, 0x00123456u);
    scene.day->SetTimerPeriod(table.constData());
    table.fill(0);
    scene.day->SetTimerPeriod(nullptr);
    QCOMPARE(scene.line->grab().toImage().pixel(400, 6), qRgb(0x12, 0x34, 0x56));
}

void tst_dayslider::takesATime_data()
{
    QTest::addColumn<QVector<short>>("pose");
    QTest::addColumn<QString>("time");
    QTest::addColumn<int>("x");
    QTest::newRow("midnight") << QVector<short>{0, 0, 0} << "0 0 0 23 59 59" << -10;
    QTest::newRow("noon") << QVector<short>{12, 0, 0} << "12 0 0 23 59 59" << 390;
    QTest::newRow("parts that carry") << QVector<short>{11, 59, 61} << "12 0 1 23 59 59" << 390;
    QTest::newRow("last second") << QVector<short>{23, 59, 59} << "23 59 59 23 59 59" << 789;
    QTest::newRow("24:00:00") << QVector<short>{24, 0, 0} << "23 59 59 23 59 59" << 790;
    QTest::newRow("24:00:01 is dropped") << QVector<short>{24, 0, 1} << "6 0 0 23 59 59" << 190;
    QTest::newRow("far too late is dropped") << QVector<short>{32767, 0, 0} << "6 0 0 23 59 59" << 190;
    QTest::newRow("negative") << QVector<short>{-1, 0, 0} << "-1 0 0 23 59 59" << -43;
}

void tst_dayslider::takesATime()
{
    QFETCH(QVector<short>, pose);
    QFETCH(QString, time);
    QFETCH(int, x);
    Scene scene;
    scene.day->SetTimerSliderPose(6, 0, 0);
    scene.day->SetTimerSliderPose(pose.at(0), pose.at(1), pose.at(2));
    QCOMPARE(scene.Time(), time);
    QCOMPARE(scene.thumb->pos(), QPoint(x, 35));
    scene.day->SetTimerSliderPose(SHRT_MIN, SHRT_MIN, SHRT_MIN);
    QCOMPARE(scene.log.Take(), QStringList());
}

void tst_dayslider::dragSeeksAtTheRelease()
{
    Scene scene(864);
    QString during;
    SignalLog moves;
    moves.Watch(scene.slider, SIGNAL(sig_SliderMoved(int)));
    moves.onSignal = [&](const QString&) { during = scene.Time(); };
    scene.Drag(37);
    QCOMPARE(during, QString("1 1 40 23 59 59"));
    QCOMPARE(scene.Time(), QString("1 1 40 23 59 59"));
    QCOMPARE(scene.log.Take(), QStringList("sig_SliderMoved()"));
    QCOMPARE(scene.thumb->pos(), QPoint(27, 35));
}

void tst_dayslider::neverSelectsBeyondTheDay()
{
    for (int thumbWidth : {20, 21}) {
        Scene scene(800, thumbWidth);
        scene.Drag(3000);
        QCOMPARE(scene.Time(), QString("23 59 59 23 59 59"));
        QCOMPARE(scene.thumb->pos(), QPoint(thumbWidth % 2 ? 789 : 790, 35));
    }
}

void tst_dayslider::releaseWithoutDragKeepsTheThumbOnItsLine()
{
    Scene scene;
    scene.day->SetTimerSliderPose(12, 0, 0);
    Mouse::Click(scene.thumb, QPoint(10, 7));
    QCOMPARE(scene.log.Take(), QStringList("sig_SliderMoved()"));
    QCOMPARE(scene.thumb->pos(), QPoint(0, 35));
    QCOMPARE(scene.Time(), QString("0 18 0 23 59 59"));
}

void tst_dayslider::heldThumbDropsTimes()
{
    Scene scene;
    Mouse::Press(scene.thumb, QPoint(10, 7));
    scene.day->SetTimerSliderPose(12, 0, 0);
    QCOMPARE(scene.Time(), QString("0 0 0 23 59 59"));
    QCOMPARE(scene.thumb->x(), -10);
    Mouse::Release(scene.thumb, QPoint(10, 7));
    scene.day->SetTimerSliderPose(12, 0, 0);
    QCOMPARE(scene.thumb->x(), 390);
}

void tst_dayslider::doubleClickSeeksOnce()
{
    Scene scene;
    QString atSignal;
    scene.log.onSignal = [&](const QString&) { atSignal = scene.Time(); };
    Mouse::DoubleClick(scene.line, QPoint(200, 3));
    QCOMPARE(scene.log.Take(), QStringList("sig_SliderDbClicked()"));
    QCOMPARE(atSignal, QString("6 0 0 23 59 59"));
    QCOMPARE(scene.thumb->pos(), QPoint(190, 35));
}

void tst_dayslider::ignoresStrangers()
{
    Scene scene;
    scene.day->slot_SliderMoved(5000);
    CTimerSlider stranger(nullptr);
    connect(&stranger, SIGNAL(sig_SliderMoved(int)), scene.day.data(), SLOT(slot_SliderMoved(int)));
    stranger.slot_BtnMoved(50, 0);
    QCOMPARE(scene.Time(), QString("0 0 0 23 59 59"));
}

void tst_dayslider::looksTheSameRightToLeft()
{
    const auto show = [](Scene& scene) {
        scene.day->SetTimerSliderPose(5, 0, 0);
        Mouse::Wheel(scene.slider, QPoint(300, 5), 480);
        return scene.day->grab().toImage();
    };
    Scene leftToRight;
    const QImage expected = show(leftToRight);
    QApplication::setLayoutDirection(Qt::RightToLeft);
    Scene rightToLeft;
    const QImage image = show(rightToLeft);
    QApplication::setLayoutDirection(Qt::LeftToRight);
    QCOMPARE(rightToLeft.slider->geometry(), leftToRight.slider->geometry());
    QCOMPARE(image, expected);
}

void tst_dayslider::rulerAndHandle_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("end");
    QTest::newRow("a multiple of 20") << 832 << 816;
    QTest::newRow("a remainder is left out") << 850 << 816;
    QTest::newRow("no room for a step") << 40 << 16;
    QTest::newRow("narrower than the margins") << 5 << -4;
}

void tst_dayslider::rulerAndHandle()
{
    QFETCH(int, width);
    QFETCH(int, end);
    CLinSliderWidget view(nullptr);
    view.SetRange(INT_MIN, INT_MAX);
    view.SetRange(0, 1000);
    view.resize(width, 50);
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::white);
    view.setPalette(palette);
    view.show();
    view.grab();
    const auto* slider = view.findChild<QSlider*>();
    QCOMPARE(slider->geometry(), QRect(16, 15, qMax(0, end - 16), slider->height()));
    if (width < 800)
        return;
    view.findChild<QSlider*>()->hide();
    const QImage image = view.grab().toImage();
    const auto dark = [&](int x, int y) { return qGray(image.pixel(x, y)) < 40; };
    QVERIFY(dark(16, 15) && dark(end, 15) && !dark(15, 15) && !dark(end + 1, 15));
    QVERIFY(dark(16, 5) && dark(56, 10) && !dark(56, 9) && dark(end, 5));
}

void tst_dayslider::fileSliderReportsPressAndRelease()
{
    CLinSliderWidget view(nullptr);
    view.SetRange(0, 1000);
    view.resize(850, 50);
    view.show();
    view.grab();
    SignalLog log;
    log.WatchAll(&view);
    auto* slider = view.findChild<QSlider*>();
    view.SetValue(5000);
    QCOMPARE(view.Value(), 1000);
    view.SetValue(0);
    Mouse::Drag(slider, QPoint(4, slider->height() / 2), {QPoint(404, slider->height() / 2)});
    QCOMPARE(log.Take(), QStringList({"sliderPressed()", "sliderReleased()"}));
    QVERIFY(qAbs(view.Value() - 500) < 20);
}

int main(int argc, char** argv)
{
    return RunTests<tst_dayslider>(argc, argv);
}

#include "tst_dayslider.moc"
