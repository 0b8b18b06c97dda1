#include "archive/PlayGroup.h"
#include "engine/TestVideo.h"
#include "sound/SoundQueue.h"
#include "source/SourceThread.h"
#include "source/VideoSource.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <QTemporaryDir>

#include <cmath>

namespace {

using namespace std::chrono_literals;
using Clock = SoundQueue::Clock;

constexpr qint64 StartMs = 1'700'000'000'000;
constexpr int Pictures = 20;
/// What a single channel keeps of its level on each of two.
const double HalfPower = std::sqrt(0.5);

/// 10 ms.
constexpr size_t Piece = Sound::Rate / 100;

/// Notes the number that each piece's level tells, and when it is due.
class Ear : public SoundSink
{
public:
    struct Note
    {
        int number;
        Clock::time_point due;
        bool isWhole; ///< it lasts as long as its picture
    };

    void take(Sound sound) override
    {
        const std::lock_guard lock(m_mutex);
        const size_t middle = sound.samples.size() / 4 * 2;
        const double level = sound.samples[middle] / HalfPower / TestVideo::SoundStep;
        const size_t picture = Sound::Channels * Sound::Rate / TestVideo::PicturesPerSecond;
        m_notes.append({qRound(level), sound.due, sound.samples.size() + 200 > picture});
    }

    void hush() override { ++hushes; }

    QVector<Note> notes() const
    {
        const std::lock_guard lock(m_mutex);
        return m_notes;
    }

    std::atomic<int> hushes{0};

private:
    mutable std::mutex m_mutex;
    QVector<Note> m_notes;
};

/// Each piece of 10 ms as the one level that it has, -1 if it has several.
QVector<int> levels(SoundQueue& queue, int pieces, Clock::time_point now)
{
    QVector<int> found;
    std::vector<int16_t> samples(Piece * Sound::Channels);
    for (int i = 0; i < pieces; ++i) {
        queue.fill(samples.data(), Piece, now + i * 10ms);
        const bool isOne =
            std::adjacent_find(samples.begin(), samples.end(), std::not_equal_to<>()) == samples.end();
        found.append(isOne ? samples[0] : -1);
    }
    return found;
}

} // namespace

class tst_sound : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void playsAtItsTime_data();
    void playsAtItsTime();
    void isAsLoudAsAsked();
    void survivesAnySize();
    void recordingIsHeardWithItsPictures();
    void recordingIsSilent_data();
    void recordingIsSilent();
    void fileIsHeardOverItsLoop();

private:
    std::shared_ptr<SegmentTrack> track() const
    {
        return std::make_shared<SegmentTrack>(
            QVector<TrackPiece>{{m_path, StartMs, StartMs + Pictures * TestVideo::StepMs}});
    }

    QTemporaryDir m_directory;
    QString m_path = m_directory.filePath("sound.mkv");
    std::shared_ptr<Ear> m_ear;
};

void tst_sound::initTestCase()
{
    TestVideo::Recipe recipe{Pictures};
    recipe.hasSound = true;
    QVERIFY(TestVideo::write(m_path, recipe));
}

void tst_sound::cleanup()
{
    QVERIFY(waitForSourceThreads(PatienceMs));
    DeckTestCase::cleanup();
}

void tst_sound::playsAtItsTime_data()
{
    using Times = QVector<int>;
    // Pieces of 10 ms with the levels 1, 2, 3 ...; when they are due, and what is heard from 120 ms on.
    QTest::addColumn<Times>("dueMs");
    QTest::addColumn<Times>("heard");
    QTest::newRow("nothing") << Times{} << Times{0, 0, 0};
    QTest::newRow("one after the other") << Times{0, 10, 20} << Times{1, 2, 3, 0};
    QTest::newRow("a gap") << Times{0, 110} << Times{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 0};
    QTest::newRow("joined over a jitter") << Times{0, 40, 0} << Times{1, 2, 3, 0};
    QTest::newRow("begins later") << Times{20, 30} << Times{0, 0, 1, 2, 0};
    QTest::newRow("late, but not too late") << Times{-150, -140} << Times{1, 2, 0};
    QTest::newRow("too late") << Times{-300, -290, 0} << Times{3, 0};
    QTest::newRow("far away") << Times{1'000'000} << Times{0, 0, 0};
}

void tst_sound::playsAtItsTime()
{
    QFETCH(QVector<int>, dueMs);
    QFETCH(QVector<int>, heard);
    const Clock::time_point start = Clock::now();
    SoundQueue queue;
    int level = 0;
    for (const int ms : dueMs)
        queue.add({std::vector<int16_t>(Piece * Sound::Channels, int16_t(++level)), start + ms * 1ms});
    QCOMPARE(levels(queue, heard.size(), start + SoundQueue::Delay), heard);
}

void tst_sound::isAsLoudAsAsked()
{
    const Clock::time_point start = Clock::now();
    SoundQueue queue;
    int before = -1;
    for (const int volume : {-5, 1, 5, 10, 99}) {
        queue.setVolume(volume);
        queue.add({std::vector<int16_t>(Piece * Sound::Channels, 10'000), start});
        const int level = levels(queue, 1, start + SoundQueue::Delay).first();
        QVERIFY2(level > before || volume == 99, qPrintable(QString::number(volume)));
        before = level;
    }
    QCOMPARE(before, 10'000);
    queue.add({std::vector<int16_t>(Piece * Sound::Channels, 10'000), start});
    queue.clear();
    QCOMPARE(levels(queue, 2, start + SoundQueue::Delay), QVector<int>({0, 0}));
}

void tst_sound::survivesAnySize()
{
    const Clock::time_point start = Clock::now();
    SoundQueue queue;
    for (const size_t size : {0, 1, 2, 3, 7, 100'001})
        queue.add({std::vector<int16_t>(size, 5), start});
    for (int i = 0; i < 10'000; ++i)
        queue.add({std::vector<int16_t>(2, 5), start + 3600s});
    levels(queue, 300, start);
    queue.fill(nullptr, 0, start);
}

void tst_sound::recordingIsHeardWithItsPictures()
{
    PlayGroup group;
    const std::unique_ptr<ArchivePlayer> player(group.add(track()));
    m_ear = std::make_shared<Ear>();
    player->setSoundSink(m_ear);
    group.seek(StartMs);
    player->start();
    QTRY_VERIFY(player->hasSound());
    group.play(true);
    QTRY_VERIFY(m_ear->notes().size() >= Pictures - 2);
    const Clock::time_point first = group.clock().timeOf(StartMs);
    for (const Ear::Note& note : m_ear->notes()) {
        const auto away = note.due - first - note.number * TestVideo::StepMs * 1ms;
        QVERIFY2(std::chrono::abs(away) < 10ms, qPrintable(QString::number(note.number)));
        QVERIFY(note.isWhole);
    }
    const int hushes = m_ear->hushes;
    group.play(false);
    QVERIFY(m_ear->hushes > hushes);
}

void tst_sound::recordingIsSilent_data()
{
    QTest::addColumn<int>("speed");
    QTest::addColumn<bool>("isHeard");
    QTest::newRow("at double speed") << 2048 << true;
    QTest::newRow("at half speed") << 512 << true;
    QTest::newRow("while nobody hears it") << 1024 << false;
}

void tst_sound::recordingIsSilent()
{
    QFETCH(int, speed);
    QFETCH(bool, isHeard);
    PlayGroup group;
    const std::unique_ptr<ArchivePlayer> player(group.add(track()));
    m_ear = std::make_shared<Ear>();
    player->setSoundSink(m_ear);
    if (!isHeard)
        player->setSoundSink(nullptr);
    group.setSpeed(speed);
    group.seek(StartMs);
    group.play(true);
    player->start();
    QTRY_COMPARE(player->state(), SourceState::Ended);
    QVERIFY(m_ear->notes().isEmpty());
}

void tst_sound::fileIsHeardOverItsLoop()
{
    VideoSource source(TestVideo::player(m_path));
    m_ear = std::make_shared<Ear>();
    source.setSoundSink(m_ear);
    source.start();
    QTRY_VERIFY(m_ear->notes().size() > 2 * Pictures);
    const QVector<Ear::Note> notes = m_ear->notes();
    for (int i = 1; i < notes.size(); ++i) {
        QVERIFY(notes[i].number == notes[i - 1].number + 1 || notes[i].number <= 1);
        QVERIFY(notes[i].due > notes[i - 1].due);
    }
}

int main(int argc, char** argv)
{
    return RunTests<tst_sound, QCoreApplication>(argc, argv);
}

#include "tst_sound.moc"
