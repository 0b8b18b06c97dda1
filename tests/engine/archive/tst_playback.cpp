#include "archive/ClipWriter.h"
#include "archive/PlayGroup.h"
#include "archive/SegmentReader.h"
#include "engine/TestVideo.h"
#include "source/SourceThread.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <QDeadlineTimer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThread>

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
    void playsBackwards_data();
    void playsBackwards();
    void playersStayInStep();
    void brokenFileIsTold();
    void clipsWithoutEncoding_data();
    void clipsWithoutEncoding();

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
    QVERIFY(waitForSourceThreads(PatienceMs));
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

    SegmentTrack known({first});
    known.setPieces({first}, 60'000);
    QCOMPARE(known.nextStart(1000), std::make_optional<qint64>(60'000));
    QVERIFY(!known.nextStart(60'000));

    // The clock was set back by half a minute while a camera was recorded.
    const QVector<TrackPiece> passes{{"a", 0, 60'000},
                                     {"A", 30'000, 90'000},
                                     {"b", 60'000, 120'000},
                                     {"B", 90'000, 150'000},
                                     {"within", 100'000, 101'000}};
    const SegmentTrack twice(passes);
    const QPair<qint64, const char*> shown[] = {{29'999, "a"}, {30'000, "A"},       {89'999, "b"},
                                                {90'000, "B"}, {100'500, "within"}, {101'000, "B"},
                                                {149'999, "B"}};
    for (const auto& [ms, path] : shown)
        QCOMPARE(twice.at(ms)->path, QString(path));
    QCOMPARE(twice.following(passes[0])->path, QString("b"));
    QCOMPARE(twice.following(passes[1])->path, QString("B"));
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

void tst_playback::playsBackwards_data()
{
    QTest::addColumn<int>("reordered");
    QTest::addColumn<int>("keyDistance");
    QTest::addColumn<int>("speed");
    QTest::addColumn<int>("least"); ///< pictures, of three times twenty
    QTest::newRow("picture by picture") << 0 << 5 << 1024 << 35;
    QTest::newRow("reordered") << 2 << 5 << 1024 << 35;
    QTest::newRow("one key frame") << 0 << 100 << 1024 << 25;
    QTest::newRow("key frames alone") << 0 << 5 << 4096 << 6;
}

void tst_playback::playsBackwards()
{
    QFETCH(int, reordered);
    QFETCH(int, keyDistance);
    QFETCH(int, speed);
    QFETCH(int, least);
    TestVideo::Recipe recipe{Pictures};
    recipe.reordered = reordered;
    recipe.keyDistance = keyDistance;
    const qint64 farMs = StartMs + 3'600'000;
    PlayGroup group;
    const std::unique_ptr<ArchivePlayer> player(group.add(
        std::make_shared<SegmentTrack>(QVector<TrackPiece>{piece("a.mkv", StartMs, recipe),
                                                           piece("b.mkv", StartMs + PieceMs, recipe),
                                                           {m_directory->filePath("c.mkv"), farMs, farMs},
                                                           piece("c.mkv", farMs, recipe)})));
    QSignalSpy begun(&group, &PlayGroup::begun);
    QVector<qint64> shown;
    connect(player.get(), &VideoSource::frameReady, this, [&] {
        const qint64 ms = player->frame()->wallMs;
        const qint64 offset = (ms >= farMs ? ms - farMs : ms - StartMs) % PieceMs;
        QCOMPARE(TestVideo::number(player->frame()->image()), int(offset / TestVideo::StepMs));
        if (shown.isEmpty() || shown.last() != ms)
            shown.append(ms);
    });
    player->start();
    group.setSpeed(speed);
    group.seek(farMs + PieceMs - 1);
    group.setBackward(true);
    group.play(true);
    QTRY_COMPARE(begun.count(), 1);
    QVERIFY(std::is_sorted(shown.rbegin(), shown.rend()));
    QVERIFY2(shown.size() >= least, qPrintable(QString::number(shown.size())));
    QVERIFY(!group.clock().isRunning() && !group.clock().isBackward());
    QTRY_COMPARE(player->frame()->wallMs, StartMs);
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

int main(int argc, char** argv)
{
    return RunTests<tst_playback, QCoreApplication>(argc, argv);
}

#include "tst_playback.moc"
