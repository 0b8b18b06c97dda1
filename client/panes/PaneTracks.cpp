#include "panes/PaneTracks.h"

#include "archive/SegmentReader.h"
#include "cameras/CameraList.h"
#include "cameras/ClientArchive.h"
#include "panes/DeckStreams.h"

#include <CPaneDeck.h>

#include <QFileInfo>

namespace {

/// The end of the scale on which the deck's slider and its signal count.
constexpr int LastProgress = 1000;
/// What is known around the moment that is shown: an archive may hold a year of each camera.
constexpr qint64 BeforeMs = 600'000;
constexpr qint64 AfterMs = 3'600'000;
/// Backwards no longer gap is stepped over.
constexpr qint64 FarBeforeMs = 86'400'000;
/// Even at eight times the speed this is more than a minute.
constexpr qint64 MarginMs = 600'000;

} // namespace

struct PaneTracks::OpenFile
{
    CameraRecord record;
    std::shared_ptr<SegmentTrack> track;
    qint64 lengthMs = 0;
    PlayGroup group;
};

PaneTracks::PaneTracks(CPaneDeck* deck, DeckStreams* streams, const ClientArchive* archive)
    : m_deck(deck), m_streams(streams), m_archive(archive)
{
    streams->setSourceMaker(
        [this](int pane, const CameraRecord& camera, StreamKind) { return makeSource(pane, camera); });
    connect(archive, &ClientArchive::changed, this, &PaneTracks::takeArchive);
    connect(&m_group, &PlayGroup::moved, this, &PaneTracks::follow);
    connect(&m_group, &PlayGroup::lookedBack, this, &PaneTracks::lookBack);
    listenTo(m_group);
}

PaneTracks::~PaneTracks() = default;

void PaneTracks::assignCamera(int pane, const CameraRecord& camera)
{
    clear(pane);
    m_streams->assign(pane, camera);
    m_deck->SetSpeedInfo(pane, m_group.clock().speed());
    m_deck->SetWndBtnState(pane, BTN_PLAY, m_group.clock().isRunning());
}

bool PaneTracks::assignFile(int pane, const QString& path)
{
    const qint64 length = SegmentReader::duration(path);
    if (pane < 0 || length <= 0)
        return false;
    const auto file = QSharedPointer<OpenFile>::create();
    file->record.name = QFileInfo(path).fileName();
    file->track = std::make_shared<SegmentTrack>(QVector<TrackPiece>{{path, 0, length}});
    file->lengthMs = length;
    listenTo(file->group);
    clear(pane);
    m_files.insert(pane, file);
    m_streams->assign(pane, file->record);
    m_deck->SetSpeedInfo(pane, PlaybackClock::NormalSpeed);
    return true;
}

void PaneTracks::clear(int pane)
{
    // The source goes before the clock and the record that it plays by.
    m_streams->clear(pane);
    m_files.remove(pane);
}

void PaneTracks::clearAll()
{
    for (int pane = 0; pane < m_streams->paneCount(); ++pane)
        clear(pane);
}

int PaneTracks::fileProgress(int pane) const
{
    const auto file = m_files.value(pane);
    if (!file)
        return 0;
    const qint64 progress = file->group.clock().position() * LastProgress / file->lengthMs;
    return int(qBound(qint64(0), progress, qint64(LastProgress)));
}

qint64 PaneTracks::fileLength(int pane) const
{
    const auto file = m_files.value(pane);
    return file ? file->lengthMs : 0;
}

std::shared_ptr<const SegmentTrack> PaneTracks::trackAt(int pane)
{
    if (const auto file = m_files.value(pane))
        return file->track;
    const CameraRecord* camera = m_streams->cameraAt(pane);
    return camera ? trackOf(camera->name) : nullptr;
}

void PaneTracks::play(int pane, bool run)
{
    PlayGroup& group = groupAt(pane);
    group.play(run);
    for (int companion : panesOf(group))
        m_deck->SetWndBtnState(companion, BTN_PLAY, run);
}

void PaneTracks::setSpeed(int pane, int speed)
{
    PlayGroup& group = groupAt(pane);
    group.setSpeed(speed);
    for (int companion : panesOf(group))
        m_deck->SetSpeedInfo(companion, group.clock().speed());
}

void PaneTracks::seekFile(int pane, int progress)
{
    if (const auto file = m_files.value(pane))
        file->group.seek(qMin(file->lengthMs * progress / LastProgress, file->lengthMs - 1));
}

void PaneTracks::seek(int pane, qint64 ms)
{
    if (const auto file = m_files.value(pane))
        file->group.seek(qBound(qint64(0), ms, file->lengthMs - 1));
    else
        seekRecordings(ms);
}

void PaneTracks::seekRecordings(qint64 ms)
{
    m_isPlaced = true;
    m_group.seek(ms);
}

QSharedPointer<VideoSource> PaneTracks::makeSource(int pane, const CameraRecord& camera)
{
    PlayGroup& group = groupAt(pane);
    const auto file = m_files.value(pane);
    ArchivePlayer* player = group.add(file ? file->track : trackOf(camera.name));
    const QSharedPointer<VideoSource> source(player, &QObject::deleteLater);
    player->start();
    player->seek(group.clock().position());
    return source;
}

std::shared_ptr<SegmentTrack> PaneTracks::trackOf(const QString& camera)
{
    std::shared_ptr<SegmentTrack>& track = m_tracks[camera];
    if (!track) {
        track = std::make_shared<SegmentTrack>();
        read(camera, *track);
    }
    return track;
}

/// While the index can't be read a track knows what it knew.
void PaneTracks::read(const QString& camera, SegmentTrack& track)
{
    if (auto stretch = m_archive->stretch(camera, m_fromMs, m_toMs))
        track.setPieces(std::move(stretch->pieces), stretch->nextMs);
}

void PaneTracks::follow(qint64 ms)
{
    if (m_fromMs <= ms && ms < m_toMs - MarginMs)
        return;
    readAll(ms - BeforeMs, ms + AfterMs);
}

void PaneTracks::lookBack(qint64 ms)
{
    readAll(ms - FarBeforeMs, ms + MarginMs);
}

void PaneTracks::readAll(qint64 fromMs, qint64 toMs)
{
    m_fromMs = fromMs;
    m_toMs = toMs;
    for (auto it = m_tracks.begin(); it != m_tracks.end(); ++it)
        read(it.key(), *it.value());
}

QVector<TrackPiece> PaneTracks::piecesAt(int pane, qint64 fromMs, qint64 toMs)
{
    const CameraRecord* camera = m_streams->cameraAt(pane);
    if (isFile(pane) || !camera)
        return isFile(pane) ? trackAt(pane)->pieces() : QVector<TrackPiece>();
    return m_archive->stretch(camera->name, fromMs, toMs).value_or(TrackStretch()).pieces;
}

void PaneTracks::takeArchive(const QString& camera)
{
    for (auto it = m_tracks.begin(); it != m_tracks.end(); ++it) {
        if (camera.isEmpty() || it.key() == camera)
            read(it.key(), *it.value());
    }
    // What is on screen may be gone.
    if (camera.isEmpty() && m_isPlaced)
        m_group.seek(m_group.clock().position());
}

PlayGroup& PaneTracks::groupAt(int pane)
{
    const auto file = m_files.value(pane);
    return file ? file->group : m_group;
}

QVector<int> PaneTracks::panesOf(const PlayGroup& group)
{
    QVector<int> panes;
    for (int pane = 0; pane < m_streams->paneCount(); ++pane) {
        if (m_streams->cameraAt(pane) && &groupAt(pane) == &group)
            panes.append(pane);
    }
    return panes;
}

void PaneTracks::listenTo(const PlayGroup& group)
{
    connect(&group, &PlayGroup::ended, this, [this, group = &group] {
        showRest(*group);
        Q_EMIT ended();
    });
    connect(&group, &PlayGroup::begun, this, [this, group = &group] {
        showRest(*group);
        Q_EMIT begun();
    });
}

void PaneTracks::showRest(const PlayGroup& group)
{
    for (int pane : panesOf(group))
        m_deck->SetWndBtnState(pane, BTN_PLAY, 0);
}
