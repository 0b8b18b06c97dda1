#include "support/SeededGenerator.h"
#include "timeline/CLinSliderWidget.h"
#include "timeline/DaySliderScene.h"
#include "timeline/PlainScale.h"

#include <QDialog>
#include <QLayout>
#include <QMenu>
#include <QSlider>

using Scene = DaySliderScene;

class tst_dayslider : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void looksLikeEveryTickDrawn();
    void labelsAreUprightAndNotBold();
    void startsEmptyAtTheLeftEnd();
    void takesATime();
    void thumbIsCutToItsPicture();
    void dragSeeksAtTheRelease();
    void thumbStaysInTheDay();
    void releaseTellsTheLastDrag();
    void otherButtonsLeaveTheThumb();
    void heldThumbDropsTimes();
    void thumbIsLetGoWhenTheMouseIsTakenAway();
    void doubleClickSeeksOnce();
    void looksTheSameRightToLeft();
    void survivesEmptySizes();
    void mayDieInItsSignals();
    void rulerAndFileSlider();
};

void tst_dayslider::looksLikeEveryTickDrawn()
{
    QRandomGenerator random = SeededGenerator();
    for (int i = 0; i < 21; ++i) {
        const int width = QVector<int>{800, 333, 1021}.at(i / 7);
        const int ratio = QVector<int>{1, 2, 4, 6, 8, 16, 200}.at(i % 7);
        Scene scene(width);
        scene.line->hide();
        scene.thumb->hide();
        scene.Wheel(ratio - 1, width / 3);
        QCOMPARE(scene.slider->width(), width * ratio);
        for (int clips = 0; clips < 20; ++clips) {
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

void tst_dayslider::labelsAreUprightAndNotBold()
{
    QImage images[2];
    for (int i : {0, 1}) {
        Scene scene;
        scene.day->setStyleSheet(i == 0 ? "font-size: 12px" : "font: italic bold 12px");
        scene.day->grab();
        images[i] = scene.slider->grab().toImage();
    }
    QCOMPARE(images[0], images[1]);
}

void tst_dayslider::startsEmptyAtTheLeftEnd()
{
    Scene scene;
    QCOMPARE(scene.Time(), QString("0 0 0 23 59 59"));
    QCOMPARE(scene.thumb->pos(), QPoint(-10, 35));
    QCOMPARE(scene.line->geometry(), QRect(0, 22, 800, 13));
    QCOMPARE(scene.line->grab().toImage().pixel(799, 12), qRgb(128, 128, 128));
    QVector<unsigned int> table(CPlaybackSliderWidget::DaySeconds, 0x00123456u);
    scene.day->SetTimerPeriod(table.constData());
    table.fill(0);
    scene.day->SetTimerPeriod(nullptr);
    QCOMPARE(scene.line->grab().toImage().pixel(400, 6), qRgb(0x12, 0x34, 0x56));
    scene.thumb->move(123, 20);
    scene.day->grab();
    QCOMPARE(scene.thumb->pos(), QPoint(123, 20));
}

void tst_dayslider::takesATime()
{
    struct
    {
        short hour, minute, second;
        const char* time;
        int x;
    } const rows[] = {
        {12, 0, 0, "12 0 0", 390},   {11, 59, 167, "12 1 47", 390}, {23, 59, 59, "23 59 59", 789},
        {24, 0, 0, "23 59 59", 790}, {24, 0, 1, "6 0 0", 190},      {-1, 0, 0, "-1 0 0", -43},
    };
    for (const auto& row : rows) {
        Scene scene;
        scene.day->SetTimerSliderPose(6, 0, 0);
        scene.day->SetTimerSliderPose(row.hour, row.minute, row.second);
        QCOMPARE(scene.Time(), QString(row.time) + " 23 59 59");
        QCOMPARE(scene.thumb->pos(), QPoint(row.x, 35));
        scene.day->SetTimerSliderPose(SHRT_MIN, SHRT_MIN, SHRT_MIN);
        QCOMPARE(scene.log.Take(), QStringList());
    }
}

void tst_dayslider::thumbIsCutToItsPicture()
{
    Scene scene;
    scene.day->SetTimerSliderPose(12, 0, 0);
    QCOMPARE(scene.thumb->geometry(), QRect(390, 35, 20, 14));
    QCOMPARE(scene.slider->childAt(391, 36), nullptr);
    QCOMPARE(scene.slider->childAt(393, 38), scene.thumb);
    const QImage image = scene.slider->grab().toImage();
    QVERIFY(image.pixelColor(400, 42) == QColor(Qt::red) && image.pixelColor(390, 35) != QColor(Qt::red));
}

void tst_dayslider::dragSeeksAtTheRelease()
{
    Scene scene;
    QStringList times;
    scene.log.onSignal = [&](const QString&) { times.append(scene.Time().section(' ', 0, 2)); };
    Mouse::Drag(scene.thumb, QPoint(10, 7), {QPoint(60, 40), QPoint(112, 7)});
    QCOMPARE(scene.log.Take(), QStringList({"scale sig_SliderMoved(5400)", "scale sig_SliderMoved(16416)",
                                            "sig_SliderMoved()", "scale sig_SliderReleased(16416)"}));
    QCOMPARE(times.at(0), QString("1 30 0"));
    QCOMPARE(times.at(2), QString("4 33 36"));
    QCOMPARE(scene.thumb->pos(), QPoint(142, 35));
}

void tst_dayslider::thumbStaysInTheDay()
{
    const std::tuple<int, int, int, const char*> rows[] = {{20, 3000, 790, "23 59 59"},
                                                           {21, 3000, 789, "23 59 59"},
                                                           {20, -3000, -10, "0 0 0"},
                                                           {21, -3000, -10, "0 0 0"}};
    for (const auto& [thumbWidth, by, x, time] : rows) {
        Scene scene(800, thumbWidth);
        scene.day->SetTimerSliderPose(12, 0, 0);
        scene.DragThumb(by);
        QCOMPARE(scene.thumb->pos(), QPoint(x, 35));
        QCOMPARE(scene.Time(), QString(time) + " 23 59 59");
    }
}

void tst_dayslider::releaseTellsTheLastDrag()
{
    Scene scene;
    scene.day->SetTimerSliderPose(12, 0, 0);
    Mouse::Click(scene.thumb, QPoint(10, 7));
    QCOMPARE(scene.log.Take(), QStringList({"sig_SliderMoved()", "scale sig_SliderReleased(1080)"}));
    QCOMPARE(scene.thumb->pos(), QPoint(0, 35));
    scene.DragThumb(40);
    scene.day->SetTimerSliderPose(12, 0, 0);
    scene.log.Take();
    Mouse::Click(scene.thumb, QPoint(10, 7));
    QCOMPARE(scene.thumb->pos(), QPoint(40, 35));
}

void tst_dayslider::otherButtonsLeaveTheThumb()
{
    Scene scene;
    for (Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        Mouse::Drag(scene.thumb, QPoint(9, 6), {QPoint(30, 6)}, button);
        QCOMPARE(scene.log.Take(), QStringList());
        QCOMPARE(scene.thumb->pos(), QPoint(-10, 35));
    }
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

void tst_dayslider::thumbIsLetGoWhenTheMouseIsTakenAway()
{
    for (int way : {0, 1, 2, 3, 4, 5}) {
        Scene scene;
        QWidget other;
        other.show();
        QDialog dialog(&other);
        dialog.setWindowModality(Qt::WindowModal);
        QMenu menu;
        Mouse::Press(scene.thumb, QPoint(10, 7));
        QEvent blocked(QEvent::WindowBlocked);
        if (way == 0)
            scene.day->setEnabled(false);
        else if (way == 1)
            QCoreApplication::sendEvent(scene.day.data(), &blocked);
        else if (way < 4)
            (way == 2 ? scene.day.data() : static_cast<QWidget*>(scene.slider))->hide();
        else
            (way == 4 ? static_cast<QWidget*>(&menu) : &dialog)->show();
        QCoreApplication::processEvents();
        scene.day->SetTimerSliderPose(12, 0, 0);
        // A thumb that hides in a window on screen is still held.
        QCOMPARE(scene.thumb->x(), way == 3 ? -10 : 390);
        QCOMPARE(scene.log.Take(), QStringList());
    }
}

void tst_dayslider::doubleClickSeeksOnce()
{
    Scene scene;
    scene.Wheel(3);
    Mouse::DoubleClick(scene.line, QPoint(1600, 3), Qt::RightButton);
    QCOMPARE(scene.log.Take(), QStringList());
    QString atSignal;
    scene.log.onSignal = [&](const QString&) { atSignal = scene.Time(); };
    Mouse::DoubleClick(scene.line, QPoint(1600, 3));
    QCOMPARE(scene.log.Take(), QStringList({"scale sig_SliderMoved(43200)", "sig_SliderDbClicked()",
                                            "scale sig_MouseDbCLick(43200)"}));
    QCOMPARE(atSignal, QString("12 0 0 23 59 59"));
    QCOMPARE(scene.thumb->pos(), QPoint(1590, 35));
}

void tst_dayslider::looksTheSameRightToLeft()
{
    QImage images[2];
    for (Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QApplication::setLayoutDirection(direction);
        Scene scene;
        scene.day->SetTimerSliderPose(5, 0, 0);
        scene.Wheel(4, 300);
        images[direction] = scene.day->grab().toImage();
    }
    QApplication::setLayoutDirection(Qt::LeftToRight);
    QCOMPARE(images[1], images[0]);
}

void tst_dayslider::survivesEmptySizes()
{
    Scene scene(1, 0);
    QCOMPARE(scene.thumb->size(), QSize(0, 0));
    for (int total : {0, -1, 1, 86400}) {
        scene.slider->InitRange(total, total % 2);
        for (const QSize& size : {QSize(0, 0), QSize(0, 50), QSize(1, 1), QSize(QWIDGETSIZE_MAX, 50)}) {
            scene.slider->parentWidget()->resize(size);
            scene.slider->resize(size);
            for (int delta : {1, 120, -120, INT_MAX, -INT_MAX})
                Mouse::Wheel(scene.slider, QPoint(0, 5), delta);
            scene.slider->grab(QRect(0, 0, 60, 50));
            scene.slider->slot_SetCurNum(INT_MIN);
            scene.slider->slot_BtnMoved(INT_MAX, 0);
            scene.slider->slot_MouseDbClice(INT_MIN);
            Mouse::Drag(scene.slider, QPoint(0, 8), {QPoint(5, 8), QPoint(-5, 8)});
        }
    }
    QVERIFY(scene.slider->width() <= QWIDGETSIZE_MAX);
}

void tst_dayslider::mayDieInItsSignals()
{
    for (const char* dying : {"scale sig_SliderMoved", "scale sig_SliderReleased", "scale sig_MouseDbCLick",
                              "sig_SliderMoved", "sig_SliderDbClicked"}) {
        Scene scene;
        scene.log.onSignal = [&](const QString& entry) {
            if (entry.startsWith(dying))
                scene.day.reset();
        };
        scene.DragThumb(200);
        if (scene.day)
            Mouse::DoubleClick(scene.line, QPoint(300, 3));
        QVERIFY2(!scene.day, dying);
    }
}

void tst_dayslider::rulerAndFileSlider()
{
    CLinSliderWidget view(nullptr);
    view.SetRange(INT_MIN, INT_MAX);
    view.SetRange(0, 1000);
    view.setStyleSheet("CLinSliderWidget{background:white}");
    view.show();
    auto* slider = view.findChild<QSlider*>();
    constexpr int end = 816;
    // What is left over of 20 steps is left out.
    for (const auto& [width, right] : {std::pair(5, -4), {40, 16}, {832, end}, {850, end}}) {
        view.resize(width, 50);
        view.grab();
        QCOMPARE(slider->geometry(), QRect(16, 15, qMax(0, right - 16), slider->height()));
    }
    SignalLog log;
    log.WatchAll(&view);
    Mouse::Drag(slider, QPoint(4, slider->height() / 2), {QPoint(404, 7)});
    QCOMPARE(log.Take(), QStringList({"sliderPressed()", "sliderReleased()"}));
    QVERIFY(qAbs(view.Value() - 500) < 20);
    slider->hide();
    const QImage image = view.grab().toImage();
    const auto dark = [&](int x, int y) { return qGray(image.pixel(x, y)) < 40; };
    QVERIFY(dark(16, 15) && dark(end, 15) && !dark(15, 15) && !dark(end + 1, 15));
    QVERIFY(dark(16, 5) && dark(56, 10) && !dark(56, 9) && dark(end, 5));
}

QTEST_MAIN(tst_dayslider)

#include "tst_dayslider.moc"
