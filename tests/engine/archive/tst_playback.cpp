#include "archive/ArchiveRecorder.h"
#include "archive/ClipWriter.h"
#include "archive/PlayGroup.h"
#include "archive/SampleMaker.h"
#include "archive/SegmentReader.h"
#include "archive/SegmentSink.h"
#include "engine/TestVideo.h"
#include "source/SourceThread.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "synthetic/SyntheticCamera.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThread>

#include <sys/resource.h>

#include <csignal>

namespace {

constexpr qint64 StartMs = 1'700'000'000'000;
constexpr int Pictures = 20;
constexpr qint64 PieceMs = Pictures * TestVideo::StepMs;

/// The number of the last key frame at or before a picture.
int keyBefore(const QString& path, int number)
{
    std::vector<PacketPtr> packets = TestVideo::packets(path);
    const auto isSound = [](const PacketPtr& packet) { return packet->isSound(); };
    packets.erase(std::remove_if(packets.begin(), packets.end(), isSound), packets.end());
    while (number > 0 && !packets[size_t(number)]->isKey())
        --number;
    return number;
}

QVector<QByteArray> contents(const QString& path, bool sound = false)
{
    QVector<QByteArray> all;
    for (const PacketPtr& packet : TestVideo::packets(path)) {
        if (packet->isSound() == sound)
            all.append(TestVideo::data(packet));
    }
    return all;
}

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

class tst_playback : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void clockRunsAtItsSpeed_data();
    void clockRunsAtItsSpeed();
    void trackKnowsItsPieces();
    void seeksToThePicture_data();
    void seeksToThePicture();
    void showsNothingFromBeforeASeek();
    void seeksFarFromAKeyFrame();
    void playsOverSeamAndGap();
    void playersStayInStep();
    void brokenFileIsTold();
    void clipsWithoutEncoding_data();
    void clipsWithoutEncoding();
    void sinkCutsAtKeyFrames();
    void sinkLeavesGaps();
    void recordsACamera();
    void tellsOnceOfAnUnwritableArchive();
    void goesOnWhenTheDiskIsFull();
    void makesASample();

private:
    TrackPiece piece(const QString& name, qint64 startMs, const TestVideo::Recipe& recipe = {Pictures});

    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_playback::init()
{
    DeckTestCase::init();
    m_directory = std::make_unique<QTemporaryDir>();
}

void tst_playback::cleanup()
{
    QVERIFY(waitForSourceThreads(10'000));
    DeckTestCase::cleanup();
}

TrackPiece tst_playback::piece(const QString& name, qint64 startMs, const TestVideo::Recipe& recipe)
{
    const QString path = m_directory->filePath(name);
    if (!TestVideo::write(path, recipe))
        qFatal("can't write %s", qPrintable(path));
    return {path, startMs, startMs + recipe.pictures * TestVideo::StepMs};
}

void tst_playback::clockRunsAtItsSpeed_data()
{
    QTest::addColumn<int>("speed");
    QTest::addColumn<qint64>("afterASecond");
    QTest::newRow("eight times") << 8192 << qint64(8000);
    QTest::newRow("too slow") << 0 << qint64(125);
    QTest::newRow("too fast") << 100'000 << qint64(8000);
}

void tst_playback::clockRunsAtItsSpeed()
{
    QFETCH(int, speed);
    QFETCH(qint64, afterASecond);
    using namespace std::chrono_literals;
    const auto now = PlaybackClock::Clock::now();
    PlaybackClock clock(StartMs);
    clock.setSpeed(speed, now);
    QCOMPARE(clock.position(now + 5s), StartMs);
    clock.setRunning(true, now);
    QCOMPARE(clock.position(now + 1s), StartMs + afterASecond);
    QVERIFY(clock.timeOf(StartMs + afterASecond, now) == now + 1s);
    clock.setSpeed(1024, now + 1s);
    QCOMPARE(clock.position(now + 2s), StartMs + afterASecond + 1000);
    clock.setRunning(false, now + 2s);
    QCOMPARE(clock.position(now + 9s), StartMs + afterASecond + 1000);
}

void tst_playback::trackKnowsItsPieces()
{
    const TrackPiece first{"a", 1000, 2000}, second{"b", 2000, 3000}, far{"c", 9000, 9500};
    const SegmentTrack track({first, second, far});
    QCOMPARE(track.at(2000)->path, QString("b"));
    QVERIFY(!track.at(999) && !track.at(3000));
    QCOMPARE(track.following(first)->path, QString("b"));
    QVERIFY(!track.following(second) && !track.following(far));
}

void tst_playback::seeksToThePicture_data()
{
    QTest::addColumn<int>("reordered");
    QTest::addColumn<qint64>("offsetMs");
    QTest::addColumn<int>("number");
    for (const int reordered : {0, 2}) {
        const QByteArray kind = reordered ? ", reordered" : "";
        QTest::newRow("a key frame" + kind) << reordered << 5 * TestVideo::StepMs << 5;
        QTest::newRow("just before a key frame" + kind) << reordered << 9 * TestVideo::StepMs << 9;
        QTest::newRow("behind the last picture" + kind) << reordered << PieceMs - 1 << 19;
    }
}

void tst_playback::seeksToThePicture()
{
    QFETCH(int, reordered);
    QFETCH(qint64, offsetMs);
    QFETCH(int, number);
    TestVideo::Recipe recipe{Pictures};
    recipe.reordered = reordered;
    const auto track = std::make_shared<SegmentTrack>(QVector<TrackPiece>{piece("a.mkv", StartMs, recipe)});
    PlayGroup group;
    const std::unique_ptr<ArchivePlayer> player(group.add(track));
    player->start();
    group.seek(StartMs + offsetMs);
    QTRY_VERIFY(player->frame());
    QCOMPARE(TestVideo::number(player->frame()->image()), number);
    QVERIFY(qAbs(player->frame()->wallMs - StartMs - offsetMs) <= TestVideo::StepMs);
}

void tst_playback::showsNothingFromBeforeASeek()
{
    const qint64 wantedMs = StartMs + 15 * TestVideo::StepMs;
    PlayGroup group;
    const std::unique_ptr<ArchivePlayer> player(
        group.add(std::make_shared<SegmentTrack>(QVector<TrackPiece>{piece("a.mkv", StartMs)})));
    QVector<qint64> shown;
    connect(player.get(), &VideoSource::frameReady, this, [&] { shown.append(player->frame()->wallMs); });
    player->start();
    group.seek(StartMs);
    // The picture's event stays in the queue.
    const QDeadlineTimer deadline(10'000);
    while (!player->frame() && !deadline.hasExpired())
        QThread::yieldCurrentThread();
    group.seek(wantedMs);
    QTRY_VERIFY(!shown.isEmpty());
    QCOMPARE(shown.first(), wantedMs);
}

void tst_playback::seeksFarFromAKeyFrame()
{
    TestVideo::Recipe recipe{75};
    recipe.keyDistance = 75;
    recipe.reordered = 2;
    const TrackPiece one = piece("long.mkv", StartMs, recipe);
    PlayGroup group;
    const std::unique_ptr<ArchivePlayer> player(
        group.add(std::make_shared<SegmentTrack>(QVector<TrackPiece>{one})));
    player->start();
    for (const qint64 number : {60, 59, 61, 74, 1}) {
        group.seek(StartMs + number * TestVideo::StepMs);
        QTRY_VERIFY(player->frame() && player->frame()->wallMs == StartMs + number * TestVideo::StepMs);
    }
}

void tst_playback::playsOverSeamAndGap()
{
    const qint64 farMs = StartMs + 3'600'000;
    const auto track = std::make_shared<SegmentTrack>(QVector<TrackPiece>{
        piece("a.mkv", StartMs), piece("b.mkv", StartMs + PieceMs), piece("c.mkv", farMs)});
    PlayGroup group;
    QSignalSpy ended(&group, SIGNAL(ended()));
    const std::unique_ptr<ArchivePlayer> player(group.add(track));
    QVector<qint64> shown;
    connect(player.get(), &VideoSource::frameReady, this, [&] { shown.append(player->frame()->wallMs); });
    player->start();
    group.seek(StartMs);
    group.play(true);
    QTRY_COMPARE(ended.count(), 1);
    QVERIFY(std::is_sorted(shown.begin(), shown.end()));
    const auto between = [&](qint64 from, qint64 to) {
        return std::count_if(shown.begin(), shown.end(), [=](qint64 ms) { return ms >= from && ms < to; });
    };
    QVERIFY(between(StartMs, StartMs + PieceMs) > 1);
    QVERIFY(between(StartMs + PieceMs, StartMs + 2 * PieceMs) > 1);
    QVERIFY(between(farMs, farMs + PieceMs) > 1);
    QCOMPARE(between(StartMs + 2 * PieceMs, farMs), 0);
    QVERIFY(!group.clock().isRunning());
}

void tst_playback::playersStayInStep()
{
    PlayGroup group;
    group.seek(StartMs);
    std::vector<std::unique_ptr<ArchivePlayer>> players;
    for (int i = 0; i < 4; ++i) {
        const TrackPiece one = piece(QString("%1.mkv").arg(i), StartMs - i * TestVideo::StepMs);
        players.emplace_back(group.add(std::make_shared<SegmentTrack>(QVector<TrackPiece>{one})));
        players.back()->start();
    }
    group.seek(StartMs + 2 * TestVideo::StepMs);
    for (int i = 0; i < 4; ++i) {
        QTRY_VERIFY(players[i]->frame());
        QCOMPARE(players[i]->frame()->wallMs, StartMs + 2 * TestVideo::StepMs);
        QCOMPARE(TestVideo::number(players[i]->frame()->image()), i + 2);
    }
}

void tst_playback::brokenFileIsTold()
{
    const QString path = m_directory->filePath("broken.mkv");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no video") > 0);
    file.close();
    const TrackPiece broken{path, StartMs, StartMs + 1000};
    PlayGroup group;
    const std::unique_ptr<ArchivePlayer> player(
        group.add(std::make_shared<SegmentTrack>(QVector<TrackPiece>{broken})));
    group.seek(StartMs);
    player->start();
    group.play(true);
    QTRY_COMPARE(player->state(), SourceState::Lost);
    QVERIFY(player->reason().contains("cannot open"));
    QCOMPARE(SegmentReader::duration(path), qint64(0));
}

void tst_playback::clipsWithoutEncoding_data()
{
    QTest::addColumn<qint64>("fromMs");
    QTest::addColumn<qint64>("toMs");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("end");
    QTest::newRow("one piece, from the key frame before") << StartMs + 280 << StartMs + 600 << 7 << 15;
    QTest::newRow("over the gap") << StartMs + 600 << StartMs + 60'000 + 200 << 15 << Pictures + 5;
    QTest::newRow("all") << qint64(0) << StartMs * 2 << 0 << 2 * Pictures;
    QTest::newRow("nothing there") << StartMs + 10'000 << StartMs + 20'000 << 0 << 0;
}

void tst_playback::clipsWithoutEncoding()
{
    QFETCH(qint64, fromMs);
    QFETCH(qint64, toMs);
    QFETCH(int, first);
    QFETCH(int, end);
    TestVideo::Recipe recipe{Pictures};
    recipe.hasSound = true;
    const QVector<TrackPiece> pieces{piece("a.mkv", StartMs, recipe),
                                     piece("b.mkv", StartMs + 60'000, recipe)};
    first = keyBefore(pieces[0].path, first);
    const int count = end - first;
    const QVector<QByteArray> all = contents(pieces[0].path) + contents(pieces[1].path);
    const QString path = m_directory->filePath("clip.mkv");
    QString error;
    QCOMPARE(writeClip(pieces, fromMs, toMs, path, &error), count > 0);
    QCOMPARE(error.isEmpty(), count > 0);
    QCOMPARE(QFile::exists(path), count > 0);
    if (count == 0)
        return;
    QCOMPARE(contents(path), all.mid(first, count));
    const QVector<QByteArray> sound = contents(pieces[0].path, true) + contents(pieces[1].path, true);
    QCOMPARE(contents(path, true), sound.mid(first, count));
    QVERIFY(qAbs(SegmentReader::duration(path) - count * TestVideo::StepMs) <= 2 * TestVideo::StepMs);
}

void tst_playback::sinkCutsAtKeyFrames()
{
    TestVideo::Recipe recipe{Pictures};
    recipe.hasSound = true;
    const TrackPiece source = piece("source.mkv", 0, recipe);
    Archive archive(SegmentReader::duration);
    QString error;
    QVERIFY(archive.open(m_directory->path() + "/archive", &error));
    int calls = 0;
    SegmentSink sink(
        this, [&calls] { ++calls; }, archive, "Gate", 300);
    const std::vector<PacketPtr> packets = TestVideo::packets(source.path, StartMs);
    for (const PacketPtr& packet : packets)
        sink.take(packet);
    sink.close();
    QVector<QByteArray> written, sound;
    qint64 end = StartMs;
    const auto parts = sink.takeFinished();
    QVERIFY(parts.size() >= 2);
    for (const FinishedPart& part : parts) {
        QCOMPARE(part.startMs, end);
        QVERIFY(TestVideo::packets(part.path).front()->isKey());
        end = part.endMs;
        written += contents(part.path);
        sound += contents(part.path, true);
    }
    QCOMPARE(sound, contents(source.path, true));
    QCOMPARE(written, contents(source.path));
    QVERIFY(sink.takeError().isEmpty());
    QTRY_VERIFY(calls > 0);
}

void tst_playback::sinkLeavesGaps()
{
    Archive archive(SegmentReader::duration);
    QString error;
    QVERIFY(archive.open(m_directory->path() + "/archive", &error));
    SegmentSink sink(
        this, [] {}, archive, "Gate", 10'000);
    const QString path = piece("source.mkv", 0).path;
    // A stream that was away for an hour, and a clock that was set back.
    const qint64 starts[] = {StartMs, StartMs + 3'600'000, StartMs - 60'000};
    for (const qint64 start : starts) {
        for (const PacketPtr& packet : TestVideo::packets(path, start))
            sink.take(packet);
    }
    sink.close();
    const auto parts = sink.takeFinished();
    QCOMPARE(int(parts.size()), 3);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(parts[i].startMs, starts[i]);
        QVERIFY(parts[i].endMs <= starts[i] + PieceMs + 1000);
    }
}

void tst_playback::recordsACamera()
{
    Archive archive(SegmentReader::duration);
    QString error;
    QVERIFY(archive.open(m_directory->path(), &error));
    QSharedPointer<VideoSource> source(new SyntheticCamera(SourceAddress::synthetic(1)));
    {
        ArchiveRecorder recorder(&archive, 1 << 30, 500);
        QSignalSpy recorded(&recorder, SIGNAL(recorded(QString)));
        recorder.record("Gate", source);
        source->start();
        QTRY_VERIFY_WITH_TIMEOUT(recorded.count() >= 1, 20'000);
        recorder.setAlarm("Nobody", true);
        recorder.setAlarm("Gate", true);
        recorder.setAlarm("Gate", true);
        QTRY_VERIFY_WITH_TIMEOUT(recorded.count() >= 3, 20'000);
        const int before = recorded.count();
        recorder.setAlarm("Gate", false);
        recorder.setAlarm("Gate", false);
        // None if the piece before ended in this very millisecond.
        QVERIFY(recorded.count() <= before + 1);
    }
    const QVector<Segment> segments = archive.index().segments("Gate", 0, StartMs * 2);
    QVERIFY(segments.size() >= 2);
    QCOMPARE(segments[0].endMs, segments[1].startMs);
    for (int i = 0; i < 2; ++i)
        QVERIFY(SegmentReader::duration(archive.fullPath(segments[i])) > 0);
    // An alarm is known as far as recordings are, in pieces that touch.
    QVector<Span> alarms = archive.index().spans("Gate", 0, StartMs * 2);
    const auto isMotion = [](const Span& span) { return span.kind == Span::Motion; };
    alarms.erase(std::remove_if(alarms.begin(), alarms.end(), isMotion), alarms.end());
    QVERIFY(alarms.size() >= 2);
    QVERIFY(alarms[0].endMs > alarms[0].startMs);
    QCOMPARE(alarms[1].startMs, alarms[0].endMs);
    QVERIFY(archive.index().spans("Nobody", 0, StartMs * 2).isEmpty());
    QVERIFY(QDir(m_directory->path()).entryList({"*.part"}).isEmpty());
    source.clear();
}

void tst_playback::tellsOnceOfAnUnwritableArchive()
{
    Archive archive(SegmentReader::duration);
    QString error;
    QVERIFY(archive.open(m_directory->path(), &error));
    QFile obstacle(m_directory->filePath("Gate"));
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    QSharedPointer<VideoSource> source(new SyntheticCamera(SourceAddress::synthetic(1)));
    ArchiveRecorder recorder(&archive, 1 << 30, 100);
    QSignalSpy failed(&recorder, SIGNAL(failed(QString)));
    recorder.record("Gate", source);
    source->start();
    QTRY_COMPARE(failed.count(), 1);
    QVERIFY(!failed[0][0].toString().contains('\n'));
    const quint64 serial = source->frame()->serial;
    // Long enough for two more key frames.
    QTRY_VERIFY_WITH_TIMEOUT(source->frame()->serial > serial + 60, 20'000);
    QCOMPARE(failed.count(), 1);
    recorder.stop();
    source.clear();
}

void tst_playback::goesOnWhenTheDiskIsFull()
{
    Archive archive(SegmentReader::duration);
    QString error;
    QVERIFY(archive.open(m_directory->path(), &error));
    QSharedPointer<VideoSource> source(new SyntheticCamera(SourceAddress::synthetic(1)));
    ArchiveRecorder recorder(&archive, 1 << 30, 500);
    QSignalSpy failed(&recorder, SIGNAL(failed(QString)));
    QSignalSpy recorded(&recorder, SIGNAL(recorded(QString)));
    {
        // A file that may grow no further fails as one on a full disk does.
        const FileSizeLimit full(2000);
        recorder.record("Gate", source);
        source->start();
        QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, 20'000);
        QVERIFY(!failed[0][0].toString().contains('\n'));
        const quint64 serial = source->frame()->serial;
        QTRY_VERIFY_WITH_TIMEOUT(source->frame()->serial > serial + 40, 20'000);
        QCOMPARE(failed.count(), 1);
    }
    const qint64 roomMs = QDateTime::currentMSecsSinceEpoch();
    const auto after = [&] { return archive.index().segments("Gate", roomMs, StartMs * 2); };
    QTRY_VERIFY_WITH_TIMEOUT(!after().isEmpty(), 20'000);
    QVERIFY(SegmentReader::duration(archive.fullPath(after().first())) > 0);
    recorder.stop();
    source.clear();
}

void tst_playback::makesASample()
{
    Archive archive(SegmentReader::duration);
    QString error;
    QVERIFY(archive.open(m_directory->path(), &error));
    SampleMaker maker(&archive);
    QSignalSpy finished(&maker, SIGNAL(finished()));
    const qint64 end = StartMs + 10'000'000;
    maker.start({"One", "Two"}, StartMs, end, 800);
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, 30'000);
    const QVector<Segment> made = archive.index().segments("Two", StartMs, end);
    QCOMPARE(made.size(), SampleMaker::PiecesPerCamera);
    for (const Segment& segment : made) {
        QVERIFY(segment.sample);
        QVERIFY(qAbs(SegmentReader::duration(archive.fullPath(segment)) - 800) <= 100);
    }
    QVERIFY(!archive.index().spans("One", StartMs, end).isEmpty());
    QCOMPARE(archive.removeSample(), 2 * SampleMaker::PiecesPerCamera);
    QVERIFY(archive.index().spans("One", StartMs, end).isEmpty());
}

int main(int argc, char** argv)
{
    return RunTests<tst_playback, QCoreApplication>(argc, argv);
}

#include "tst_playback.moc"
