#include "decode/FramePool.h"
#include "source/SourceThread.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "synthetic/CameraSource.h"
#include "synthetic/PtzMotion.h"
#include "synthetic/SceneComposer.h"
#include "synthetic/SyntheticCamera.h"

#include <cstring>
#include <random>

namespace {

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

class tst_synthetic : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void camerasDiffer();
    void redrawsOnlyWhatMoved();
    void turns_data();
    void turns();
    void turnsSteadily();
    void staysInsideThePicture();
    void turningMovesThePicture();
};

void tst_synthetic::cleanup()
{
    QVERIFY(waitForSourceThreads(PatienceMs));
    DeckTestCase::cleanup();
}

void tst_synthetic::camerasDiffer()
{
    std::vector<std::unique_ptr<VideoSource>> sources;
    for (const int number : {1, 2, 17, 33, 65}) {
        sources.push_back(makeCameraSource(SourceAddress::synthetic(number, "Same name"), strip));
        sources.back()->start();
    }
    QSet<QByteArray> pictures;
    for (const auto& source : sources) {
        QTRY_COMPARE(source->state(), SourceState::Playing);
        QTRY_VERIFY(source->frame());
        const FramePtr frame = source->frame();
        QCOMPARE(frame->size(), QSize(704, 576));
        const QImage below = frame->image().copy(0, 40, frame->width, frame->height - 40);
        pictures.insert(
            QByteArray(reinterpret_cast<const char*>(below.constBits()), int(below.sizeInBytes())));
        // The picture goes on moving, if only by its clock.
        QTRY_VERIFY(source->frame()->image() != frame->image());
    }
    QCOMPARE(pictures.size(), int(sources.size()));
}

void tst_synthetic::redrawsOnlyWhatMoved()
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
    for (int i = 0; i < 200; ++i) {
        ms += 40 + random() % 400;
        if (random() % 10 == 0)
            window = QRectF(random() % 352, random() % 288, 176 + random() % 528, 144 + random() % 432);
        const std::shared_ptr<Frame> frame = pool.take(704, 576);
        composer.compose(*frame, ms, window);
        const std::shared_ptr<Frame> fresh = FramePool().take(704, 576);
        plain.compose(*fresh, ms, window);
        QVERIFY(std::memcmp(frame->pixels(), fresh->pixels(), size_t(frame->rowBytes()) * 576) == 0);
        inHands.push_back(frame);
        if (inHands.size() > 1 + random() % 3)
            inHands.erase(inHands.begin());
    }
}

void tst_synthetic::turns_data()
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

void tst_synthetic::turns()
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

void tst_synthetic::turnsSteadily()
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

void tst_synthetic::staysInsideThePicture()
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

void tst_synthetic::turningMovesThePicture()
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

int main(int argc, char** argv)
{
    return RunTests<tst_synthetic, QCoreApplication>(argc, argv);
}

#include "tst_synthetic.moc"
