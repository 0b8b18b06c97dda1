#include "engine/TestVideo.h"
#include "packets/PacketRing.h"
#include "source/LiveQueue.h"
#include "source/SourceThread.h"
#include "source/VideoSource.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

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
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof place;
    ::bind(socket, reinterpret_cast<sockaddr*>(&place), size);
    ::getsockname(socket, reinterpret_cast<sockaddr*>(&place), &size);
    ::close(socket);
    return ntohs(place.sin_port);
}

/// A camera that sends a file's packets, each in a datagram of its own, as a stream of MPEG-TS.
class UdpCamera
{
public:
    QString url() const { return QString("udp://127.0.0.1:%1").arg(m_port); }

    void open(const QString& file)
    {
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
        packet->flags = next->packet->flags;
        packet->pts = packet->dts = m_sent++ * 90 * TestVideo::StepMs;
        packet->stream_index = 0;
        av_write_frame(m_output, packet.get());
        av_write_frame(m_output, nullptr);
    }

    ~UdpCamera()
    {
        if (!m_output)
            return;
        av_write_trailer(m_output);
        avio_closep(&m_output->pb);
        avformat_free_context(m_output);
    }

private:
    quint16 m_port = freePort();
    std::vector<PacketPtr> m_packets;
    AVFormatContext* m_output = nullptr;
    qint64 m_sent = 0;
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
    void playsAndTellsOfSilence();
};

void tst_live::cleanup()
{
    QVERIFY(waitForSourceThreads(3000));
    DeckTestCase::cleanup();
}

void tst_live::leavesOutWhatIsLate_data()
{
    QTest::addColumn<QString>("pushed");
    QTest::addColumn<int>("oldestMs");
    QTest::addColumn<QString>("taken");
    QTest::addColumn<bool>("leftOut");
    // Pictures 50 ms apart, and how long ago the first one came.
    QTest::newRow("in time") << "kabc" << 200 << "kabc" << false;
    QTest::newRow("before the first key frame") << "abkc" << 200 << "kc" << false;
    QTest::newRow("behind") << "kabcdefg" << 480 << "k'a'b'c'defg" << false;
    QTest::newRow("behind, with a newer key frame") << "kabckef" << 480 << "|kef" << true;
    QTest::newRow("the newest of two") << "kakbkc" << 480 << "|kc" << true;
    QTest::newRow("too late, nothing to go on from") << "kabc" << 900 << "" << true;
}

void tst_live::leavesOutWhatIsLate()
{
    QFETCH(QString, pushed);
    QFETCH(int, oldestMs);
    QFETCH(bool, leftOut);
    LiveQueue queue;
    Clock::time_point came = Clock::now() - std::chrono::milliseconds(oldestMs);
    for (const QChar one : pushed) {
        queue.push(picture(one), came);
        came += 50ms;
    }
    QTEST(takeAll(queue), "taken");
    QCOMPARE(queue.takeLeftOut(), leftOut);
    if (!leftOut || pushed.contains("kc") || pushed.contains("kef"))
        return;
    queue.push(picture('x'), Clock::now());
    queue.push(picture('k'), Clock::now());
    QCOMPARE(takeAll(queue), QString("|k"));
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
    QTRY_VERIFY_WITH_TIMEOUT(ring->snapshot().size() > 20, 15000);
    QTRY_COMPARE(source.state(), SourceState::Playing);
    QVERIFY(!source.frame());
    source.setWatched(true);
    QTRY_VERIFY(source.frame());
    QVERIFY(qAbs(source.frame()->wallMs - QDateTime::currentMSecsSinceEpoch()) < 2000);
    QVERIFY(!source.isSilent());
    sends.stop();
    QTRY_VERIFY_WITH_TIMEOUT(source.isSilent(), 10000);
    QCOMPARE(source.state(), SourceState::Playing);
    QVERIFY(source.frameAgeMs() >= 1900);
    sends.start(int(TestVideo::StepMs));
    QTRY_VERIFY(!source.isSilent());
}

int main(int argc, char** argv)
{
    return RunTests<tst_live, QCoreApplication>(argc, argv);
}

#include "tst_live.moc"
