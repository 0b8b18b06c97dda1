#include "archive/ArchiveKeeper.h"
#include "archive/ArchiveRecorder.h"
#include "archive/SampleMaker.h"
#include "archive/SegmentReader.h"
#include "archive/SegmentSink.h"
#include "engine/TestVideo.h"
#include "packets/PacketQueue.h"
#include "source/SourceThread.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "synthetic/SyntheticCamera.h"

#include <QDir>
#include <QDirIterator>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <condition_variable>
#include <csignal>

namespace {

constexpr qint64 StartMs = 1'700'000'000'000;
constexpr int Pictures = 20;
constexpr qint64 Forever = StartMs * 2;

QVector<QByteArray> contents(const QString& path, bool sound = false)
{
    QVector<QByteArray> all;
    for (const PacketPtr& packet : TestVideo::packets(path)) {
        if (packet->isSound() == sound)
            all.append(TestVideo::data(packet));
    }
    return all;
}

/// Some pictures of a stream that goes on: by its own times, and by the clock.
struct Stretch
{
    qint64 atMs;
    qint64 wallMs;
    int count;
};

/// What a sink made of packets.
struct Written
{
    std::vector<FinishedPart> parts;
    QStringList errors;

    SegmentSink::Listener listener()
    {
        return {[this](const FinishedPart& part) { parts.push_back(part); },
                [this](const QString& error) { errors.append(error); }};
    }
};

/// A slow disk: waits in the middle of its work until it is let go, and then hands on.
class StuckSink : public PacketSink
{
public:
    explicit StuckSink(PacketSink* target = nullptr) : m_target(target) {}
    void take(const PacketPtr& packet) override
    {
        say(packet->isKey() ? 'K' : 'p');
        std::unique_lock lock(m_mutex);
        m_free.wait(lock, [this] { return m_isFree; });
        if (m_target)
            m_target->take(packet);
    }
    void skip() override
    {
        say('-');
        if (m_target)
            m_target->skip();
    }
    void end() override
    {
        say('.');
        if (m_target)
            m_target->end();
    }
    void letGo()
    {
        const std::lock_guard lock(m_mutex);
        m_isFree = true;
        m_free.notify_all();
    }
    QByteArray said()
    {
        const std::lock_guard lock(m_mutex);
        return m_said;
    }

private:
    void say(char word)
    {
        const std::lock_guard lock(m_mutex);
        m_said += word;
    }

    PacketSink* m_target;
    std::mutex m_mutex;
    std::condition_variable m_free;
    QByteArray m_said;
    bool m_isFree = false;
};

/// No file grows beyond some bytes while it lives.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before;
};

} // namespace

Q_DECLARE_METATYPE(Stretch)

class tst_recorder : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void fullQueueBeginsAnew();
    void sinkCutsAtKeyFrames();
    void sinkGoesOnBehindAHole();
    void sinkCutsWhenAsked();
    void sinkFollowsTheStream_data();
    void sinkFollowsTheStream();
    void recordsACamera();
    void tellsOnceOfAnUnwritableArchive();
    void goesOnWhenTheDiskIsFull();
    void leavesNoEmptyPart();
    void makesASample();

private:
    QString video(const QString& name, const TestVideo::Recipe& recipe = {Pictures});
    QVector<Segment> segments(const QString& camera, qint64 fromMs = 0);

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<ArchiveKeeper> m_keeper;
    ArchiveIndex m_index;
};

void tst_recorder::init()
{
    DeckTestCase::init();
    m_directory = std::make_unique<QTemporaryDir>();
    m_keeper = std::make_unique<ArchiveKeeper>(m_directory->path() + "/archive", ArchiveLimits());
    m_keeper->start();
    QTRY_COMPARE(m_keeper->role(), ArchiveRole::Recorder);
    QString error;
    QVERIFY2(m_index.open(m_keeper->paths()->directory(), &error, ArchiveIndex::Access::Read),
             qPrintable(error));
}

void tst_recorder::cleanup()
{
    QVERIFY(waitForSourceThreads(PatienceMs));
    m_index.close();
    m_keeper.reset();
    DeckTestCase::cleanup();
}

QString tst_recorder::video(const QString& name, const TestVideo::Recipe& recipe)
{
    const QString path = m_directory->filePath(name);
    if (!TestVideo::write(path, recipe))
        qFatal("can't write %s", qPrintable(path));
    return path;
}

QVector<Segment> tst_recorder::segments(const QString& camera, qint64 fromMs)
{
    return m_index.segments(camera, fromMs, Forever);
}

/// Were the reader held up, this would never come to its end.
void tst_recorder::fullQueueBeginsAnew()
{
    const auto packets = TestVideo::packets(video("source.mkv"), StartMs);
    Written written;
    SegmentSink sink(m_keeper->paths(), "Gate", 60'000, written.listener());
    const auto disk = std::make_shared<StuckSink>(&sink);
    PacketQueue queue(disk, 1 << 20, 3);
    queue.take(packets[0]);
    QTRY_COMPARE(disk->said(), QByteArray("K"));
    // Three have room, and the gap; the key frame at 5 has none.
    for (size_t i = 1; i < 7; ++i)
        queue.take(packets[i]);
    disk->letGo();
    QTRY_COMPARE(disk->said(), QByteArray("Kppp-"));
    // Nothing of a broken row of pictures is kept.
    for (size_t i = 7; i < 12; ++i) {
        queue.take(packets[i]);
        QTRY_COMPARE(disk->said().size(), i < 10 ? 5 : int(i) - 4);
    }
    queue.close();
    QVERIFY(queue.wait(PacketQueue::Clock::now() + std::chrono::seconds(10)));
    QCOMPARE(disk->said(), QByteArray("Kppp-Kp."));
    // The recording says what it lacks, and its parts lie where their pictures were taken.
    QCOMPARE(written.errors.size(), 1);
    QVERIFY(!written.errors[0].isEmpty());
    QCOMPARE(int(written.parts.size()), 2);
    QCOMPARE(written.parts[0].startMs, StartMs);
    QCOMPARE(written.parts[0].endMs, StartMs + 4 * TestVideo::StepMs);
    QCOMPARE(written.parts[1].startMs, StartMs + 10 * TestVideo::StepMs);
}

void tst_recorder::sinkCutsAtKeyFrames()
{
    TestVideo::Recipe recipe{Pictures};
    recipe.hasSound = true;
    recipe.reordered = 2;
    const QString source = video("source.mkv", recipe);
    Written written;
    SegmentSink sink(m_keeper->paths(), "Gate", 300, written.listener());
    for (const PacketPtr& packet : TestVideo::packets(source, StartMs))
        sink.take(packet);
    sink.end();
    QVector<QByteArray> pictures, sound;
    qint64 end = StartMs;
    QVERIFY(written.parts.size() >= 2);
    for (const FinishedPart& part : written.parts) {
        QCOMPARE(part.startMs, end);
        QVERIFY(TestVideo::packets(part.path).front()->isKey());
        QVERIFY(qAbs(SegmentReader::duration(part.path) - (part.endMs - part.startMs)) < 200);
        end = part.endMs;
        pictures += contents(part.path);
        sound += contents(part.path, true);
    }
    QCOMPARE(sound, contents(source, true));
    QCOMPARE(pictures, contents(source));
    QVERIFY(written.errors.isEmpty());
}

void tst_recorder::sinkGoesOnBehindAHole()
{
    TestVideo::Recipe recipe{Pictures};
    recipe.hasSound = true;
    const QString source = video("source.mkv", recipe);
    const auto packets = TestVideo::packets(source, StartMs);
    Written written;
    SegmentSink sink(m_keeper->paths(), "Gate", 60'000, written.listener());
    for (const qint64 laterMs : {0, 30'000}) {
        for (const PacketPtr& packet : packets) {
            AvPacket own(av_packet_clone(packet->packet.get()));
            own->pts += av_rescale_q(laterMs, {1, 1000}, packet->format->timeBase);
            own->dts += av_rescale_q(laterMs, {1, 1000}, packet->format->timeBase);
            sink.take(std::make_shared<EncodedPacket>(
                EncodedPacket{std::move(own), packet->format, packet->wallMs + laterMs}));
        }
    }
    sink.end();
    QCOMPARE(int(written.parts.size()), 2);
    for (const FinishedPart& part : written.parts) {
        QCOMPARE(contents(part.path), contents(source));
        QCOMPARE(contents(part.path, true), contents(source, true));
    }
}

void tst_recorder::sinkCutsWhenAsked()
{
    Written written;
    SegmentSink sink(m_keeper->paths(), "Gate", 60'000, written.listener());
    for (const PacketPtr& packet : TestVideo::packets(video("source.mkv"), StartMs)) {
        sink.take(packet);
        if (packet->wallMs == StartMs + 2 * TestVideo::StepMs)
            sink.cut();
    }
    sink.end();
    QCOMPARE(int(written.parts.size()), 2);
    QCOMPARE(written.parts[0].endMs, StartMs + 5 * TestVideo::StepMs);
    QCOMPARE(written.parts[1].startMs, written.parts[0].endMs);
}

void tst_recorder::sinkFollowsTheStream_data()
{
    QTest::addColumn<QVector<Stretch>>("stretches");
    QTest::addColumn<QVector<qint64>>("starts");
    const qint64 hour = 3'600'000;
    QTest::newRow("steady") << QVector<Stretch>{{0, 0, 10}, {400, 400, 10}} << QVector<qint64>{0};
    QTest::newRow("clock set forth") << QVector<Stretch>{{0, 0, 10}, {400, hour, 10}}
                                     << QVector<qint64>{0, hour};
    QTest::newRow("clock set back") << QVector<Stretch>{{0, 0, 10}, {400, -2000, 10}}
                                    << QVector<qint64>{0, -2000};
    QTest::newRow("a wavering clock") << QVector<Stretch>{{0, 0, 10}, {400, 1500, 10}} << QVector<qint64>{0};
    QTest::newRow("stall") << QVector<Stretch>{{0, 0, 10}, {1700, 1700, 10}} << QVector<qint64>{0, 1700};
    QTest::newRow("stepped between key frames")
        << QVector<Stretch>{{0, 0, 7}, {280, hour, 13}} << QVector<qint64>{0, hour + 120};
    QTest::newRow("hole between key frames")
        << QVector<Stretch>{{0, 0, 7}, {5000, 5000, 13}} << QVector<qint64>{0, 5120};
    QTest::newRow("a picture in two seconds")
        << QVector<Stretch>{{0, 0, 1},       {2000, 2000, 1},   {4000, 4000, 1},  {6000, 6000, 1},
                            {8000, 8000, 1}, {10000, 10000, 1}, {12000, 12000, 1}}
        << QVector<qint64>{0};
}

void tst_recorder::sinkFollowsTheStream()
{
    QFETCH(QVector<Stretch>, stretches);
    QFETCH(QVector<qint64>, starts);
    const auto packets = TestVideo::packets(video("source.mkv"), 0);
    Written written;
    SegmentSink sink(m_keeper->paths(), "Gate", 60'000, written.listener());
    size_t next = 0;
    for (const Stretch& stretch : stretches) {
        for (int i = 0; i < stretch.count; ++i, ++next) {
            AvPacket packet(av_packet_clone(packets[next]->packet.get()));
            packet->pts = packet->dts = stretch.atMs + i * TestVideo::StepMs;
            packet->flags = next % 5 == 0 ? AV_PKT_FLAG_KEY : 0;
            sink.take(std::make_shared<EncodedPacket>(EncodedPacket{
                std::move(packet), packets[next]->format, StartMs + stretch.wallMs + i * TestVideo::StepMs}));
        }
    }
    sink.end();
    QCOMPARE(int(written.parts.size()), starts.size());
    for (int i = 0; i < starts.size(); ++i) {
        const FinishedPart& part = written.parts[size_t(i)];
        QCOMPARE(part.startMs, StartMs + starts[i]);
        QVERIFY(part.isWhole);
        QVERIFY(qAbs(SegmentReader::duration(part.path) - (part.endMs - part.startMs)) < 200);
    }
    // No part goes on where nothing came for long.
    if (stretches.size() == 2 && stretches[1].atMs > 2000)
        QCOMPARE(written.parts[0].endMs, StartMs + stretches[0].count * TestVideo::StepMs);
}

void tst_recorder::recordsACamera()
{
    QSharedPointer<VideoSource> source(new SyntheticCamera(SourceAddress::synthetic(1)));
    QSignalSpy changed(m_keeper.get(), SIGNAL(changed(QString)));
    const auto alarms = [&] {
        QVector<Span> found = m_index.spans("Gate", 0, Forever);
        const auto isMotion = [](const Span& span) { return span.kind == Span::Motion; };
        found.erase(std::remove_if(found.begin(), found.end(), isMotion), found.end());
        return found;
    };
    {
        ArchiveRecorder recorder(m_keeper.get(), 500);
        recorder.record("Gate", source);
        source->start();
        recorder.setAlarm("Nobody", true);
        recorder.setAlarm("Gate", true);
        recorder.setAlarm("Gate", false);
        QTRY_COMPARE(alarms().size(), 1);
        QVERIFY(alarms().first().endMs > alarms().first().startMs);
        recorder.setAlarm("Gate", true);
        recorder.setAlarm("Gate", true);
        // Known as far as it has come, in one piece: nothing is lost with the program.
        QTRY_VERIFY(alarms().size() == 2 && alarms()[1].endMs > alarms()[1].startMs + 900);
        QTRY_VERIFY(segments("Gate").size() >= 2);
    }
    QTRY_VERIFY(QDir(m_keeper->paths()->directory() + "/Gate").entryList({"*.part"}).isEmpty());
    QVERIFY(changed.count() > 0);
    const QVector<Segment> found = segments("Gate");
    QCOMPARE(found[0].endMs, found[1].startMs);
    for (int i = 0; i < 2; ++i)
        QVERIFY(SegmentReader::duration(m_keeper->paths()->full(found[i].path)) > 0);
    QVERIFY(m_index.spans("Nobody", 0, Forever).isEmpty());
    source.clear();
}

void tst_recorder::tellsOnceOfAnUnwritableArchive()
{
    const QString place = m_keeper->paths()->directory() + "/Gate";
    QFile obstacle(place);
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    const auto packets = TestVideo::packets(video("source.mkv"), StartMs);
    const auto later = TestVideo::packets(video("later.mkv"), StartMs + 2000);
    const auto end = TestVideo::packets(video("end.mkv"), StartMs + 13'000);
    Written written;
    SegmentSink sink(m_keeper->paths(), "Gate", 60'000, written.listener());
    for (const auto* some : {&packets, &later}) {
        for (const PacketPtr& packet : *some)
            sink.take(packet);
    }
    QCOMPARE(written.errors.size(), 1);
    QVERIFY(!written.errors[0].isEmpty() && !written.errors[0].contains('\n'));
    QVERIFY(obstacle.remove());
    for (const PacketPtr& packet : end)
        sink.take(packet);
    sink.end();
    QCOMPARE(written.errors.size(), 2);
    QVERIFY(written.errors[1].isEmpty());
    QCOMPARE(int(written.parts.size()), 1);
}

void tst_recorder::goesOnWhenTheDiskIsFull()
{
    QSharedPointer<VideoSource> source(new SyntheticCamera(SourceAddress::synthetic(1)));
    ArchiveRecorder recorder(m_keeper.get(), 500);
    QSignalSpy failed(&recorder, &ArchiveRecorder::failed);
    QSignalSpy wellAgain(&recorder, &ArchiveRecorder::wellAgain);
    {
        // A file that may grow no further fails as one on a full disk does.
        const FileSizeLimit full(2000);
        recorder.record("Gate", source);
        source->start();
        QTRY_COMPARE(failed.count(), 1);
        const quint64 serial = source->frame()->serial;
        const qint64 progress = recorder.progress("Gate");
        QTRY_VERIFY(source->frame()->serial > serial + 60);
        QVERIFY(recorder.progress("Gate") <= progress + 1);
        QCOMPARE(failed.count(), 1);
        QCOMPARE(failed[0][0].toString(), QString("Gate"));
    }
    const qint64 roomMs = QDateTime::currentMSecsSinceEpoch();
    QTRY_VERIFY(!segments("Gate", roomMs).isEmpty());
    QVERIFY(SegmentReader::duration(m_keeper->paths()->full(segments("Gate", roomMs).first().path)) > 0);
    QTRY_COMPARE(wellAgain.count(), 1);
    const qint64 progress = recorder.progress("Gate");
    QTRY_VERIFY(recorder.progress("Gate") > progress);
    QCOMPARE(recorder.progress("Nobody"), qint64(-1));
    recorder.stop();
    source.clear();
}

void tst_recorder::leavesNoEmptyPart()
{
    const auto packets = TestVideo::packets(video("source.mkv"), StartMs);
    Written written;
    SegmentSink sink(m_keeper->paths(), "Gate", 60'000, written.listener());
    {
        const FileSizeLimit full(0);
        for (const PacketPtr& packet : packets)
            sink.take(packet);
    }
    QCOMPARE(written.errors.size(), 1);
    QVERIFY(sink.isFailing());
    QVERIFY(written.parts.empty());
    QDirIterator files(m_keeper->paths()->directory(), {"*.part"}, QDir::Files, QDirIterator::Subdirectories);
    QVERIFY(!files.hasNext());
}

void tst_recorder::makesASample()
{
    SampleMaker maker(m_keeper.get());
    QSignalSpy finished(&maker, SIGNAL(finished()));
    const qint64 end = StartMs + 10'000'000;
    maker.start({"One", "Two"}, StartMs, end, 800);
    QTRY_COMPARE(finished.count(), 1);
    QTRY_COMPARE(segments("Two").size(), SampleMaker::PiecesPerCamera);
    for (const Segment& segment : segments("Two")) {
        QVERIFY(segment.sample);
        QVERIFY(qAbs(SegmentReader::duration(m_keeper->paths()->full(segment.path)) - 800) <= 100);
    }
    QVERIFY(!m_index.spans("One", StartMs, end).isEmpty());
    QSignalSpy removed(m_keeper.get(), SIGNAL(sampleRemoved(int)));
    m_keeper->removeSample();
    QTRY_COMPARE(removed.count(), 1);
    QCOMPARE(removed[0][0].toInt(), 2 * SampleMaker::PiecesPerCamera);
    QVERIFY(m_index.spans("One", StartMs, end).isEmpty());
}

int main(int argc, char** argv)
{
    return RunTests<tst_recorder, QCoreApplication>(argc, argv);
}

#include "tst_recorder.moc"
