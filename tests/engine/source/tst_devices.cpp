#include "engine/TestVideo.h"
#include "source/DecodeDevices.h"
#include "source/PictureDecoder.h"
#include "source/SourceThread.h"
#include "source/SystemDevice.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <future>

namespace {

constexpr int Pictures = 20;
constexpr int KeyDistance = 10;
constexpr int Never = -1;

/// The processor in a device's clothes, which fails as it is told.
struct TestDevice : DecodeDevice
{
    bool opens = true;
    int failsAt = Never;   ///< that picture, counted over all decoders
    int keepsFrom = Never; ///< that picture on it says nothing any more
    Fetched fetched = Fetched::Yes;
    std::shared_future<void> gate; ///< what opening waits for
    std::atomic<int> attached{0};
    int fetches = 0;
    int begun = 0;

    bool open() override
    {
        if (gate.valid())
            gate.wait();
        return opens;
    }
    const AVCodec* decoderFor(AVCodecID codec) const override { return avcodec_find_decoder(codec); }
    bool attach(AVCodecContext& codec) override
    {
        ++attached;
        codec.opaque = this;
        codec.get_buffer2 = [](AVCodecContext* asking, AVFrame* frame, int flags) {
            auto* self = static_cast<TestDevice*>(asking->opaque);
            const int number = self->begun++;
            if (self->keepsFrom != Never && number >= self->keepsFrom)
                frame->flags |= AV_FRAME_FLAG_DISCARD;
            const bool fails = number == self->failsAt;
            return fails ? AVERROR_EXTERNAL : avcodec_default_get_buffer2(asking, frame, flags);
        };
        return true;
    }
    Fetched fetch(AVFrame&) override { return ++fetches, fetched; }
};

struct Camera
{
    explicit Camera(const QString& path) : packets(TestVideo::packets(path))
    {
        QString error;
        QVERIFY2(decoder.open(packets.front()->format, &error), qPrintable(error));
    }

    /// The numbers of the pictures that `count` more packets give.
    QString play(int count, bool drains = false)
    {
        QString seen;
        const size_t end = next + size_t(count);
        const auto feed = [&] {
            if (next == end && drains)
                decoder.drain();
            if (next == end)
                return drains;
            const AVRational base = packets[next]->format->timeBase;
            decoder.send(*packets[next++]->packet,
                         [base](int64_t stamp) { return av_rescale_q(stamp, base, Microseconds); });
            return true;
        };
        while (decoder.advance(feed) == SourceFeed::Step::Picture)
            seen += QChar('a' + TestVideo::number(decoder.picture()->image()));
        return seen;
    }

    std::vector<PacketPtr> packets;
    PictureDecoder decoder;
    size_t next = 0;
};

} // namespace

class tst_devices : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void losesNoPicture_data();
    void losesNoPicture();
    void isNotBlamedForDamage_data();
    void isNotBlamedForDamage();
    void noticesSilence_data();
    void noticesSilence();
    void playsWhileADeviceOpens();
    void isNotAskedForEachCamera();
    void asksTheSystem();

private:
    void use(const std::vector<std::shared_ptr<DecodeDevice>>& devices);

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_path;
};

void tst_devices::init()
{
    DeckTestCase::init();
    m_directory = std::make_unique<QTemporaryDir>();
    m_path = m_directory->filePath("a.mkv");
    QVERIFY(TestVideo::write(m_path, {Pictures, {64, 48}, AV_CODEC_ID_MPEG4, KeyDistance, 2}));
}

void tst_devices::cleanup()
{
    DecodeDevices::use(nullptr);
    QVERIFY(waitForSourceThreads(PatienceMs));
    DeckTestCase::cleanup();
}

/// Lets them be opened, as a camera before has wanted them.
void tst_devices::use(const std::vector<std::shared_ptr<DecodeDevice>>& devices)
{
    DecodeDevices::use(std::make_shared<DecodeDevices>(devices));
    const Camera before(m_path);
    DecodeDevices::inUse()->choose(*before.packets.front()->format->parameters);
}

void tst_devices::losesNoPicture_data()
{
    QTest::addColumn<int>("failsAt");
    QTest::addColumn<int>("fetched");
    QTest::addColumn<int>("fetches");
    const int yes = int(DecodeDevice::Fetched::Yes);
    QTest::newRow("all is well") << Never << yes << Pictures;
    QTest::newRow("fails at the first picture") << 0 << yes << 0;
    QTest::newRow("fails later") << 7 << yes << 6;
    QTest::newRow("fails at the next key frame") << 10 << yes << 9;
    QTest::newRow("pictures can't be fetched") << Never << int(DecodeDevice::Fetched::Failed) << 1;
    QTest::newRow("leaves it to the processor") << Never << int(DecodeDevice::Fetched::NotNeeded) << 1;
}

void tst_devices::losesNoPicture()
{
    QFETCH(int, fetched);
    const auto device = std::make_shared<TestDevice>();
    device->fetched = DecodeDevice::Fetched(fetched);
    use({device});
    QVERIFY(waitForSourceThreads(PatienceMs));
    QFETCH(int, failsAt);
    device->failsAt = failsAt;
    Camera camera(m_path);
    QCOMPARE(camera.play(Pictures, true), QString("abcdefghijklmnopqrst"));
    QCOMPARE(device->attached.load(), 1);
    QTEST(device->fetches, "fetches");
}

void tst_devices::isNotBlamedForDamage_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("keptBytes");
    QTest::addColumn<int>("fetches");
    QTest::newRow("a packet of nonsense") << 7 << 1 << 0 << Pictures - 1;
    QTest::newRow("many, after which it is taken again") << 1 << 4 << 0 << 1 + Pictures / 2;
    QTest::newRow("a key frame of nonsense") << 10 << 1 << 0 << Pictures - 1;
    QTest::newRow("fails at half a picture") << 7 << 1 << 20 << 7 + Pictures / 4;
}

/// It gives what the processor alone does, and other cameras go on with it.
void tst_devices::isNotBlamedForDamage()
{
    QFETCH(int, first);
    QFETCH(int, count);
    QFETCH(int, keptBytes);
    QVERIFY(TestVideo::write(m_path, {Pictures, {64, 48}, AV_CODEC_ID_MPEG4, Pictures / 4}));
    const auto playSpoilt = [&] {
        Camera camera(m_path);
        for (int i = first; i < first + count; ++i) {
            AVPacket& packet = *camera.packets[size_t(i)]->packet;
            std::fill(packet.data + keptBytes, packet.data + packet.size, uint8_t(0x55));
        }
        return camera.play(Pictures, true);
    };
    const QString plain = playSpoilt();
    const auto device = std::make_shared<TestDevice>();
    device->failsAt = keptBytes > 0 ? first : Never;
    use({device});
    QVERIFY(waitForSourceThreads(PatienceMs));
    QCOMPARE(playSpoilt(), plain);
    QTEST(device->fetches, "fetches");
    const int attached = device->attached;
    QCOMPARE(Camera(m_path).play(Pictures, true), QString("abcdefghijklmnopqrst"));
    QCOMPARE(device->attached.load(), attached + 1);
}

void tst_devices::noticesSilence_data()
{
    QTest::addColumn<int>("keepsFrom");
    QTest::addColumn<int>("packets"); ///< with which all pictures come that were kept
    QTest::newRow("from its first picture on") << 0 << 6;
    QTest::newRow("in the middle of a group") << 7 << 10;
    QTest::newRow("over a key frame") << 9 << 12;
    QTest::newRow("from a key frame on") << 10 << 13;
}

/// Whoever looks waits for no more than a few packets.
void tst_devices::noticesSilence()
{
    const auto device = std::make_shared<TestDevice>();
    QFETCH(int, keepsFrom);
    device->keepsFrom = keepsFrom;
    use({device});
    QVERIFY(waitForSourceThreads(3000));
    QVERIFY(TestVideo::write(m_path, {Pictures, {64, 48}, AV_CODEC_ID_MPEG4, KeyDistance}));
    Camera camera(m_path);
    QFETCH(int, packets);
    const QString all = "abcdefghijklmnopqrst";
    QCOMPARE(camera.play(packets - 1), all.left(keepsFrom));
    QCOMPARE(camera.play(1), all.mid(keepsFrom, packets - keepsFrom));
    QCOMPARE(camera.play(Pictures - packets, true), all.mid(packets));
    QCOMPARE(device->fetches, keepsFrom);
}

void tst_devices::playsWhileADeviceOpens()
{
    std::promise<void> gate;
    const auto slow = std::make_shared<TestDevice>();
    slow->gate = gate.get_future();
    use({slow});
    QVERIFY(TestVideo::write(m_path, {Pictures, {64, 48}, AV_CODEC_ID_MJPEG, KeyDistance}));
    Camera camera(m_path);
    QCOMPARE(camera.play(8), QString("abcdefgh"));
    QCOMPARE(slow->attached.load(), 0);
    gate.set_value();
    QVERIFY(waitForSourceThreads(PatienceMs));
    QCOMPARE(camera.play(Pictures - 8, true), QString("ijklmnopqrst"));
    QCOMPARE(slow->attached.load(), 1);
    QCOMPARE(slow->fetches, Pictures - 8);
}

void tst_devices::isNotAskedForEachCamera()
{
    const auto broken = std::make_shared<TestDevice>();
    broken->failsAt = 0;
    const auto missing = std::make_shared<TestDevice>();
    missing->opens = false;
    const auto good = std::make_shared<TestDevice>();
    QVERIFY(TestVideo::write(m_path, {Pictures, {64, 48}, AV_CODEC_ID_MJPEG}));
    use({missing, broken, good});
    QVERIFY(waitForSourceThreads(PatienceMs));
    for (int i = 0; i < 3; ++i)
        QCOMPARE(Camera(m_path).play(Pictures, true), QString("abcdefghijklmnopqrst"));
    QCOMPARE(missing->attached.load(), 0);
    QCOMPARE(broken->attached.load(), 1);
    // The camera that the broken one failed goes over to the good one at its second picture.
    QCOMPARE(good->attached.load(), 3);
    // Other pictures are tried, but not without end.
    for (int i = 1; i <= int(DecodeDevices::MostFailures) + 1; ++i) {
        QVERIFY(TestVideo::write(m_path, {Pictures, {64 + 16 * i, 48}, AV_CODEC_ID_MJPEG}));
        broken->failsAt = broken->begun;
        Camera(m_path).play(5, true);
    }
    QCOMPARE(broken->attached.load(), int(DecodeDevices::MostFailures));
}

/// Whatever devices this machine has or lacks, the pictures come.
void tst_devices::asksTheSystem()
{
    const auto devices = SystemDevice::all();
    use(devices);
    QVERIFY(waitForSourceThreads(PatienceMs));
    QCOMPARE(Camera(m_path).play(Pictures, true), QString("abcdefghijklmnopqrst"));
    const auto takes = [](AVCodecID codec) {
        return [codec](const auto& device) { return device->decoderFor(codec) != nullptr; };
    };
    if (std::none_of(devices.begin(), devices.end(), takes(AV_CODEC_ID_H264)))
        QSKIP("this FFmpeg was built without devices for H.264");
    QVERIFY(std::none_of(devices.begin(), devices.end(), takes(AV_CODEC_ID_GIF)));
}

int main(int argc, char** argv)
{
    return RunTests<tst_devices, QCoreApplication>(argc, argv);
}

#include "tst_devices.moc"
