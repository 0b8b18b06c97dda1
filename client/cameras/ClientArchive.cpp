#include "cameras/ClientArchive.h"

#include "archive/ArchiveRecorder.h"
#include "archive/DayColors.h"
#include "archive/SampleMaker.h"
#include "archive/SegmentReader.h"
#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "cameras/CaptionStrip.h"
#include "common/ClientOptions.h"
#include "common/EngineText.h"
#include "common/EventLog.h"
#include "common/Words.h"

#include <QDateTime>
#include <QFile>
#include <QStandardPaths>
#include <QTimer>

#include <limits>

namespace {

/// The window and the first pictures come first.
constexpr int StartDelayMs = 3000;
constexpr qint64 HourMs = 3'600'000;
/// More would take longer than somebody who wants to see something waits.
constexpr int SampleCameras = 4;

bool isSynthetic(const CameraRecord& camera)
{
    return camera.address && camera.address->kind() == SourceAddress::Kind::Synthetic;
}

} // namespace

ClientArchive::ClientArchive(const CameraList& cameras, CameraHub* hub, EventLog* log,
                             const ClientOptions& options)
    : m_cameras(cameras), m_hub(hub), m_log(log), m_directory(options.archiveDir),
      m_archive(&SegmentReader::duration), m_limitBytes(qint64(options.archiveGigabytes) << 30)
{
    if (m_directory.isEmpty())
        m_directory = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/archive";
    QTimer::singleShot(StartDelayMs, this, &ClientArchive::start);
}

ClientArchive::~ClientArchive() = default;

void ClientArchive::start()
{
    const bool isNew = !QFile::exists(m_directory + "/index.sqlite");
    QString error;
    if (!m_archive.open(m_directory, &error)) {
        tellError(error);
        return;
    }
    m_recorder = std::make_unique<ArchiveRecorder>(&m_archive, m_limitBytes);
    connect(m_recorder.get(), &ArchiveRecorder::recorded, this, &ClientArchive::changed);
    connect(m_recorder.get(), &ArchiveRecorder::failed, this, &ClientArchive::tellError);
    for (const CameraRecord* camera : cameras()) {
        if (auto source = m_hub->acquire(*camera))
            m_recorder->record(camera->name, source);
    }
    tell(word("records into %1").arg(m_directory));
    if (isNew)
        makeSample();
    Q_EMIT changed(QString());
}

void ClientArchive::makeSample()
{
    QStringList names;
    for (const CameraRecord* camera : cameras()) {
        if (isSynthetic(*camera) && names.size() < SampleCameras)
            names.append(camera->name);
    }
    if (names.isEmpty())
        return;
    // Early in the day there is no room yet: then the sample is yesterday's.
    const QTimeZone zone = QTimeZone::systemTimeZone();
    const QDate today = QDate::currentDate();
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const bool isEarly = now - dayStart(today, zone) < HourMs;
    const qint64 from = dayStart(isEarly ? today.addDays(-1) : today, zone);
    m_sample = std::make_unique<SampleMaker>(&m_archive, captionStrip);
    connect(m_sample.get(), &SampleMaker::recorded, this, &ClientArchive::changed);
    connect(m_sample.get(), &SampleMaker::finished, this, &ClientArchive::tellSampleMade);
    m_sample->start(names, from, isEarly ? dayStart(today, zone) : now);
}

QVector<const CameraRecord*> ClientArchive::cameras() const
{
    QVector<const CameraRecord*> recorded;
    int synthetics = 0;
    for (int i = 0; i < m_cameras.count(); ++i) {
        if (!isSynthetic(m_cameras.at(i)) || synthetics++ < RecordedSynthetics)
            recorded.append(&m_cameras.at(i));
    }
    return recorded;
}

QVector<TrackPiece> ClientArchive::pieces(const QString& camera) const
{
    QVector<TrackPiece> pieces;
    if (!isOpen())
        return pieces;
    for (const Segment& segment : m_archive.index().segments(camera, 0, std::numeric_limits<qint64>::max())) {
        if (const QString path = m_archive.fullPath(segment); !path.isEmpty())
            pieces.append({path, segment.startMs, segment.endMs});
    }
    return pieces;
}

void ClientArchive::setAlarm(const QString& camera, bool on)
{
    if (m_recorder)
        m_recorder->setAlarm(camera, on);
}

void ClientArchive::removeSample()
{
    m_sample.reset();
    const int count = isOpen() ? m_archive.removeSample() : 0;
    tell(word("%n sample recordings removed").replace("%n", QString::number(count)));
    Q_EMIT changed(QString());
}

void ClientArchive::tellSampleMade()
{
    tell(word("sample recordings made"));
}

void ClientArchive::tellError(const QString& error)
{
    tell(engineText(error));
}

void ClientArchive::tell(const QString& line)
{
    m_log->add(word("archive"), line);
}
