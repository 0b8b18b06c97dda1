#include "playback/PlaybackNavigator.h"

#include "archive/DayColors.h"
#include "archive/PictureSteps.h"
#include "cameras/CameraList.h"
#include "cameras/ClientArchive.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "panes/PaneClips.h"
#include "panes/PaneTracks.h"
#include "playback/DayScale.h"
#include "playback/MarkModel.h"
#include "source/VideoSource.h"

#include <CPaneDeck.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QPointer>
#include <QThreadPool>

namespace {

constexpr qint64 SkipMs = 10'000;
/// While it plays, the mark before the present one is the one meant, not the one just left.
constexpr qint64 MarkMarginMs = 2000;
/// A picture that is older than this is not the one at the clock's moment.
constexpr qint64 ShownMs = 2000;

/// What the list has of that day: what counts as one there is one here.
QVector<MarkModel::Mark> marksOn(const QDate& day, const ClientArchive& archive, const QString& camera)
{
    const auto spans = archive.spans(camera, dayStart(day), dayStart(day.addDays(1)));
    return MarkModel::marksOf({{camera, 0, {}, spans.value_or(QVector<Span>())}});
}

std::optional<Span> markAfter(const ClientArchive& archive, const QString& camera, qint64 ms)
{
    auto span = archive.spanAfter(camera, ms);
    while (span) {
        const QDate day = QDateTime::fromMSecsSinceEpoch(span->startMs).date();
        const QVector<MarkModel::Mark> marks = marksOn(day, archive, camera);
        if (marks.isEmpty())
            return span;
        for (const MarkModel::Mark& mark : marks) {
            if (mark.span.startMs > ms)
                return mark.span;
        }
        // All that begins on that day goes on with what began before.
        span = archive.spanAfter(camera, dayStart(day.addDays(1)) - 1);
    }
    return std::nullopt;
}

std::optional<Span> markBefore(const ClientArchive& archive, const QString& camera, qint64 ms)
{
    auto span = archive.spanBefore(camera, ms);
    if (!span)
        return std::nullopt;
    const QDate day = QDateTime::fromMSecsSinceEpoch(span->startMs).date();
    for (const MarkModel::Mark& mark : marksOn(day, archive, camera)) {
        if (mark.span.startMs < ms)
            span = mark.span;
    }
    return span;
}

} // namespace

PlaybackNavigator::PlaybackNavigator(CPaneDeck* deck, DeckStreams* streams, PaneTracks* tracks,
                                     DayScale* scale, const ClientArchive* archive, QObject* parent)
    : QObject(parent), m_deck(deck), m_streams(streams), m_tracks(tracks), m_scale(scale), m_archive(archive)
{
}

int PlaybackNavigator::pane() const
{
    return m_deck->GetCurrentWnd();
}

qint64 PlaybackNavigator::now() const
{
    return m_tracks->clockAt(pane()).position();
}

void PlaybackNavigator::obey(PlaybackKeys::Command command)
{
    if (command == PlaybackKeys::Export)
        Q_EMIT exportAsked();
    if (command == PlaybackKeys::Export || !m_streams->cameraAt(pane()))
        return;
    const PlaybackClock& clock = m_tracks->clockAt(pane());
    const bool isForward = command == PlaybackKeys::Forward;
    if (command == PlaybackKeys::PlayOrPause)
        m_tracks->play(pane(), !clock.isRunning());
    else if (command == PlaybackKeys::TurnRound)
        turnRound();
    else if (command == PlaybackKeys::Faster || command == PlaybackKeys::Slower)
        changeSpeed(pane(), command == PlaybackKeys::Faster ? clock.speed() * 2 : clock.speed() / 2);
    else if (command == PlaybackKeys::DayBegin)
        goToDayBegin();
    else if (command == PlaybackKeys::DayEnd)
        goToDayEnd();
    else if (command == PlaybackKeys::NextMark || command == PlaybackKeys::PreviousMark)
        goToMark(command == PlaybackKeys::NextMark);
    else if (clock.isRunning())
        skip(isForward ? SkipMs : -SkipMs);
    else
        step(isForward);
}

void PlaybackNavigator::turnRound()
{
    if (!m_streams->cameraAt(pane()))
        return;
    const bool isBackward = !m_tracks->clockAt(pane()).isBackward();
    m_tracks->setBackward(pane(), isBackward);
    m_tracks->play(pane(), true);
    Q_EMIT told(isBackward ? word("plays backwards") : word("plays forwards"));
}

void PlaybackNavigator::stop(int pane)
{
    m_tracks->play(pane, false);
    m_tracks->setBackward(pane, false);
    changeSpeed(pane, PlaybackClock::NormalSpeed);
    if (m_tracks->isFile(pane))
        m_tracks->seekFile(pane, 0);
    else
        seekDay();
}

void PlaybackNavigator::changeSpeed(int pane, int speed)
{
    m_tracks->setSpeed(pane, speed);
    Q_EMIT told(word("pane %1 speed %2").arg(pane).arg(m_deck->GetSpeedInfo()));
}

void PlaybackNavigator::seek(qint64 ms)
{
    m_lastStepMs.reset();
    Q_EMIT sought(ms);
    m_tracks->seek(pane(), ms);
}

void PlaybackNavigator::seekRecordings(qint64 ms)
{
    m_lastStepMs.reset();
    Q_EMIT sought(ms);
    m_tracks->seekRecordings(ms);
}

void PlaybackNavigator::seekChosenTime()
{
    const qint64 moment = m_scale->chosenMoment();
    Q_EMIT told(word("seeks %1").arg(PaneClips::clockText(moment)));
    seekRecordings(moment);
}

void PlaybackNavigator::playChosenTime(int pane)
{
    seekChosenTime();
    if (m_streams->cameraAt(pane) && !m_tracks->isFile(pane))
        m_tracks->play(pane, true);
}

void PlaybackNavigator::seekDay()
{
    m_tracks->follow(m_scale->dayBegin());
    seekRecordings(m_scale->firstMoment(m_tracks->trackAt(pane()).get()));
}

void PlaybackNavigator::skip(qint64 ms)
{
    const auto track = m_tracks->trackAt(pane());
    qint64 moment = now() + ms;
    const auto earlier = track && ms < 0 && !track->at(moment) ? track->before(moment) : std::nullopt;
    // In the gap it would only come back at once.
    if (earlier)
        moment = qMax(earlier->startMs, earlier->endMs + ms);
    seek(moment);
}

qint64 PlaybackNavigator::shownMoment() const
{
    const qint64 moment = now();
    const VideoSource* source = m_streams->sourceAt(pane());
    const FramePtr frame = source ? source->frame() : nullptr;
    // After a step the picture may not have come yet, but it is known.
    if (!frame || m_lastStepMs == moment || frame->wallMs > moment || moment - frame->wallMs > ShownMs)
        return moment;
    return frame->wallMs;
}

void PlaybackNavigator::step(bool forward)
{
    const auto track = m_tracks->trackAt(pane());
    if (!track || m_isStepping)
        return;
    m_isStepping = true;
    const QPointer<PlaybackNavigator> alive(this);
    QThreadPool::globalInstance()->start([alive, track, forward, pane = pane(), from = shownMoment()] {
        const auto moment = forward ? pictureAfter(*track, from) : pictureBefore(*track, from);
        QMetaObject::invokeMethod(qApp, [alive, pane, moment] {
            if (alive)
                alive->finishStep(pane, moment);
        });
    });
}

void PlaybackNavigator::finishStep(int steppedPane, std::optional<qint64> moment)
{
    m_isStepping = false;
    if (steppedPane != pane())
        return;
    if (!moment) {
        Q_EMIT told(word("No more pictures there"));
        return;
    }
    seek(*moment);
    m_lastStepMs = moment;
}

void PlaybackNavigator::goToDayBegin()
{
    if (m_tracks->isFile(pane()))
        seek(0);
    else
        seekDay();
}

void PlaybackNavigator::goToDayEnd()
{
    if (m_tracks->isFile(pane())) {
        seek(m_tracks->fileLength(pane()) - 1);
        return;
    }
    const CameraRecord* camera = m_streams->cameraAt(pane());
    const auto segments =
        camera ? m_archive->segments(camera->name, m_scale->dayBegin(), m_scale->dayEnd()) : std::nullopt;
    qint64 last = 0;
    for (const Segment& segment : segments.value_or(QVector<Segment>()))
        last = qMax(last, segment.endMs);
    if (last > 0)
        seek(qMin(last, m_scale->dayEnd()) - 1);
    else
        Q_EMIT told(word("No recording on this day"));
}

void PlaybackNavigator::goToMark(bool next)
{
    const CameraRecord* camera = m_tracks->isFile(pane()) ? nullptr : m_streams->cameraAt(pane());
    if (!camera)
        return;
    const qint64 margin = m_tracks->clockAt(pane()).isRunning() ? MarkMarginMs : 0;
    const auto mark = next ? markAfter(*m_archive, camera->name, now())
                           : markBefore(*m_archive, camera->name, now() - margin);
    if (!mark) {
        Q_EMIT told(next ? word("No later motion or alarm") : word("No earlier motion or alarm"));
        return;
    }
    const QString moment = PaneClips::clockText(mark->startMs);
    Q_EMIT told(mark->kind == Span::Alarm ? word("alarm at %1").arg(moment)
                                          : word("motion at %1").arg(moment));
    seek(mark->startMs);
}
