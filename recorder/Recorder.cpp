#include "Recorder.h"

#include "RecorderOptions.h"
#include "archive/ArchiveLock.h"
#include "archive/ArchiveRecorder.h"
#include "common/OneLine.h"
#include "source/VideoSource.h"
#include "synthetic/CameraSource.h"

#include <QFileInfo>

#include <cstdio>

void tell(const QString& line)
{
    std::fprintf(stderr, "panedeck-recorder: %s\n", qPrintable(oneLine(line)));
}

Recorder::Recorder(const RecorderOptions& options)
    : m_keeper(std::make_unique<ArchiveKeeper>(options.archiveDir, options.limits))
{
    connect(m_keeper.get(), &ArchiveKeeper::roleChanged, this, &Recorder::takeRole);
    connect(m_keeper.get(), &ArchiveKeeper::troubled, this, &tell);
    for (const SourceAddress& address : options.sources)
        add(address);
    m_keeper->start();
}

Recorder::~Recorder() = default;

namespace {

/// Nobody sees it: it is decoded no further than motion detection needs.
QSharedPointer<VideoSource> makeUnseen(const SourceAddress& address)
{
    QSharedPointer<VideoSource> source(makeCameraSource(address).release());
    source->setWatched(false);
    return source;
}

} // namespace

void Recorder::add(const SourceAddress& address)
{
    Camera camera;
    camera.name = address.name();
    camera.source = makeUnseen(address);
    camera.small = address.small() ? makeUnseen(*address.small()) : camera.source;
    connect(camera.source.data(), &VideoSource::stateChanged, this,
            [this, name = camera.name] { tellState(name); });
    m_cameras.push_back(camera);
}

/// A source that is lost is told once until it plays again.
void Recorder::tellState(const QString& name)
{
    for (Camera& camera : m_cameras) {
        if (camera.name != name)
            continue;
        const QString reason = camera.source->state() == SourceState::Playing ? "" : camera.source->reason();
        if (camera.source->state() == SourceState::Connecting || camera.toldReason == reason)
            continue;
        camera.toldReason = reason;
        tell(reason.isEmpty() ? name + " plays" : QString("%1: %2").arg(name, reason));
    }
}

void Recorder::takeRole()
{
    const QString& directory = m_keeper->paths()->directory();
    // Who doesn't record needs no camera; who does needs its first picture.
    m_recorder.reset();
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
        m_recorder->record(camera.name, camera.source, camera.small);
    for (const Camera& camera : m_cameras) {
        camera.source->start();
        if (camera.small != camera.source)
            camera.small->start();
    }
    tell("records into " + m_keeper->paths()->directory());
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
