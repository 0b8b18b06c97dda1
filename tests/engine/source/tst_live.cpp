#include "engine/TestVideo.h"
#include "packets/PacketRing.h"
#include "source/DecodeDevices.h"
#include "source/LiveQueue.h"
#include "source/ReadPause.h"
#include "source/SourceThread.h"
#include "source/VideoSource.h"
#include "support/DeckTestCase.h"
#include "support/LocalPort.h"
#include "support/RunTests.h"

#include <unistd.h>

#include <condition_variable>

namespace {

using namespace std::chrono_literals;
using Clock = LiveQueue::Clock;

/// One picture: `text` is "k" for a key frame, any other for one that needs those before it.
PacketPtr picture(QChar text, int bytes = 10)
{
    AvPacket packet(av_packet_alloc());
    av_new_packet(packet.get(), bytes);
    packet->data[0] = uint8_t(text.toLatin1());
    packet->flags = text == 'k' || text == 'K' ? AV_PKT_FLAG_KEY : 0;
    return std::make_shared<EncodedPacket>(EncodedPacket{std::move(packet), nullptr, 0});
}

/// What a decoder gets: a letter a picture, "|" where it starts over, "'" where it should hurry.
QString takeAll(LiveQueue& queue)
{
    QString text;
    while (true) {
        const LiveQueue::Taken taken = queue.take(Clock::now());
        if (!taken.packet)
            return text;
        text += (taken.startsOver ? "|" : "") + QString(QChar(taken.packet->packet->data[0]));
        text += taken.isHurried ? "'" : "";
    }
}

/// A port that nobody listens on.
quint16 freePort()
{
    const int socket = ::socket(AF_INET, SOCK_DGRAM, 0);
    const int port = bindLocalPort(socket);
    ::close(socket);
    return quint16(port);
}

/// The processor as a device, which gives no picture while it is shut.
class Gate : public DecodeDevice
{
public:
    bool open() override { return true; }
    const AVCodec* decoderFor(AVCodecID codec) const override { return avcodec_find_decoder(codec); }
    bool attach(AVCodecContext&) override { return true; }
    Fetched fetch(AVFrame&) override
    {
        std::unique_lock lock(m_mutex);
        m_isUsed = true;
        m_opened.wait(lock, [this] { return !m_isShut; });
        return Fetched::Yes;
    }
    bool isUsed() const { return m_isUsed; }
    void setShut(bool shut)
    {
        const std::lock_guard lock(m_mutex);
        m_isShut = shut;
        m_opened.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_opened;
    bool m_isShut = false;
    std::atomic<bool> m_isUsed{false};
};

/// A camera that sends a file's packets, each in a datagram of its own, as a stream of MPEG-TS.
class UdpCamera
{
public:
    QString url() const { return QString("udp://127.0.0.1:%1").arg(m_port); }

    /// What is sent from now on, as by a camera that was set to something else.
    void open(const QString& file)
    {
        close();
        m_sent = 0;
        m_packets = TestVideo::packets(file);
        avformat_alloc_output_context2(&m_output, nullptr, "mpegts", nullptr);
        avio_open(&m_output->pb, (url() + "?pkt_size=1316").toUtf8().constData(), AVIO_FLAG_WRITE);
        AVStream* stream = avformat_new_stream(m_output, nullptr);
        avcodec_parameters_copy(stream->codecpar, m_packets.front()->format->parameters.get());
        stream->codecpar->codec_tag = 0;
        QCOMPARE(avformat_write_header(m_output, nullptr) >= 0, true);
    }

    void send()
    {
        const PacketPtr& next = m_packets[size_t(m_sent % qint64(m_packets.size()))];
        // Who joins later needs the header too.
        const AVCodecParameters& format = *next->format->parameters;
        const int header = next->isKey() ? format.extradata_size : 0;
        const AvPacket packet(av_packet_alloc());
        av_new_packet(packet.get(), header + next->packet->size);
        std::copy_n(format.extradata, header, packet->data);
        std::copy_n(next->packet->data, next->packet->size, packet->data + header);
        if (m_isSpoilt)
            std::fill(packet->data + header + StartCode, packet->data + packet->size, uint8_t(0xff));
        packet->flags = next->packet->flags;
        const qint64 loop =
            m_sent++ / qint64(m_packets.size()) * qint64(m_packets.size()) * TestVideo::StepMs;
        packet->pts = (StartMs + loop + next->packet->pts) * 90;
        packet->dts = (StartMs + loop + next->packet->dts) * 90;
        packet->stream_index = 0;
        av_write_frame(m_output, packet.get());
        av_write_frame(m_output, nullptr);
    }

    qint64 sent() const { return m_sent; }
    /// What is sent looks like pictures, and is none.
    void setSpoilt(bool spoilt) { m_isSpoilt = spoilt; }

    ~UdpCamera() { close(); }

private:
    void close()
    {
        if (!m_output)
            return;
        av_write_trailer(m_output);
        avio_closep(&m_output->pb);
        avformat_free_context(m_output);
        m_output = nullptr;
    }

    static constexpr int StartCode = 4;
    static constexpr qint64 StartMs = 1000; // before which times of reordered pictures lie

    quint16 m_port = freePort();
    std::vector<PacketPtr> m_packets;
    AVFormatContext* m_output = nullptr;
    qint64 m_sent = 0;
    bool m_isSpoilt = false;
};

} // namespace

class tst_live : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void leavesOutWhatIsLate_data();
    void leavesOutWhatIsLate();
    void keepsTheNewestKeyFrame();
    void isBounded();
    void restsBetweenBundles_data();
    void restsBetweenBundles();
    void playsAndTellsOfSilence();
    void tellsOfPicturesLeftOut();
    void followsAChangeOfPictures_data();
    void followsAChangeOfPictures();
    void seesMotionAfterOneKeyFrame();
};

void tst_live::cleanup()
{
    QVERIFY(waitForSourceThreads(PatienceMs));
    DeckTestCase::cleanup();
}

void tst_live::leavesOutWhatIsLate_data()
{
    QTest::addColumn<QString>("pushed");
    QTest::addColumn<int>("oldestMs");
    QTest::addColumn<QString>("taken");
    QTest::addColumn<bool>("leftOut");
    QTest::addColumn<QString>("goesOn"); // when xk follows
    // Pictures 50 ms apart, and how long ago the first one came.
    QTest::newRow("in time") << "kabc" << 200 << "kabc" << false << "xk";
    QTest::newRow("before the first key frame") << "abkc" << 200 << "kc" << false << "xk";
    QTest::newRow("behind") << "kabcdefg" << 480 << "k'a'b'c'defg" << false << "xk";
    QTest::newRow("behind, with a newer key frame") << "kabckef" << 480 << "|kef" << true << "xk";
    QTest::newRow("the newest of two") << "kakbkc" << 480 << "|kc" << true << "xk";
    QTest::newRow("too late, nothing to go on from") << "kabc" << 900 << "" << true << "|k";
}

void tst_live::leavesOutWhatIsLate()
{
    QFETCH(QString, pushed);
    QFETCH(int, oldestMs);
    LiveQueue queue;
    Clock::time_point came = Clock::now() - std::chrono::milliseconds(oldestMs);
    for (const QChar one : pushed) {
        queue.push(picture(one), came);
        came += 50ms;
    }
    QTEST(takeAll(queue), "taken");
    QTEST(queue.takeLeftOut(), "leftOut");
    queue.push(picture('x'), Clock::now());
    queue.push(picture('k'), Clock::now());
    QTEST(takeAll(queue), "goesOn");
}

void tst_live::keepsTheNewestKeyFrame()
{
    LiveQueue queue;
    const auto push = [&queue](const QString& pictures) {
        for (const QChar one : pictures)
            queue.push(picture(one), Clock::now() - 5s);
    };
    queue.setNeed(PictureNeed::None);
    push("kabKc");
    QCOMPARE(takeAll(queue), QString());
    // Its motion is looked at: the key frame alone, once.
    queue.setNeed(PictureNeed::KeyFrames);
    push("kab");
    QCOMPARE(takeAll(queue), QString("|k"));
    push("Kcd");
    QCOMPARE(takeAll(queue), QString("|K"));
    // Seen again, it goes on from there, late as it is.
    queue.setNeed(PictureNeed::All);
    QCOMPARE(takeAll(queue), QString("|K'c'd'"));
    // Away for less than a key frame's distance, nothing is lost.
    queue.setNeed(PictureNeed::None);
    push("ef");
    queue.setNeed(PictureNeed::All);
    QCOMPARE(takeAll(queue), QString("e'f'"));
}

void tst_live::isBounded()
{
    LiveQueue queue;
    const auto now = Clock::now();
    queue.push(picture('k', LiveQueue::MostBytes / 2), now);
    queue.push(picture('a', LiveQueue::MostBytes / 2), now);
    queue.push(picture('b', 10), now);
    QVERIFY(queue.takeLeftOut());
    queue.push(picture('K', LiveQueue::MostBytes * 2), now);
    QCOMPARE(takeAll(queue), QString("|K"));
}

void tst_live::restsBetweenBundles_data()
{
    QTest::addColumn<double>("speed"); // of the camera's clock
    QTest::addColumn<int>("bytes");
    QTest::addColumn<bool>("rests"); // at least at every tenth picture
    QTest::newRow("a small stream") << 1.0 << 3000 << true;
    QTest::newRow("a clock that is fast") << 1.0005 << 3000 << true;
    QTest::newRow("a clock that is slow") << 0.9995 << 3000 << true;
    QTest::newRow("too much to wait") << 1.0 << 80'000 << false;
}

void tst_live::restsBetweenBundles()
{
    QFETCH(double, speed);
    QFETCH(int, bytes);
    constexpr int Pictures = 10'000;
    constexpr auto Step = 40ms;
    const auto start = ReadPause::Clock::time_point(1h);
    ReadPause pause;
    PacketClock stamps;
    pause.putOff(start);
    auto now = start;
    int rests = 0;
    for (int i = 0; i < Pictures; ++i) {
        const auto came = start + i * Step + std::chrono::milliseconds(i * 7 % 11);
        now = qMax(now, came);
        const qint64 ms = std::chrono::duration_cast<std::chrono::milliseconds>(now - start).count();
        const qint64 placeUs = qint64(i * 40'000 * speed);
        const auto stamp = start + std::chrono::milliseconds(stamps.wallMs(placeUs, {0, ms, {}}));
        QVERIFY(now - came <= ReadPause::Longest + Step);
        QVERIFY(stamp - came < ReadPause::Longest && came - stamp < ReadPause::Longest);
        const auto rest = pause.after(placeUs, size_t(bytes), now);
        rests += rest > 0s;
        now += rest;
    }
    QTEST(rests > Pictures / 10, "rests");
}

void tst_live::playsAndTellsOfSilence()
{
    QTemporaryDir directory;
    QVERIFY(TestVideo::write(directory.filePath("a.mkv")));
    UdpCamera camera;
    camera.open(directory.filePath("a.mkv"));
    VideoSource source(TestVideo::player(camera.url()));
    const auto ring = std::make_shared<PacketRing>();
    source.addSink(ring);
    source.setWatched(false);
    source.start();
    QTimer sends;
    connect(&sends, &QTimer::timeout, this, [&camera] { camera.send(); });
    sends.start(int(TestVideo::StepMs));
    // Unseen it is read, and not decoded.
    QTRY_VERIFY(ring->snapshot().size() > 20);
    QTRY_COMPARE(source.state(), SourceState::Playing);
    QVERIFY(!source.frame());
    source.setWatched(true);
    QTRY_VERIFY(source.frame());
    QVERIFY(qAbs(source.frame()->wallMs - QDateTime::currentMSecsSinceEpoch()) < 2000);
    QVERIFY(!source.isSilent());
    sends.stop();
    QTRY_VERIFY(source.isSilent());
    QCOMPARE(source.state(), SourceState::Playing);
    QVERIFY(source.frameAgeMs() >= 1900);
    sends.start(int(TestVideo::StepMs));
    QTRY_VERIFY(!source.isSilent());
    camera.setSpoilt(true);
    QTRY_VERIFY(source.isSilent());
    QVERIFY(QDateTime::currentMSecsSinceEpoch() - ring->snapshot().back()->wallMs < 1000);
    QTRY_COMPARE(source.state(), SourceState::Lost);
    QCOMPARE(source.reason(), QString("cannot decode: no pictures in it"));
    camera.setSpoilt(false);
    QTRY_COMPARE(source.state(), SourceState::Playing);
}

/// Less than half a second behind, pictures that no other needs are not decoded.
void tst_live::tellsOfPicturesLeftOut()
{
    constexpr int KeyDistance = 40;
    const auto gate = std::make_shared<Gate>();
    DecodeDevices::use(std::make_shared<DecodeDevices>(std::vector<std::shared_ptr<DecodeDevice>>{gate}));
    QTemporaryDir directory;
    const QString path = directory.filePath("a.mkv");
    QVERIFY(TestVideo::write(path, {KeyDistance, {64, 48}, AV_CODEC_ID_MPEG4, KeyDistance, 1}));
    UdpCamera camera;
    camera.open(path);
    VideoSource source(TestVideo::player(camera.url()));
    source.start();
    QTimer sends;
    connect(&sends, &QTimer::timeout, this, [&camera] { camera.send(); });
    sends.start(int(TestVideo::StepMs));
    QTRY_VERIFY(source.frame());
    QTRY_VERIFY(!source.isLate());
    bool wasLate = false;
    connect(&source, &VideoSource::stateChanged, this, [&] { wasLate = wasLate || source.isLate(); });
    for (int i = 0; i < 6 && !wasLate; ++i) {
        // In the midst of pictures that the device decodes, with no key frame to go on from soon.
        QTRY_VERIFY(gate->isUsed() && camera.sent() % KeyDistance / 8 == 1);
        gate->setShut(true);
        QTimer::singleShot(400, Qt::PreciseTimer, this, [&gate] { gate->setShut(false); });
        QTRY_VERIFY(camera.sent() % KeyDistance / 8 == 3);
    }
    QVERIFY(wasLate);
    // One that is stuck can't tell.
    QTRY_VERIFY(!source.isLate() && gate->isUsed());
    gate->setShut(true);
    QTRY_VERIFY(source.isLate() && source.isSilent() && source.frameAgeMs() > 1500);
    gate->setShut(false);
    QTRY_VERIFY(!source.isLate() && !source.isSilent());
    DecodeDevices::use(nullptr);
}

void tst_live::followsAChangeOfPictures_data()
{
    QTest::addColumn<int>("codec");
    QTest::newRow("size") << int(AV_CODEC_ID_MPEG4);
    QTest::newRow("codec") << int(AV_CODEC_ID_MPEG2VIDEO);
}

void tst_live::followsAChangeOfPictures()
{
    QFETCH(int, codec);
    QTemporaryDir directory;
    QVERIFY(TestVideo::write(directory.filePath("a.mkv")));
    QVERIFY(TestVideo::write(directory.filePath("b.mkv"), {10, {128, 96}, AVCodecID(codec)}));
    UdpCamera camera;
    camera.open(directory.filePath("a.mkv"));
    VideoSource source(TestVideo::player(camera.url()));
    const auto ring = std::make_shared<PacketRing>();
    source.addSink(ring);
    source.start();
    QTimer sends;
    connect(&sends, &QTimer::timeout, this, [&camera] { camera.send(); });
    sends.start(int(TestVideo::StepMs));
    QTRY_VERIFY(source.frame());
    camera.open(directory.filePath("b.mkv"));
    QTRY_VERIFY(source.frame() && source.frame()->size() == QSize(128, 96));
    QCOMPARE(int(ring->snapshot().back()->format->parameters->codec_id), codec);
}

void tst_live::seesMotionAfterOneKeyFrame()
{
    QTemporaryDir directory;
    const QString path = directory.filePath("a.mkv");
    QVERIFY(TestVideo::write(path, {500, {176, 144}, AV_CODEC_ID_MPEG4, 500}));
    UdpCamera camera;
    camera.open(path);
    VideoSource source(TestVideo::player(camera.url()));
    source.setWatched(false);
    source.setMotionDetection(true);
    source.start();
    QTimer sends;
    connect(&sends, &QTimer::timeout, this, [&camera] { camera.send(); });
    sends.start(int(TestVideo::StepMs));
    QTRY_VERIFY(source.hasMotion());
}

int main(int argc, char** argv)
{
    return RunTests<tst_live, QCoreApplication>(argc, argv);
}

#include "tst_live.moc"
