#include "decode/FrameConverter.h"
#include "decode/MotionDetector.h"
#include "packets/FFmpeg.h"
#include "panes/FramePump.h"
#include "panes/QMyLabel.h"
#include "source/Pacer.h"
#include "source/SourceThread.h"
#include "source/VideoSource.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "synthetic/PtzMotion.h"
#include "synthetic/SceneComposer.h"
#include "synthetic/SyntheticCamera.h"

#include <cmath>
#include <cstring>
#include <random>

namespace {

using namespace std::chrono_literals;

/// Takes frames as a pane's label does, opaque while it has one, and reads all their pixels at each paint.
class TestLabel : public QWidget
{
    Q_OBJECT

public:
    QStringList log;
    int paints = 0;
    int sum = 0;
    quintptr address = 0;

public Q_SLOTS:
    void slot_BufferChange(ulong buffer, int width, int height)
    {
        address = buffer;
        m_size = {width, height};
        setAttribute(Qt::WA_OpaquePaintEvent, buffer != 0);
        log.append(QString("buffer %1x%2").arg(width).arg(height));
        update();
    }

Q_SIGNALS:
    void sig_VideoResize(int width, int height);

protected:
    void paintEvent(QPaintEvent*) override
    {
        ++paints;
        const auto* pixels = reinterpret_cast<const uchar*>(address);
        for (int i = 0; pixels && i < Frame::rowBytes(m_size.width()) * m_size.height(); ++i)
            sum += pixels[i];
    }

private:
    QSize m_size;
};

std::shared_ptr<Frame> plainFrame(QSize size, int grey, qint64 wallMs = 0)
{
    FramePool pool;
    const std::shared_ptr<Frame> frame = pool.take(size.width(), size.height());
    std::memset(frame->row(0), grey, size_t(frame->rowBytes()) * size_t(size.height()));
    frame->wallMs = wallMs;
    return frame;
}

/// A strip that is another one each second.
QImage strip(const QString& name, const QString& time)
{
    QImage strip(300 + name.size(), 31, QImage::Format_RGB888);
    strip.fill(QColor::fromHsv(time.right(2).toInt() * 5, 255, 200));
    return strip;
}

double changedShare(const FramePtr& one, const FramePtr& two)
{
    int changed = 0;
    for (int y = 0; y < one->height; ++y) {
        for (int x = 0; x < one->width; ++x)
            changed += one->image().pixel(x, y) != two->image().pixel(x, y);
    }
    return double(changed) / (one->width * one->height);
}

} // namespace

class tst_video_frames : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void pumpKeepsTheFrame();
    void pumpPaintsWhileUpdatesAreOff();
    void pumpFeedsTheDecksLabel();
    void pumpOutlivesItsLabel();
    void pumpGoesInTheLabelsSignal();
    void convertsToPaddedRows_data();
    void convertsToPaddedRows();
    void refusesHugeFrames();
    void redrawsOnlyWhatMoved();
    void turns_data();
    void turns();
    void turnsSteadily();
    void staysInsideThePicture();
    void turningMovesThePicture();
    void seesMotion_data();
    void seesMotion();
    void paces();
};

void tst_video_frames::cleanup()
{
    QVERIFY(waitForSourceThreads(1000));
    DeckTestCase::cleanup();
}

void tst_video_frames::pumpKeepsTheFrame()
{
    TestLabel label;
    connect(&label, &TestLabel::sig_VideoResize, this,
            [&](int width, int height) { label.log.append(QString("resize %1x%2").arg(width).arg(height)); });
    FramePump pump(&label);
    std::shared_ptr<Frame> first = plainFrame({64, 48}, 10);
    const std::weak_ptr<Frame> held = first;
    pump.show(std::move(first));
    QVERIFY(!held.expired());
    QCOMPARE(label.address, quintptr(held.lock()->pixels()));
    pump.show(plainFrame({64, 48}, 20));
    QVERIFY(held.expired());
    pump.repeat();
    pump.show(plainFrame({33, 48}, 30));
    pump.clear();
    QCOMPARE(label.address, quintptr(0));
    pump.repeat();
    pump.show(plainFrame({33, 48}, 30));
    pump.show(nullptr);
    QCOMPARE(label.log,
             QStringList({"resize 64x48", "buffer 64x48", "buffer 64x48", "buffer 64x48", "resize 33x48",
                          "buffer 33x48", "buffer 0x0", "resize 33x48", "buffer 33x48", "buffer 0x0"}));
}

void tst_video_frames::pumpPaintsWhileUpdatesAreOff()
{
    QWidget window;
    TestLabel label;
    label.setParent(&window);
    label.resize(100, 100);
    window.resize(100, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTRY_VERIFY(label.paints > 0);
    label.setUpdatesEnabled(false);

    SyntheticCamera source(SourceAddress::synthetic(1));
    {
        FramePump pump(&label);
        pump.setSource(&source);
        source.start();
        QTRY_VERIFY(pump.frame() != nullptr);
        const int paints = label.paints;
        QTRY_VERIFY(label.paints > paints + 3);
        QVERIFY(!label.updatesEnabled());
        QCOMPARE(label.address, quintptr(pump.frame()->pixels()));

        pump.setSource(nullptr);
        QCoreApplication::processEvents();
        const int still = label.paints;
        label.update();
        QCoreApplication::processEvents();
        QCOMPARE(label.paints, still);
        pump.repeat();
        QTRY_COMPARE(label.paints, still + 1);
        QVERIFY(label.sum != 0);
    }
    QCOMPARE(label.address, quintptr(0));
    label.setUpdatesEnabled(true);
    FramePump pump(&label);
    pump.show(plainFrame({8, 8}, 1));
    QVERIFY(label.updatesEnabled());
}

void tst_video_frames::pumpFeedsTheDecksLabel()
{
    QWidget parent;
    QMyLabel label(&parent);
    label.resize(20, 20);
    QSignalSpy resized(&label, SIGNAL(sig_VideoResize(int,int)));
    FramePump pump(&label);
    label.setUpdatesEnabled(false);
    pump.show(plainFrame({32, 24}, 77));
    QCOMPARE(resized.takeFirst(), QVariantList({32, 24}));
    QVERIFY(!label.updatesEnabled());
    QCOMPARE(label.grab().toImage().pixelColor(10, 10), QColor(77, 77, 77));
    pump.clear();
    QVERIFY(label.grab().toImage().pixelColor(10, 10) != QColor(77, 77, 77));
}

void tst_video_frames::pumpOutlivesItsLabel()
{
    SyntheticCamera source(SourceAddress::synthetic(1));
    auto label = std::make_unique<TestLabel>();
    FramePump pump(label.get());
    pump.setSource(&source);
    source.start();
    QTRY_VERIFY(label->address != 0);
    label.reset();
    const FramePtr last = pump.frame();
    QTRY_VERIFY(pump.frame() != last);
    pump.repeat();
    pump.clear();

    FramePump nobody(nullptr);
    nobody.show(plainFrame({8, 8}, 1));
}

void tst_video_frames::pumpGoesInTheLabelsSignal()
{
    auto* label = new TestLabel;
    auto* pump = new FramePump(label);
    connect(label, &TestLabel::sig_VideoResize, this, [=] { delete pump; });
    pump->show(plainFrame({8, 8}, 1));
    QCOMPARE(label->address, quintptr(0));
    auto* second = new FramePump(label);
    label->disconnect(this);
    connect(label, &TestLabel::sig_VideoResize, this, [=] { delete label; });
    second->show(plainFrame({8, 8}, 1));
    delete second;
}

void tst_video_frames::convertsToPaddedRows_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("format");
    for (const int width : {2, 3, 5, 17, 33, 62, 350, 703, 704}) {
        QTest::addRow("YUV, %d wide", width) << width << int(AV_PIX_FMT_YUV420P);
        QTest::addRow("full range, %d wide", width) << width << int(AV_PIX_FMT_YUVJ422P);
        QTest::addRow("grey, %d wide", width) << width << int(AV_PIX_FMT_GRAY8);
    }
}

/// Against a conversion into rows that have room to spare.
void tst_video_frames::convertsToPaddedRows()
{
    QFETCH(int, width);
    QFETCH(int, format);
    const int height = 7;
    const AvFrame picture(av_frame_alloc());
    picture->width = width;
    picture->height = height;
    picture->format = format;
    QVERIFY(av_frame_get_buffer(picture.get(), 0) >= 0);
    std::minstd_rand random(7);
    for (int plane = 0; plane < 3 && picture->data[plane]; ++plane) {
        for (int i = 0; i < picture->linesize[plane] * (plane == 0 ? height : (height + 1) / 2); ++i)
            picture->data[plane][i] = uchar(random());
    }
    FrameConverter converter;
    const std::shared_ptr<Frame> frame = converter.convert(*picture);
    QVERIFY(frame);
    QCOMPARE(frame->rowBytes() % 4, 0);
    QVERIFY(frame->rowBytes() - width * 3 < 4);
    QCOMPARE(frame->image().size(), QSize(width, height));

    picture->width = width;
    const int wide = (width * 3 + 255) & ~63;
    std::vector<uchar> expected(size_t(wide) * height + 256);
    const AvScaler scaler(sws_getContext(width, height, AVPixelFormat(format), width, height,
                                         AV_PIX_FMT_RGB24, SWS_FAST_BILINEAR, nullptr, nullptr, nullptr));
    uchar* rows[] = {expected.data(), nullptr, nullptr, nullptr};
    const int strides[] = {wide, 0, 0, 0};
    sws_scale(scaler.get(), picture->data, picture->linesize, 0, height, rows, strides);
    for (int y = 0; y < height; ++y)
        QVERIFY(std::memcmp(frame->row(y), rows[0] + y * wide, size_t(width) * 3) == 0);
}

void tst_video_frames::refusesHugeFrames()
{
    FramePool pool;
    QVERIFY(!pool.take(0, 10));
    QVERIFY(!pool.take(10, -1));
    QVERIFY(!pool.take(40000, 2));
    QVERIFY(pool.take(1, 1));
}

void tst_video_frames::redrawsOnlyWhatMoved()
{
    QString error;
    const auto art = SceneArt::scene(0, &error);
    QVERIFY2(art, qPrintable(error));
    SceneComposer composer(17, Caption("Gate", strip), art);
    SceneComposer plain(17, Caption("Gate", strip), art);
    FramePool pool;
    std::vector<FramePtr> inHands;
    QRectF window(176, 144, 704, 576);
    std::minstd_rand random(3);
    qint64 ms = 1'700'000'000'000;
    for (int i = 0; i < 60; ++i) {
        ms += 40 + random() % 400;
        if (random() % 6 == 0)
            window = QRectF(random() % 352, random() % 288, 176 + random() % 528, 144 + random() % 432);
        const std::shared_ptr<Frame> frame = pool.take(704, 576);
        composer.compose(*frame, ms, window);
        const std::shared_ptr<Frame> fresh = plainFrame({704, 576}, 99);
        plain.compose(*fresh, ms, window);
        QVERIFY(std::memcmp(frame->pixels(), fresh->pixels(), size_t(frame->rowBytes()) * 576) == 0);
        inHands.push_back(frame);
        if (inHands.size() > 1 + random() % 3)
            inHands.erase(inHands.begin());
    }
}

void tst_video_frames::turns_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<QPoint>("direction");
    QTest::addColumn<int>("growth");
    QTest::newRow("up") << 1 << QPoint(0, -1) << 0;
    QTest::newRow("down") << 2 << QPoint(0, 1) << 0;
    QTest::newRow("left") << 3 << QPoint(-1, 0) << 0;
    QTest::newRow("right") << 4 << QPoint(1, 0) << 0;
    QTest::newRow("left-up") << 5 << QPoint(-1, -1) << 0;
    QTest::newRow("left-down") << 6 << QPoint(-1, 1) << 0;
    QTest::newRow("right-up") << 7 << QPoint(1, -1) << 0;
    QTest::newRow("right-down") << 8 << QPoint(1, 1) << 0;
    QTest::newRow("closer") << 9 << QPoint() << -1;
    QTest::newRow("wider") << 10 << QPoint() << 1;
    QTest::newRow("unknown") << 11 << QPoint() << 0;
    QTest::newRow("below 0") << -1 << QPoint() << 0;
}

void tst_video_frames::turns()
{
    QFETCH(int, command);
    QFETCH(QPoint, direction);
    QFETCH(int, growth);
    const auto sign = [](double value) { return value > 0.001 ? 1 : value < -0.001 ? -1 : 0; };
    PtzMotion motion({1056, 864}, {704, 576});
    const QRectF home = motion.view(1000);
    QCOMPARE(home, QRectF(176, 144, 704, 576));
    motion.command(command, true, 1000);
    const QRectF there = motion.view(1300);
    const QPointF moved = there.center() - home.center();
    QCOMPARE(QPoint(sign(moved.x()), sign(moved.y())), direction);
    QCOMPARE(sign(there.width() - home.width()), growth);
    motion.command(command, false, 1300);
    QCOMPARE(motion.view(9000), there);
    motion.command(0, true, 9000);
    QCOMPARE(motion.view(9000), home);
}

void tst_video_frames::turnsSteadily()
{
    PtzMotion once({1056, 864}, {704, 576});
    PtzMotion often = once;
    for (PtzMotion* motion : {&once, &often}) {
        motion->command(3, true, 0);
        motion->command(9, true, 0);
        motion->command(3, false, 0);
        motion->command(7, true, 0);
    }
    for (int ms = 0; ms <= 400; ms += 10)
        often.view(ms);
    QVERIFY(qAbs(once.view(400).width() - often.view(400).width()) < 0.001);
    once.command(9, false, 400);
    often.command(9, false, 400);
    const QPointF first = once.view(400).center();
    const QPointF second = once.view(500).center();
    const QPointF third = once.view(700).center();
    QVERIFY(qAbs((third - second).x() - 2 * (second - first).x()) < 0.001);
    // A clock that goes back moves nothing.
    QCOMPARE(once.view(300).center(), third);
}

void tst_video_frames::staysInsideThePicture()
{
    PtzMotion motion({1056, 864}, {704, 576});
    std::minstd_rand random(11);
    qint64 ms = 0;
    for (int i = 0; i < 2000; ++i) {
        motion.command(int(random() % 11), random() % 3 > 0, ms);
        ms += random() % 3000;
        const QRectF view = motion.view(ms);
        QVERIFY(QRectF(-0.001, -0.001, 1056.002, 864.002).contains(view));
        QVERIFY(view.width() >= 176 && qAbs(view.width() * 576 - view.height() * 704) < 1);
    }
}

void tst_video_frames::turningMovesThePicture()
{
    SyntheticCamera source(SourceAddress::synthetic(8));
    source.start();
    QTRY_VERIFY(source.frame());
    const FramePtr before = source.frame();
    source.ptz(4, true);
    QTRY_VERIFY(source.frame() != before && changedShare(before, source.frame()) > 0.3);
    source.ptz(4, false);
    // The first picture that comes now may have been drawn before.
    FramePtr stopped;
    for (int i = 0; i < 2; ++i) {
        const FramePtr old = source.frame();
        QTRY_VERIFY(source.frame() != old);
        stopped = source.frame();
    }
    QTRY_VERIFY(source.frame() != stopped);
    QVERIFY(changedShare(stopped, source.frame()) < 0.1);
    QVERIFY(changedShare(before, stopped) > 0.3);
    source.ptz(0, true);
    QTRY_VERIFY(changedShare(before, source.frame()) < 0.15);
}

void tst_video_frames::seesMotion_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<int>("speed");
    QTest::addColumn<int>("contrast");
    QTest::addColumn<bool>("moves");
    QTest::newRow("nothing") << 0 << 0 << 0 << false;
    QTest::newRow("something that stands") << 80 << 0 << 100 << false;
    QTest::newRow("something that walks") << 80 << 20 << 100 << true;
    QTest::newRow("something small") << 12 << 20 << 100 << false;
    QTest::newRow("something faint") << 80 << 20 << 12 << false;
    QTest::newRow("something darker") << 80 << 20 << -60 << true;
}

void tst_video_frames::seesMotion()
{
    QFETCH(int, side);
    QFETCH(int, speed);
    QFETCH(int, contrast);
    QFETCH(bool, moves);
    MotionDetector detector;
    int x = 10;
    int firstLook = -1;
    const auto look = [&](int i) {
        const std::shared_ptr<Frame> frame = plainFrame({704, 576}, 100, 1'000'000 + i * 200);
        for (int y = 0; y < side; ++y)
            std::memset(frame->row(100 + y) + 3 * x, 100 + contrast, size_t(side) * 3);
        return detector.look(*frame);
    };
    for (int i = 0; i < 25; ++i) {
        if (look(i) && firstLook < 0)
            firstLook = i;
        x += speed;
    }
    QCOMPARE(firstLook >= 0, moves);
    QVERIFY(!moves || (firstLook >= 2 && firstLook <= 5));
    // It has come to rest: the background takes it in, and two quiet seconds later all is over.
    QCOMPARE(look(25), moves);
    QCOMPARE(look(26), moves);
    int i = 27;
    while (look(i) && i < 100)
        ++i;
    QVERIFY(!moves || i >= 36);
    QVERIFY(i < 70);
}

void tst_video_frames::paces()
{
    Pacer pacer;
    const Pacer::Clock::time_point now(1000010ms);
    const Pacer::Clock::time_point start(1000040ms);
    QVERIFY(pacer.due(5'000'000, now) == start);
    QVERIFY(pacer.due(5'040'000, now) == start + 40ms);
    QVERIFY(pacer.due(5'080'000, start + 300ms) == start + 80ms);
    QVERIFY(pacer.due(5'120'000, start + 1001ms) == start + 1040ms);
    QVERIFY(pacer.due(5'160'000, start + 1001ms) == start + 1080ms);
    QVERIFY(pacer.due(0, start + 1100ms) == start + 1120ms);
    QVERIFY(pacer.due(20'000'000, start + 1120ms) == start + 1120ms);
}

int main(int argc, char** argv)
{
    return RunTests<tst_video_frames>(argc, argv);
}

#include "tst_video_frames.moc"
