#include "engine/TestVideo.h"
#include "packets/PacketRing.h"
#include "source/RingPlayer.h"
#include "source/SourceThread.h"
#include "source/StreamRecorder.h"
#include "source/VideoSource.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "synthetic/SyntheticCamera.h"

namespace {

constexpr qint64 StartMs = 1'700'000'000'000;

/// True if `part` stands in `whole`, which is taken as going on from its end with its begin.
bool isPartOfLoop(const std::vector<PacketPtr>& part, const std::vector<PacketPtr>& whole)
{
    for (size_t start = 0; start < whole.size(); ++start) {
        size_t same = 0;
        while (same < part.size() &&
               TestVideo::data(part[same]) == TestVideo::data(whole[(start + same) % whole.size()]))
            ++same;
        if (same == part.size())
            return true;
    }
    return false;
}

bool isGrowing(const std::vector<PacketPtr>& packets)
{
    for (size_t i = 1; i < packets.size(); ++i) {
        if (packets[i]->packet->dts <= packets[i - 1]->packet->dts)
            return false;
    }
    return true;
}

} // namespace

class tst_recording : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void playsTheRing();
    void seeksInTheRing_data();
    void seeksInTheRing();
    void playsOverAChangeOfFormat();
    void emptyRing();
    void recordsBitForBit_data();
    void recordsBitForBit();
    void recordsASyntheticCamera();
    void recordsOverALoss();
    void endsWhenTheStreamChanges();
    void tellsOfAFullDisk();
    void tellsOfAnUnwritablePath();
    void leavesNoEmptyFile();

private:
    QString path(const QString& name) const { return m_directory->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_recording::init()
{
    DeckTestCase::init();
    m_directory = std::make_unique<QTemporaryDir>();
}

void tst_recording::cleanup()
{
    QVERIFY(waitForSourceThreads(PatienceMs));
    DeckTestCase::cleanup();
}

void tst_recording::playsTheRing()
{
    QVERIFY(TestVideo::write(path("a.mkv")));
    RingPlayer player(TestVideo::packets(path("a.mkv"), StartMs));
    QCOMPARE(player.position(), 0);
    player.start();
    QTRY_COMPARE(player.state(), SourceState::Ended);
    QCOMPARE(TestVideo::number(player.frame()->image()), 9);
    QCOMPARE(player.position(), 1000);
    QCOMPARE(player.positionMs(), StartMs + 9 * TestVideo::StepMs);
    player.seek(500);
    QTRY_COMPARE(player.state(), SourceState::Playing);
    QTRY_COMPARE(player.state(), SourceState::Ended);
}

void tst_recording::seeksInTheRing_data()
{
    QTest::addColumn<int>("codec");
    QTest::addColumn<int>("keyDistance");
    QTest::addColumn<int>("reordered");
    QTest::newRow("key frames only") << int(AV_CODEC_ID_MJPEG) << 1 << 0;
    QTest::newRow("groups of five") << int(AV_CODEC_ID_MPEG4) << 5 << 0;
    QTest::newRow("out of order") << int(AV_CODEC_ID_MPEG4) << 8 << 2;
}

void tst_recording::seeksInTheRing()
{
    QFETCH(int, codec);
    QFETCH(int, keyDistance);
    QFETCH(int, reordered);
    QVERIFY(TestVideo::write(path("a.mkv"), {21, {64, 48}, AVCodecID(codec), keyDistance, reordered}));
    RingPlayer player(TestVideo::packets(path("a.mkv"), StartMs));
    player.setPaused(true);
    player.start();
    for (const int number : {20, 0, 7, 6, 19, 5, 12, 20}) {
        player.seek(number * 50);
        QTRY_VERIFY(player.frame() && TestVideo::number(player.frame()->image()) == number);
        QCOMPARE(player.position(), number * 50);
        QCOMPARE(player.positionMs(), StartMs + number * TestVideo::StepMs);
    }
    player.seek(-5);
    QTRY_COMPARE(player.position(), 0);
    player.seek(5000);
    QTRY_COMPARE(player.position(), 1000);
    // Between two pictures the next one is shown.
    player.seek(488);
    QTRY_COMPARE(TestVideo::number(player.frame()->image()), 10);
}

void tst_recording::playsOverAChangeOfFormat()
{
    QVERIFY(TestVideo::write(path("a.mkv"), {5, {64, 48}, AV_CODEC_ID_MPEG4, 5, 0}));
    QVERIFY(TestVideo::write(path("b.mkv"), {12, {32, 24}, AV_CODEC_ID_MJPEG, 1, 0}));
    std::vector<PacketPtr> packets = TestVideo::packets(path("a.mkv"), StartMs);
    // The second stream begins a little later.
    for (const PacketPtr& packet : TestVideo::packets(path("b.mkv"), StartMs + 400))
        packets.push_back(packet);
    RingPlayer player(packets);
    const qint64 lengthMs = 400 + 11 * TestVideo::StepMs;
    QVector<qint64> times;
    QVector<int> widths;
    connect(&player, &VideoSource::frameReady, this, [&] {
        times.append(player.frame()->wallMs - StartMs);
        widths.append(player.frame()->width);
    });
    player.start();
    QTRY_COMPARE(player.state(), SourceState::Ended);
    QTRY_COMPARE(times.last(), lengthMs);
    for (int i = 0; i < times.size(); ++i)
        QCOMPARE(widths.at(i), times.at(i) < 400 ? 64 : 32);
    player.setPaused(true);
    player.seek(int(120 * 1000 / lengthMs));
    QTRY_COMPARE(player.frame()->width, 64);
}

void tst_recording::emptyRing()
{
    RingPlayer player({});
    player.start();
    player.seek(500);
    QTRY_COMPARE(player.state(), SourceState::Lost);
    QCOMPARE(player.reason(), QString("nothing was kept"));
    QCOMPARE(player.position(), 0);
}

void tst_recording::recordsBitForBit_data()
{
    QTest::addColumn<int>("codec");
    QTest::addColumn<int>("reordered");
    QTest::newRow("MJPEG") << int(AV_CODEC_ID_MJPEG) << 0;
    QTest::newRow("MPEG-4 out of order") << int(AV_CODEC_ID_MPEG4) << 2;
}

void tst_recording::recordsBitForBit()
{
    QFETCH(int, codec);
    QFETCH(int, reordered);
    QVERIFY(TestVideo::write(path("a.mkv"), {10, {64, 48}, AVCodecID(codec), 5, reordered}));
    VideoSource source(TestVideo::player(path("a.mkv")));
    StreamRecorder recorder(&source, path("copy.mkv"));
    QVERIFY(recorder.start());
    source.start();
    QTRY_VERIFY(recorder.packetCount() >= 25);
    recorder.stop();
    const auto count = size_t(recorder.packetCount());
    QCOMPARE(recorder.error(), QString());

    const std::vector<PacketPtr> copy = TestVideo::packets(path("copy.mkv"));
    QCOMPARE(copy.size(), count);
    QVERIFY(copy.front()->isKey());
    QVERIFY(isPartOfLoop(copy, TestVideo::packets(path("a.mkv"))));
    QVERIFY(isGrowing(copy));
    // The loop's seam is as long as any other step.
    const qint64 length = copy.back()->packet->dts - copy.front()->packet->dts;
    QVERIFY(qAbs(length - qint64(count - 1) * TestVideo::StepMs) <= 2);
}

void tst_recording::recordsASyntheticCamera()
{
    SyntheticCamera source(SourceAddress::synthetic(4));
    const auto ring = std::make_shared<PacketRing>();
    StreamRecorder recorder(&source, path("cam.mkv"));
    source.start();
    source.addSink(ring);
    QTRY_VERIFY(ring->snapshot().size() >= 3);
    QVERIFY(recorder.start());
    QTRY_VERIFY(recorder.packetCount() >= 8);
    recorder.stop();
    const auto count = size_t(recorder.packetCount());
    QCOMPARE(TestVideo::packets(path("cam.mkv")).size(), count);
    QTRY_VERIFY(ring->snapshot().back()->wallMs - ring->snapshot().front()->wallMs > 1000);
    const std::vector<PacketPtr> kept = ring->snapshot();
    // Every second picture of 25 a second is encoded, and no more.
    QVERIFY(qint64(kept.size() - 1) * 60 < kept.back()->wallMs - kept.front()->wallMs);
    source.removeSink(ring);
    source.stop();

    RingPlayer player(ring->snapshot());
    player.start();
    QTRY_VERIFY(player.frame());
    QCOMPARE(player.frame()->size(), QSize(352, 288));
    QVERIFY(qAbs(player.positionMs() - ring->snapshot().front()->wallMs) < 500);

    VideoSource file(TestVideo::player(path("cam.mkv")));
    file.start();
    QTRY_VERIFY(file.frame());
}

void tst_recording::recordsOverALoss()
{
    QVERIFY(TestVideo::write(path("a.mkv")));
    VideoSource source(TestVideo::player(path("a.mkv")));
    StreamRecorder recorder(&source, path("copy.mkv"));
    QVERIFY(recorder.start());
    source.start();
    QTRY_VERIFY(recorder.packetCount() >= 7);
    source.stop();
    QVERIFY(waitForSourceThreads(PatienceMs));
    const qint64 atMost = recorder.packetCount();
    QElapsedTimer away;
    away.start();
    QTRY_VERIFY(away.hasExpired(200));
    source.start();
    QTRY_VERIFY(recorder.packetCount() >= atMost + 14);
    recorder.stop();
    QCOMPARE(recorder.error(), QString());
    const std::vector<PacketPtr> copy = TestVideo::packets(path("copy.mkv"));
    QCOMPARE(qint64(copy.size()), recorder.packetCount());
    QVERIFY(isGrowing(copy));
    // The file goes on by the clock, with a key frame.
    const auto goesOn =
        std::adjacent_find(copy.begin(), copy.end(), [](const PacketPtr& one, const PacketPtr& next) {
            return next->packet->dts - one->packet->dts >= 200;
        });
    QVERIFY(goesOn != copy.end());
    QVERIFY((*std::next(goesOn))->isKey());
}

void tst_recording::endsWhenTheStreamChanges()
{
    QVERIFY(TestVideo::write(path("a.mkv")));
    VideoSource source(TestVideo::player(path("a.mkv")));
    StreamRecorder recorder(&source, path("copy.mkv"));
    QSignalSpy failed(&recorder, SIGNAL(failed(QString)));
    QVERIFY(recorder.start());
    source.start();
    QTRY_VERIFY(recorder.packetCount() >= 3);
    source.stop();
    QVERIFY(waitForSourceThreads(PatienceMs));
    QVERIFY(TestVideo::write(path("a.mkv"), {10, {32, 48}, AV_CODEC_ID_MPEG4, 5, 0}));
    source.start();
    QTRY_COMPARE(failed.count(), 1);
    QCOMPARE(failed.first().first().toString(),
             QString("cannot write %1: the stream has changed").arg(path("copy.mkv")));
    QVERIFY(TestVideo::packets(path("copy.mkv")).size() >= 3);
}

void tst_recording::tellsOfAFullDisk()
{
    // Big pictures, so that the file's buffer is written out soon.
    QVERIFY(TestVideo::write(path("a.mkv"), {10, {320, 240}, AV_CODEC_ID_MJPEG, 1, 0}));
    QVERIFY(QFile::link("/dev/full", path("full.mkv")));
    VideoSource source(TestVideo::player(path("a.mkv")));
    StreamRecorder recorder(&source, path("full.mkv"));
    QSignalSpy failed(&recorder, SIGNAL(failed(QString)));
    QVERIFY(recorder.start());
    source.start();
    QTRY_COMPARE(failed.count(), 1);
    QCOMPARE(failed.first().first().toString(),
             QString("cannot write %1: No space left on device").arg(path("full.mkv")));
    QTRY_COMPARE(source.state(), SourceState::Playing);
    const FramePtr last = source.frame();
    QTRY_VERIFY(source.frame() != last);
    recorder.stop();
    QCOMPARE(failed.count(), 1);
}

void tst_recording::tellsOfAnUnwritablePath()
{
    SyntheticCamera source(SourceAddress::synthetic(1));
    StreamRecorder recorder(&source, path("none/copy.mkv"));
    QVERIFY(!recorder.start());
    QCOMPARE(recorder.error(),
             QString("cannot write %1: No such file or directory").arg(path("none/copy.mkv")));
    recorder.stop();
}

void tst_recording::leavesNoEmptyFile()
{
    SyntheticCamera source(SourceAddress::synthetic(1));
    {
        StreamRecorder recorder(&source, path("copy.mkv"));
        QVERIFY(recorder.start());
        QVERIFY(QFile::exists(path("copy.mkv")));
    }
    QVERIFY(!QFile::exists(path("copy.mkv")));
}

int main(int argc, char** argv)
{
    return RunTests<tst_recording, QCoreApplication>(argc, argv);
}

#include "tst_recording.moc"
