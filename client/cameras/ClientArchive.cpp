#include "cameras/ClientArchive.h"

#include "archive/ArchiveRecorder.h"
#include "archive/DayColors.h"
#include "archive/SampleMaker.h"
#include "archive/SegmentReader.h"
#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "common/ClientOptions.h"
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

bool IsSynthetic(const CameraRecord& camera)
{
    return camera.address.startsWith("synthetic:");
}

} // namespace

ClientArchive::ClientArchive(const CameraList& cameras, CameraHub* hub, EventLog* log,
                             const ClientOptions& options)
    : m_cameras(cameras), m_pHub(hub), m_pLog(log), m_strDirectory(options.archiveDir),
      m_archive(&SegmentReader::duration), m_nLimitBytes(qint64(options.archiveGigabytes) << 30)
{
    if (m_strDirectory.isEmpty())
        m_strDirectory = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/archive";
    QTimer::singleShot(StartDelayMs, this, SLOT(slot_start()));
}

ClientArchive::~ClientArchive() = default;

void ClientArchive::slot_start()
{
    const bool isNew = !QFile::exists(m_strDirectory + "/index.sqlite");
    QString error;
    if (!m_archive.Open(m_strDirectory, &error)) {
        slot_tell(error);
        return;
    }
    m_pRecorder = std::make_unique<ArchiveRecorder>(&m_archive, m_nLimitBytes);
    connect(m_pRecorder.get(), SIGNAL(recorded(QString)), SIGNAL(changed(QString)));
    connect(m_pRecorder.get(), SIGNAL(failed(QString)), SLOT(slot_tell(QString)));
    for (const CameraRecord* camera : Cameras()) {
        if (auto source = m_pHub->Acquire(*camera, &error))
            m_pRecorder->record(camera->name, source);
    }
    m_pLog->Add("archive", "records into " + m_strDirectory);
    if (isNew)
        MakeSample();
    Q_EMIT changed(QString());
}

void ClientArchive::MakeSample()
{
    QStringList names;
    for (const CameraRecord* camera : Cameras()) {
        if (IsSynthetic(*camera) && names.size() < SampleCameras)
            names.append(camera->name);
    }
    if (names.isEmpty())
        return;
    // Early in the day there is no room yet: then the sample is yesterday's.
    const QTimeZone zone = QTimeZone::systemTimeZone();
    const QDate today = QDate::currentDate();
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const bool isEarly = now - DayStart(today, zone) < HourMs;
    const qint64 from = DayStart(isEarly ? today.addDays(-1) : today, zone);
    m_pSample = std::make_unique<SampleMaker>(&m_archive);
    connect(m_pSample.get(), SIGNAL(recorded(QString)), SIGNAL(changed(QString)));
    connect(m_pSample.get(), SIGNAL(finished()), SLOT(slot_sampleMade()));
    m_pSample->start(names, from, isEarly ? DayStart(today, zone) : now);
}

QVector<const CameraRecord*> ClientArchive::Cameras() const
{
    QVector<const CameraRecord*> recorded;
    int synthetics = 0;
    for (int i = 0; i < m_cameras.Count(); ++i) {
        if (!IsSynthetic(m_cameras.At(i)) || synthetics++ < RecordedSynthetics)
            recorded.append(&m_cameras.At(i));
    }
    return recorded;
}

QVector<TrackPiece> ClientArchive::Pieces(const QString& camera) const
{
    QVector<TrackPiece> pieces;
    if (!IsOpen())
        return pieces;
    for (const Segment& segment : m_archive.Index().Segments(camera, 0, std::numeric_limits<qint64>::max()))
        pieces.append({m_archive.FullPath(segment), segment.startMs, segment.endMs});
    return pieces;
}

void ClientArchive::SetAlarm(const QString& camera, bool on)
{
    if (m_pRecorder)
        m_pRecorder->setAlarm(camera, on);
}

void ClientArchive::slot_removeSample()
{
    m_pSample.reset();
    const int count = IsOpen() ? m_archive.RemoveSample() : 0;
    slot_tell(Word("%n sample recordings removed").replace("%n", QString::number(count)));
    Q_EMIT changed(QString());
}

void ClientArchive::slot_sampleMade()
{
    slot_tell(Word("sample recordings made"));
}

void ClientArchive::slot_tell(const QString& line)
{
    m_pLog->Add("archive", line);
}
