#include "cameras/CameraList.h"
#include "cameras/ClientArchive.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "playback/DayScale.h"
#include "playback/PlaybackNavigator.h"
#include "playback/PlaybackTab.h"

#include <CPaneDeck.h>

#include <QDateTime>

#include <utility>

namespace {

/// What was recorded so soon after a moment is meant too.
constexpr qint64 WantedMs = 15'000;
/// Nearer to now the segments would become too short.
constexpr qint64 LeastBehindMs = 5000;

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
    if (!camera || QDateTime::currentMSecsSinceEpoch() - end < LeastBehindMs)
        return;
    const auto segments = m_archive->segments(camera->name, end, end + 1);
    if (!segments || !segments->isEmpty())
        return;
    m_archive->cut(camera->name);
    m_wantedMs = end;
    m_isAwaited = true;
}
