#include "Recorder.h"

#include "FleetDuty.h"
#include "RecorderOptions.h"
#include "archive/ArchiveLock.h"
#include "archive/ArchiveRecorder.h"
#include "cameras/CameraFile.h"
#include "common/OneLine.h"
#include "source/VideoSource.h"
#include "synthetic/CameraSource.h"

#include <QFileInfo>
#include <QTimerEvent>

#include <algorithm>
#include <cstdio>

namespace {

/// How soon a camera that was added is recorded.
constexpr int ListMs = 2000;
constexpr int LookMs = 1000;
/// Looks at a recording that does not go on before it is called stalled: more than a camera takes to begin,
/// and few enough for another recorder to have it within fifteen seconds.
constexpr int MostStillSteps = 8;

} // namespace

void tell(const QString& line)
{
    std::fprintf(stderr, "panedeck-recorder: %s\n", qPrintable(oneLine(line)));
}

Recorder::Recorder(const RecorderOptions& options)
    : m_list(options),
      m_keeper(std::make_unique<ArchiveKeeper>(options.archiveDir, options.limits, nullptr,
                                               options.index ? Telling::Spooled : Telling::Nobody))
{
    if (options.index) {
        m_duty = std::make_unique<FleetDuty>(*options.index, options, this, &m_list);
        m_lookTimer.start(LookMs, this);
    }
    connect(&m_list, &RecordedList::ready, this,
            [this](const QVector<RecordedCamera>& cameras) { setCameras(m_named + cameras); });
    connect(m_keeper.get(), &ArchiveKeeper::roleChanged, this, &Recorder::takeRole);
    connect(m_keeper.get(), &ArchiveKeeper::troubled, this, &tell);
    for (const SourceAddress& address : options.sources)
        m_named.append({address.name(), address});
    setCameras(m_named);
    if (!options.camerasPath.isEmpty() && !options.index) {
        m_listPath = options.camerasPath;
        m_listTimer.start(ListMs, this);
        readList();
    }
    m_keeper->start();
}

Recorder::~Recorder()
{
    // What these finish the index learns of, and the shared one from it.
    m_recorder.reset();
    m_keeper.reset();
}

namespace {

/// Nobody sees it: it is decoded no further than motion detection needs.
QSharedPointer<VideoSource> makeUnseen(const SourceAddress& address, const MotionRule& motion)
{
    QSharedPointer<VideoSource> source(makeCameraSource(address).release());
    source->setWatched(false);
    source->setMotionRule(motion);
    return source;
}

bool isSame(const RecordedCamera& one, const RecordedCamera& other)
{
    return one.name == other.name && one.address.isSameStream(other.address) &&
           one.isOnMotion == other.isOnMotion && one.motion == other.motion;
}

} // namespace

void Recorder::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_lookTimer.timerId()) {
        look();
        m_list.refresh();
    }
    if (event->timerId() != m_listTimer.timerId())
        return;
    if (QFileInfo(m_listPath).lastModified() != m_listTime)
        readList();
    else
        m_list.refresh();
}

/// A list that can't be understood changes nothing.
void Recorder::readList()
{
    QString error;
    m_listTime = QFileInfo(m_listPath).lastModified();
    if (const auto cameras = CameraFile(m_listPath).read(&error))
        m_list.take(*cameras);
    else
        tell(error);
}

void Recorder::add(const RecordedCamera& about)
{
    Camera camera{about, makeUnseen(about.address, about.motion)};
    camera.small = about.address.small() ? makeUnseen(*about.address.small(), about.motion) : camera.source;
    connect(camera.source.data(), &VideoSource::stateChanged, this,
            [this, name = about.name] { tellState(name); });
    m_cameras.push_back(camera);
    if (m_recorder)
        record(m_cameras.back());
}

void Recorder::drop(Camera& camera)
{
    camera.source->disconnect(this);
    if (m_recorder)
        m_recorder->forget(camera.about.name);
}

bool Recorder::isRecorded(const RecordedCamera& camera) const
{
    return std::any_of(m_cameras.begin(), m_cameras.end(),
                       [&camera](const Camera& other) { return isSame(camera, other.about); });
}

void Recorder::setCameras(const QVector<RecordedCamera>& cameras)
{
    const auto goesOn = [&cameras](const Camera& camera) {
        return std::any_of(cameras.begin(), cameras.end(),
                           [&camera](const RecordedCamera& other) { return isSame(camera.about, other); });
    };
    const auto gone = std::stable_partition(m_cameras.begin(), m_cameras.end(), goesOn);
    std::for_each(gone, m_cameras.end(), [this](Camera& camera) { drop(camera); });
    m_cameras.erase(gone, m_cameras.end());
    for (const RecordedCamera& camera : cameras) {
        if (!isRecorded(camera))
            add(camera);
    }
    // Who gave the list may not have known yet whose news these were.
    for (const Camera& camera : m_cameras) {
        if (m_recorder && camera.source->state() == SourceState::Playing)
            Q_EMIT recording(camera.about.name);
    }
}

/// A source that is lost is told once until it plays again.
void Recorder::tellState(const QString& name)
{
    for (Camera& camera : m_cameras) {
        if (camera.about.name != name)
            continue;
        if (m_recorder && camera.source->state() == SourceState::Playing)
            Q_EMIT recording(name);
        const QString reason = camera.source->state() == SourceState::Playing ? "" : camera.source->reason();
        if (camera.source->state() == SourceState::Connecting || camera.toldReason == reason)
            continue;
        camera.toldReason = reason;
        tell(reason.isEmpty() ? name + " plays" : QString("%1: %2").arg(name, reason));
    }
}

/// By steps and not by a clock, which goes on while the whole program stands still.
void Recorder::look()
{
    QStringList names;
    bool isDiskInDoubt = false;
    for (Camera& camera : m_cameras) {
        const qint64 progress = m_recorder ? m_recorder->progress(camera.about.name) : 0;
        const int before = camera.stillSteps;
        camera.stillSteps = std::exchange(camera.progress, progress) == progress ? before + 1 : 0;
        if (before >= MostStillSteps && camera.stillSteps == 0)
            Q_EMIT recording(camera.about.name);
        if (camera.stillSteps < MostStillSteps)
            continue;
        names.append(camera.about.name);
        isDiskInDoubt =
            isDiskInDoubt || (camera.source->state() == SourceState::Playing && !camera.source->isSilent());
    }
    Q_EMIT stalled(names, isDiskInDoubt);
}

void Recorder::takeRole()
{
    const QString& directory = m_keeper->paths()->directory();
    // Who doesn't record needs no camera; who does needs its first picture.
    m_recorder.reset();
    if (m_duty)
        m_duty->end();
    for (const Camera& camera : m_cameras) {
        camera.source->stop();
        camera.small->stop();
    }
    if (m_keeper->role() == ArchiveRole::Viewer)
        tell("another program records into " + directory);
    if (m_keeper->role() == ArchiveRole::Unusable)
        tell(m_keeper->reason());
    if (m_keeper->role() == ArchiveRole::Recorder)
        record();
}

void Recorder::record()
{
    m_recorder = std::make_unique<ArchiveRecorder>(m_keeper.get());
    connect(m_recorder.get(), &ArchiveRecorder::failed, this,
            [](const QString& camera, const QString& error) {
                tell(QString("%1 is not recorded: %2").arg(camera, error));
            });
    connect(m_recorder.get(), &ArchiveRecorder::wellAgain, this,
            [](const QString& camera) { tell(camera + " is recorded again"); });
    for (const Camera& camera : m_cameras)
        record(camera);
    if (m_duty)
        m_duty->begin();
    tell("records into " + m_keeper->paths()->directory());
}

void Recorder::record(const Camera& camera)
{
    m_recorder->record(camera.about.name, camera.source, camera.small,
                       camera.about.isOnMotion ? ArchiveRecorder::When::OnMotion
                                               : ArchiveRecorder::When::Always);
    camera.source->start();
    if (camera.small != camera.source)
        camera.small->start();
}

int rebuildIndex(const QString& directory)
{
    QString error;
    ArchiveLock lock;
    const bool isThere = QFileInfo(directory).isDir();
    const auto answer = isThere ? lock.take(directory, &error) : ArchiveLock::Answer::Failed;
    if (answer == ArchiveLock::Answer::HeldElsewhere)
        error = "another program records into " + directory;
    else if (!isThere)
        error = "there is no directory " + directory;
    Archive archive(directory);
    if (answer != ArchiveLock::Answer::Taken || !archive.remake(&error)) {
        tell(error);
        return 1;
    }
    while (archive.recoverSome()) {
    }
    for (const QString& trouble : archive.takeTroubles())
        tell(trouble);
    tell(QString("%1 recordings in the index").arg(archive.index().count()));
    return 0;
}
