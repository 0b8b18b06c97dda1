#include "archive/SegmentTrack.h"
#include "cameras/CameraList.h"
#include "cameras/ClientArchive.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "playback/DayScale.h"
#include "playback/PlaybackNavigator.h"
#include "playback/PlaybackTab.h"

#include <CPaneDeck.h>

#include <QDateTime>
#include <QTimer>

#include <utility>

namespace {

/// What was recorded so soon after a moment is meant too.
constexpr qint64 WantedMs = 15'000;
/// Nearer to now the segments would become too short.
constexpr qint64 LeastBehindMs = 5000;
/// Further back nothing is being written any more.
constexpr qint64 MostBehindMs = 120'000;
/// How long before its known end more of a recording is asked for: it comes with the next key frame.
constexpr qint64 LeastAheadMs = 1000;
constexpr qint64 MostAheadMs = 3000;

} // namespace

void PlaybackTab::showMoment(const CameraRecord& camera, qint64 ms)
{
    m_wanted = &camera;
    m_wantedMs = ms;
    if (m_hasPanes)
        goToWanted();
}

void PlaybackTab::goToWanted()
{
    const CameraRecord* camera = std::exchange(m_wanted, nullptr);
    if (!camera)
        return;
    const QVector<int> panes = panesOf(camera);
    const int pane = panes.value(0, deck()->GetCurrentWnd());
    if (panes.isEmpty() || m_tracks.isFile(pane))
        showCamera(*camera, pane);
    deck()->SetActiveWnd(pane);
    m_scale->showMoment(m_wantedMs);
    const qint64 until = m_wantedMs + WantedMs;
    const auto last = m_archive->segments(camera->name, until, until + 1);
    if (last && last->isEmpty())
        m_archive->cut(camera->name);
    if (playWanted())
        return;
    m_navigator->seekRecordings(m_wantedMs);
    m_isAwaited = true;
    askForMore(camera->name, LeastBehindMs);
}

bool PlaybackTab::playWanted()
{
    const int pane = deck()->GetCurrentWnd();
    const CameraRecord* camera = streams()->cameraAt(pane);
    if (m_tracks.isFile(pane) || !camera)
        return false;
    const auto segments = m_archive->segments(camera->name, m_wantedMs, m_wantedMs + WantedMs);
    if (!segments || segments->isEmpty())
        return false;
    m_navigator->seekRecordings(qMax(m_wantedMs, segments->first().startMs));
    m_tracks.setBackward(pane, false);
    m_tracks.play(pane, true);
    return true;
}

/// What is still being written goes on where the last recording ended.
void PlaybackTab::awaitMore()
{
    tell(word("the recording has ended"));
    const int pane = deck()->GetCurrentWnd();
    const CameraRecord* camera = m_tracks.isFile(pane) ? nullptr : streams()->cameraAt(pane);
    const qint64 end = m_tracks.recordedMoment();
    const auto segments = camera ? m_archive->segments(camera->name, end, end + 1) : std::nullopt;
    if (!segments || !segments->isEmpty())
        return;
    m_wantedMs = end;
    m_isAwaited = true;
    const qint64 wait = end + LeastBehindMs - QDateTime::currentMSecsSinceEpoch();
    askForMore(camera->name, qBound(qint64(0), wait, LeastBehindMs));
}

/// And again: a recording that has not begun yet is not cut.
void PlaybackTab::askForMore(const QString& camera, qint64 afterMs)
{
    QTimer::singleShot(int(afterMs), this, [this, camera, ms = m_wantedMs] {
        const qint64 behind = QDateTime::currentMSecsSinceEpoch() - ms;
        if (!m_isAwaited || m_wantedMs != ms || behind > MostBehindMs)
            return;
        m_archive->cut(camera);
        askForMore(camera, LeastBehindMs);
    });
}

/// The active camera goes on without a break, also while others have more to play.
void PlaybackTab::cutAhead()
{
    const int pane = deck()->GetCurrentWnd();
    const PlaybackClock& clock = m_tracks.clockAt(pane);
    const qint64 now = clock.position();
    const qint64 behind = QDateTime::currentMSecsSinceEpoch() - now;
    const qint64 ahead = qBound(LeastAheadMs, behind - LeastBehindMs, MostAheadMs);
    const auto track = m_tracks.trackAt(pane);
    const auto piece = track && clock.isRunning() && !clock.isBackward() ? track->at(now) : std::nullopt;
    if (!piece || piece->endMs > now + ahead || piece->endMs == m_cutMs || behind < LeastBehindMs + ahead)
        return;
    m_cutMs = piece->endMs;
    if (!track->following(*piece) && !track->nextStart(now))
        m_archive->cut(streams()->cameraAt(pane)->name);
}
