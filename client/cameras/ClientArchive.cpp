#include "cameras/ClientArchive.h"

#include "archive/ArchiveKeeper.h"
#include "archive/ArchiveRecorder.h"
#include "archive/DayColors.h"
#include "archive/SampleMaker.h"
#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "cameras/CaptionStrip.h"
#include "cameras/FleetDesk.h"
#include "common/ClientSettings.h"
#include "common/EngineText.h"
#include "common/EventLog.h"
#include "common/Words.h"

#include <QDateTime>
#include <QFile>
#include <QStandardPaths>
#include <QTimer>

namespace {

/// The window and the first pictures come first.
constexpr int SampleDelayMs = 3000;
constexpr int AskAgainMs = 500;
constexpr qint64 HourMs = 3'600'000;
/// More would take longer than somebody who wants to see something waits.
constexpr int SampleCameras = 4;

QString directoryOf(const ClientSettings& settings)
{
    return settings.archiveDir.isEmpty() ? ClientArchive::usualDirectory() : settings.archiveDir;
}

} // namespace

ClientArchive::ClientArchive(const CameraList& cameras, CameraHub* hub, EventLog* log,
                             const ClientSettings& settings, FleetDesk* fleet)
    : m_cameras(cameras), m_hub(hub), m_log(log), m_fleet(fleet)
{
    if (fleet) {
        follow(fleet, settings);
        return;
    }
    open(settings);
    connect(&cameras, &CameraList::added, this, &ClientArchive::recordNew);
    connect(&cameras, &CameraList::changed, this, &ClientArchive::takeChange);
    connect(&cameras, &CameraList::aboutToBeRemoved, this, &ClientArchive::forget);
}

/// The keeper of one's own is there and never starts.
void ClientArchive::follow(FleetDesk* fleet, const ClientSettings& settings)
{
    makeKeeper(settings);
    m_reader = fleet->reader();
    connect(fleet, &FleetDesk::changed, this, &ClientArchive::tellChange);
    connect(fleet, &FleetDesk::sitesChanged, this, &ClientArchive::troubleChanged);
}

void ClientArchive::makeKeeper(const ClientSettings& settings)
{
    const ArchiveLimits limits{qint64(settings.archiveGigabytes) << 30, settings.archiveDays};
    m_keeper = std::make_unique<ArchiveKeeper>(directoryOf(settings), limits);
    m_ownReader = std::make_unique<ArchiveReader>(m_keeper->paths());
    m_reader = m_ownReader.get();
}

void ClientArchive::open(const ClientSettings& settings)
{
    makeKeeper(settings);
    connect(m_keeper.get(), &ArchiveKeeper::roleChanged, this, &ClientArchive::takeRole);
    connect(m_keeper.get(), &ArchiveKeeper::changed, this, &ClientArchive::tellChange);
    connect(m_keeper.get(), &ArchiveKeeper::troubled, this, &ClientArchive::tellError);
    connect(m_keeper.get(), &ArchiveKeeper::sampleRemoved, this, &ClientArchive::tellSampleRemoved);
    QTimer::singleShot(0, this, &ClientArchive::start);
}

void ClientArchive::reopen(const ClientSettings& settings)
{
    if (m_fleet)
        return;
    m_sample.reset();
    m_recorder.reset();
    m_failures.clear();
    m_reader = nullptr;
    m_ownReader.reset();
    m_keeper.reset();
    open(settings);
    Q_EMIT troubleChanged();
    Q_EMIT changed(QString());
}

QString ClientArchive::usualDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/archive";
}

ClientArchive::~ClientArchive()
{
    m_sample.reset();
    m_recorder.reset();
}

bool ClientArchive::isThere(const ClientSettings& settings)
{
    return QFile::exists(ArchivePaths(directoryOf(settings)).index());
}

void ClientArchive::start()
{
    m_isNew = !QFile::exists(m_keeper->paths()->index());
    m_keeper->start();
}

void ClientArchive::takeRole()
{
    const ArchiveRole role = m_keeper->role();
    m_recorder.reset();
    m_failures.clear();
    if (role == ArchiveRole::Recorder)
        record();
    else if (role == ArchiveRole::Viewer)
        tell(word("another program records into %1").arg(m_keeper->paths()->directory()));
    else
        tellError(m_keeper->reason());
    Q_EMIT troubleChanged();
    Q_EMIT changed(QString());
}

void ClientArchive::record()
{
    m_recorder = std::make_unique<ArchiveRecorder>(m_keeper.get());
    connect(m_recorder.get(), &ArchiveRecorder::failed, this, &ClientArchive::takeFailure);
    connect(m_recorder.get(), &ArchiveRecorder::wellAgain, this, &ClientArchive::takeRecovery);
    for (const CameraRecord* camera : cameras())
        recordCamera(*camera);
    tell(word("records into %1").arg(m_keeper->paths()->directory()));
    makeFirstSample();
}

/// A sample is of synthetic cameras, which may come later.
void ClientArchive::makeFirstSample()
{
    const QVector<const CameraRecord*> recorded = cameras();
    const auto isOne = [](const CameraRecord* camera) { return isSynthetic(*camera); };
    if (m_isNew && std::any_of(recorded.begin(), recorded.end(), isOne)) {
        m_isNew = false;
        QTimer::singleShot(SampleDelayMs, this, &ClientArchive::makeSample);
    }
}

void ClientArchive::recordCamera(const CameraRecord& camera)
{
    const bool isAlways = camera.about.recording == CameraDescription::Recording::Always;
    if (auto source = m_hub->acquire(camera))
        m_recorder->record(camera.about.archiveName(), source, m_hub->acquire(camera, StreamKind::Small),
                           isAlways ? ArchiveRecorder::When::Always : ArchiveRecorder::When::OnMotion);
}

void ClientArchive::recordNew(const CameraRecord* camera)
{
    if (!m_recorder || !cameras().contains(camera))
        return;
    recordCamera(*camera);
    makeFirstSample();
}

void ClientArchive::takeChange(const CameraRecord* camera, const CameraRecord& before)
{
    if (camera->name != before.name) {
        Q_EMIT changed(camera->name);
        if (m_failures.contains(camera->about.archiveName()))
            Q_EMIT troubleChanged();
    }
    if (camera->about.recording == before.about.recording && isSameStream(*camera, before))
        return;
    forget(camera);
    recordNew(camera);
}

void ClientArchive::forget(const CameraRecord* camera)
{
    const QString key = camera->about.archiveName();
    if (m_recorder)
        m_recorder->forget(key);
    if (m_failures.remove(key) > 0)
        Q_EMIT troubleChanged();
}

void ClientArchive::tellChange(const QString& key)
{
    Q_EMIT changed(key.isEmpty() ? key : nameOf(key));
}

QString ClientArchive::keyOf(const QString& camera) const
{
    const CameraRecord* record = m_cameras.find(camera);
    return record ? record->about.archiveName() : camera;
}

QString ClientArchive::nameOf(const QString& key) const
{
    const CameraRecord* camera = m_cameras.byArchiveName(key);
    return camera ? camera->name : key;
}

void ClientArchive::takeFailure(const QString& key, const QString& error)
{
    m_failures.insert(key, error);
    m_log->add(word("archive"), failureOf(key), EventLog::Level::Warning);
    Q_EMIT troubleChanged();
}

QString ClientArchive::failureOf(const QString& key) const
{
    return word("%1 is not recorded: %2").arg(nameOf(key), engineText(m_failures.value(key)));
}

void ClientArchive::takeRecovery(const QString& key)
{
    m_failures.remove(key);
    tell(word("%1 is recorded again").arg(nameOf(key)));
    Q_EMIT troubleChanged();
}

QString ClientArchive::trouble() const
{
    if (m_fleet)
        return m_fleet->trouble();
    if (m_keeper->role() == ArchiveRole::Viewer)
        return word("Another program records here");
    if (m_keeper->role() == ArchiveRole::Unusable)
        return engineText(m_keeper->reason());
    QStringList lines;
    for (auto it = m_failures.keyBegin(); it != m_failures.keyEnd(); ++it)
        lines.append(failureOf(*it));
    return lines.join('\n');
}

void ClientArchive::makeSample()
{
    QStringList names;
    for (const CameraRecord* camera : cameras()) {
        if (isSynthetic(*camera) && names.size() < SampleCameras)
            names.append(camera->about.archiveName());
    }
    if (names.isEmpty() || !m_recorder)
        return;
    // Early in the day there is no room yet: then the sample is yesterday's.
    const QTimeZone zone = QTimeZone::systemTimeZone();
    const QDate today = QDate::currentDate();
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const bool isEarly = now - dayStart(today, zone) < HourMs;
    const qint64 from = dayStart(isEarly ? today.addDays(-1) : today, zone);
    m_sample = std::make_unique<SampleMaker>(m_keeper.get(), captionStrip);
    connect(m_sample.get(), &SampleMaker::finished, this, &ClientArchive::tellSampleMade);
    m_sample->start(names, from, isEarly ? dayStart(today, zone) : now);
}

QVector<const CameraRecord*> ClientArchive::cameras() const
{
    QVector<const CameraRecord*> recorded;
    int synthetics = 0;
    for (int i = 0; i < m_cameras.count(); ++i) {
        const CameraRecord& camera = m_cameras.at(i);
        const bool isLeftOut = isSynthetic(camera) && synthetics++ >= RecordedSynthetics;
        if (!isLeftOut && camera.about.recording != CameraDescription::Recording::Never)
            recorded.append(&camera);
    }
    return recorded;
}

bool ClientArchive::isRecorded(const CameraRecord& camera) const
{
    return m_recorder && !m_failures.contains(camera.about.archiveName()) && cameras().contains(&camera);
}

std::optional<QVector<Segment>> ClientArchive::segments(const QString& camera, qint64 fromMs,
                                                        qint64 toMs) const
{
    auto found = m_reader->segments(keyOf(camera), fromMs, toMs);
    if (!found)
        askAgain(camera);
    return found;
}

std::optional<QVector<Span>> ClientArchive::spans(const QString& camera, qint64 fromMs, qint64 toMs) const
{
    auto found = m_reader->spans(keyOf(camera), fromMs, toMs);
    if (!found)
        askAgain(camera);
    return found;
}

QHash<QString, RecordedTimes> ClientArchive::times(const QStringList& cameras, qint64 fromMs,
                                                   qint64 toMs) const
{
    QStringList keys;
    for (const QString& camera : cameras)
        keys.append(keyOf(camera));
    const auto found = m_reader->times(keys, fromMs, toMs);
    QHash<QString, RecordedTimes> times;
    for (int i = 0; i < keys.size(); ++i) {
        const auto it = found.find(keys[i]);
        if (it == found.end())
            askAgain(cameras[i]);
        else
            times.insert(cameras[i], *it);
    }
    return times;
}

std::optional<TrackStretch> ClientArchive::stretch(const QString& camera, qint64 fromMs, qint64 toMs) const
{
    auto found = m_reader->stretch(keyOf(camera), fromMs, toMs);
    if (!found)
        askAgain(camera);
    return found;
}

std::optional<qint64> ClientArchive::newestMs(const QString& camera) const
{
    return m_reader->newestMs(keyOf(camera));
}

void ClientArchive::askAgain(const QString& camera) const
{
    if (m_keeper->role() != ArchiveRole::Recorder && m_keeper->role() != ArchiveRole::Viewer)
        return;
    auto* self = const_cast<ClientArchive*>(this);
    if (m_refused.isEmpty())
        QTimer::singleShot(AskAgainMs, self, [self] {
            for (const QString& name : std::exchange(self->m_refused, {}))
                Q_EMIT self->changed(name);
        });
    m_refused.insert(camera);
}

std::optional<Span> ClientArchive::spanAfter(const QString& camera, qint64 ms) const
{
    return m_reader->spanAfter(keyOf(camera), ms);
}

std::optional<Span> ClientArchive::spanBefore(const QString& camera, qint64 ms) const
{
    return m_reader->spanBefore(keyOf(camera), ms);
}

ReaderMaker ClientArchive::readerMaker() const
{
    if (m_fleet)
        return m_fleet->readerMaker();
    return [paths = m_keeper->paths()] { return std::make_unique<ArchiveReader>(paths); };
}

void ClientArchive::cut(const QString& camera)
{
    if (m_recorder)
        m_recorder->cut(keyOf(camera));
}

void ClientArchive::setAlarm(const QString& camera, bool on)
{
    if (m_recorder)
        m_recorder->setAlarm(keyOf(camera), on);
}

void ClientArchive::removeSample()
{
    m_sample.reset();
    if (m_recorder)
        m_keeper->removeSample();
    else
        tell(trouble());
}

void ClientArchive::tellSampleRemoved(int count)
{
    tell(word("%n sample recordings removed").replace("%n", QString::number(count)));
}

void ClientArchive::tellSampleMade()
{
    tell(word("sample recordings made"));
}

void ClientArchive::tellError(const QString& error)
{
    m_log->add(word("archive"), engineText(error), EventLog::Level::Warning);
}

void ClientArchive::tell(const QString& line)
{
    m_log->add(word("archive"), line);
}
