#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "deck/CPaneDeck.h"
#include "decode/FrameConverter.h"
#include "engine/TestVideo.h"
#include "packets/FFmpeg.h"
#include "panes/DeckStreams.h"
#include "panes/PaneSnapshots.h"
#include "panes/PaneStrip.h"
#include "panes/PaneZoom.h"
#include "panes/PartMaker.h"
#include "source/SourceThread.h"
#include "support/DeckTestCase.h"
#include "support/Mouse.h"
#include "support/PaintCounter.h"
#include "support/RunTests.h"

#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cmath>
#include <limits>

class tst_zoom : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void zoomsAtThePoint_data();
    void zoomsAtThePoint();
    void takesNoPartThatIsNone_data();
    void takesNoPartThatIsNone();
    void staysInThePicture();
    void showsThePicturesOwnPixels();
    void ownsTheMouseWhileItIsOn();
    void stripFitsAndIsLeftAlone();
    void savesTheMainStream();
};

void tst_zoom::cleanup()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(waitForSourceThreads(PatienceMs));
    DeckTestCase::cleanup();
}

void tst_zoom::zoomsAtThePoint_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QPointF>("corner");
    QTest::newRow("centre") << QPointF(0.5, 0.5) << QPointF(0.25, 0.25);
    QTest::newRow("upper left") << QPointF(0, 0) << QPointF(0, 0);
    QTest::newRow("lower right") << QPointF(1, 1) << QPointF(0.5, 0.5);
    QTest::newRow("beside the picture") << QPointF(-3, 7) << QPointF(0, 0.5);
}

void tst_zoom::zoomsAtThePoint()
{
    QFETCH(QPointF, point);
    ZoomView view;
    view.zoom(point, 2);
    QTEST(view.part().topLeft(), "corner");
    QCOMPARE(view.pixels({1920, 1080}).size(), QSize(960, 540));
    view.zoom(point, 0.5);
    QVERIFY(view.isWhole());
    QCOMPARE(view.pixels({1920, 1080}), QRect(0, 0, 1920, 1080));
}

void tst_zoom::takesNoPartThatIsNone_data()
{
    constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double Inf = std::numeric_limits<double>::infinity();
    QTest::addColumn<QPointF>("corner");
    QTest::addColumn<double>("factor");
    QTest::addColumn<QRectF>("part");
    const QRectF whole(0, 0, 1, 1);
    QTest::newRow("no number") << QPointF(Nan, 0) << 2.0 << whole;
    QTest::newRow("no factor") << QPointF(0, 0) << Nan << whole;
    QTest::newRow("endless") << QPointF(0, 0) << Inf << whole;
    QTest::newRow("negative") << QPointF(0, 0) << -3.0 << whole;
    QTest::newRow("larger than all") << QPointF(0.5, 0.5) << 0.1 << whole;
    QTest::newRow("outside") << QPointF(9, -9) << 2.0 << QRectF(0.5, 0, 0.5, 0.5);
    QTest::newRow("too near") << QPointF(0, 0) << 1e300 << QRectF(0, 0, 0.0625, 0.0625);
}

void tst_zoom::takesNoPartThatIsNone()
{
    QFETCH(QPointF, corner);
    QFETCH(double, factor);
    QTEST(ZoomView(corner, factor).part(), "part");
}

/// Whatever is done, the pixels are some and lie in the picture, be it as small as it can be.
void tst_zoom::staysInThePicture()
{
    for (const QSize picture : {QSize(1, 1), QSize(3, 2), QSize(17, 9), QSize(1920, 1080)}) {
        ZoomView view;
        for (int i = 0; i < 200; ++i) {
            view.zoom({(i % 7) / 6.0, (i % 5) / 4.0}, i % 3 ? 1.3 : 0.6);
            view.pan({(i % 11) - 5.0, std::sin(i)});
            const QRect pixels = view.pixels(picture);
            QVERIFY(!pixels.isEmpty());
            QVERIFY(QRect(QPoint(), picture).contains(pixels));
        }
    }
}

namespace {

/// Each quarter of a picture in a grey of its own, shown as a frame that is far smaller.
FramePtr quarters()
{
    const AvFrame picture(av_frame_alloc());
    picture->width = 640;
    picture->height = 480;
    picture->format = AV_PIX_FMT_GRAY8;
    if (av_frame_get_buffer(picture.get(), 0) < 0)
        return nullptr;
    for (int y = 0; y < 480; ++y) {
        for (int x = 0; x < 640; ++x)
            picture->data[0][y * picture->linesize[0] + x] = uchar(40 + 50 * (x / 320) + 100 * (y / 240));
    }
    return FrameConverter().convert(*picture, {8, 6});
}

} // namespace

void tst_zoom::showsThePicturesOwnPixels()
{
    PartMaker parts;
    QVector<FramePtr> made;
    connect(&parts, &PartMaker::made, this, [&](const FramePtr& part) { made.append(part); });
    const FramePtr frame = quarters();
    QVERIFY(frame);
    for (int quarter = 0; quarter < 4; ++quarter) {
        parts.make(frame, QRect(quarter % 2 * 320, quarter / 2 * 240, 320, 240), {100, 80});
        QTRY_COMPARE(made.count(), quarter + 1);
        const QImage part = made.last()->image();
        QCOMPARE(part.size(), QSize(100, 80));
        const int first = qRed(part.pixel(0, 0));
        QCOMPARE(qRed(part.pixel(99, 79)), first);
        QVERIFY(qAbs(first - (40 + 50 * (quarter % 2) + 100 * (quarter / 2))) < 30);
    }
    for (const QRect& none : {QRect(), QRect(600, 0, 100, 10), QRect(-2, 0, 10, 10)})
        QVERIFY(!PartConverter().convert(*frame, none, {10, 10}));
    QVERIFY(!PartConverter().convert(*frame, {0, 0, 10, 10}, QSize()));
}

void tst_zoom::ownsTheMouseWhileItIsOn()
{
    CameraList cameras;
    cameras.addSynthetic(1);
    CameraHub hub(cameras);
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 4);
    deck.resize(400, 340);
    DeckStreams streams(&deck, 4, &hub, nullptr);
    PaneZoom zoom(&deck, &streams);
    deck.SetShowWndNo(1);
    deck.show();
    streams.assign(0, cameras.at(0));
    deck.SetFunctionParam(0, 1);
    QWidget* pane = deck.PaneWidget(0);
    const QPoint at(300, 40);
    QSignalSpy ptz(&deck, &CPaneDeck::sig_SendPtzCommand);

    zoom.setOn(1, true); // has no camera
    QVERIFY(!zoom.isOn(1) && !deck.btncheck(1, BTN_ZOOM));
    Mouse::Press(pane, at);
    QCOMPARE(ptz.count(), 1);
    zoom.setOn(0, true);
    Mouse::Release(pane, at);
    QCOMPARE(ptz.count(), 2); // a camera that turns when the zoom comes is stopped

    zoom.setView(0, ZoomView({0.25, 0.25}, 2));
    Mouse::Drag(pane, at, {at - QPoint(pane->width() / 2, 0)});
    QCOMPARE(zoom.view(0).part(), QRectF(0.5, 0.25, 0.5, 0.5));
    Mouse::DoubleClick(pane, at);
    QVERIFY(zoom.view(0).isWhole() && zoom.isOn(0));
    Mouse::Wheel(pane, at, 240);
    QVERIFY(qFuzzyCompare(zoom.view(0).factor(), 1.5625));
    QCOMPARE(ptz.count(), 2);

    zoom.takeKeys();
    zoom.setView(0, ZoomView({0.25, 0.25}, 2));
    deck.SetActiveWnd(0);
    QTest::keyClick(&deck, Qt::Key_Plus);
    QTest::keyClick(&deck, Qt::Key_Minus);
    QTest::keyClick(&deck, Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(zoom.view(0).part(), QRectF(0.15, 0.25, 0.5, 0.5));

    zoom.setOn(0, false);
    Mouse::Click(pane, at);
    QCOMPARE(ptz.count(), 4);
    zoom.setView(0, ZoomView({0, 0}, 4));
    streams.clear(0);
    QVERIFY(!zoom.isOn(0) && zoom.view(0).isWhole());
}

/// It fits any picture, and new pictures go round it.
void tst_zoom::stripFitsAndIsLeftAlone()
{
    CPaneDeck deck(nullptr, WND_TYPE_ALARM, 4);
    deck.resize(160, 140);
    deck.SetShowWndNo(4);
    QWidget* picture = deck.PaneWidget(0);
    PaneStrip strip(picture);
    PaneLabel label;
    label.name = QString(300, 'W');
    label.state = "delayed";
    label.isRecorded = label.isHeard = true;
    strip.setLabel(label);
    deck.EnableRefresh(0, false);
    QImage frame(40, 30, QImage::Format_RGB32);
    frame.fill(Qt::red);
    deck.SetFrame(0, frame);
    deck.show();
    QVERIFY(QTest::qWaitForWindowExposed(&deck));
    QVERIFY(picture->geometry().contains(strip.geometry()));
    QCoreApplication::processEvents();
    PaintCounter paints;
    strip.installEventFilter(&paints);
    for (int i = 0; i < 5; ++i) {
        deck.SetFrame(0, frame);
        strip.setLabel(label);
        QCoreApplication::processEvents();
    }
    QCOMPARE(paints.paints, 0);
    deck.resize(600, 500);
    QCOMPARE(strip.geometry().bottomLeft(), picture->geometry().bottomLeft());
    strip.setLabel(PaneLabel());
    QVERIFY(!strip.isVisible());
}

/// Also of a pane that shows the small one.
void tst_zoom::savesTheMainStream()
{
    QStandardPaths::setTestModeEnabled(true);
    const QTemporaryDir directory;
    TestVideo::Recipe recipe;
    recipe.pictures = 100;
    for (const QSize size : {QSize(640, 480), QSize(64, 48)}) {
        recipe.size = size;
        QVERIFY(TestVideo::write(directory.filePath(QString::number(size.width())), recipe));
    }
    const QString url = "file://" + directory.path() + '/';
    const auto address = SourceAddress::parse("Door=" + url + "640|" + url + "64");
    QVERIFY(address);
    CameraList cameras;
    cameras.add(*address);
    CameraHub hub(cameras);
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 64);
    deck.resize(300, 300);
    DeckStreams streams(&deck, 64, &hub, nullptr);
    PaneSnapshots snapshots(&streams, &hub, &streams);
    QSignalSpy saved(&snapshots, &PaneSnapshots::saved);
    deck.SetShowWndNo(64);
    deck.show();
    snapshots.take(0); // nothing to save yet
    streams.assign(0, cameras.at(0));
    QTRY_VERIFY(streams.isShown(0));
    QVERIFY(streams.showsSmall(0));
    snapshots.take(0);
    QTRY_COMPARE(saved.count(), 1);
    const QString path = saved[0][0].toString();
    QCOMPARE(QImage(path).size(), QSize(640, 480));
    QVERIFY(path.contains("/Door-") && QFile::remove(path));
}

int main(int argc, char** argv)
{
    return RunTests<tst_zoom>(argc, argv);
}

#include "tst_zoom.moc"
