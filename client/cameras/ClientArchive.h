#pragma once

#include "archive/Archive.h"
#include "archive/SegmentTrack.h"

#include <QObject>

#include <memory>

class ArchiveRecorder;
class CameraHub;
class CameraList;
struct CameraRecord;
struct ClientOptions;
class EventLog;
class SampleMaker;

/// The client's recordings: it records some of the cameras while the client runs, and makes a sample at the
/// first start. An archive that can't be used is told in the log, and everything else goes on.
class ClientArchive : public QObject
{
    Q_OBJECT

public:
    /// How many of the synthetic cameras are recorded, from the list's start, as each has to be encoded for
    /// it. Of all others none is left out.
    static constexpr int RecordedSynthetics = 16;

    ClientArchive(const CameraList& cameras, CameraHub* hub, EventLog* log, const ClientOptions& options);
    ~ClientArchive() override;

    bool IsOpen() const { return m_archive.Index().IsOpen(); }
    /// The cameras that are recorded.
    QVector<const CameraRecord*> Cameras() const;
    const Archive& Recordings() const { return m_archive; }

    /// All that there is to play of a camera.
    QVector<TrackPiece> Pieces(const QString& camera) const;

    /// An alarm of a camera begins or ends.
    void SetAlarm(const QString& camera, bool on);

public Q_SLOTS:
    void slot_removeSample();

Q_SIGNALS:
    /// There is more or less of this camera now; of all cameras if the name is empty.
    void changed(const QString& camera);

private Q_SLOTS:
    void slot_start();
    void slot_tell(const QString& line);
    void slot_sampleMade();

private:
    void MakeSample();

    const CameraList& m_cameras;
    CameraHub* m_pHub;
    EventLog* m_pLog;
    QString m_strDirectory;
    Archive m_archive;
    qint64 m_nLimitBytes;
    std::unique_ptr<ArchiveRecorder> m_pRecorder;
    std::unique_ptr<SampleMaker> m_pSample;
};
