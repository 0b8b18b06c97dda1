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

    bool isOpen() const { return m_archive.index().isOpen(); }
    /// The cameras that are recorded.
    QVector<const CameraRecord*> cameras() const;
    const Archive& recordings() const { return m_archive; }

    /// All that there is to play of a camera.
    QVector<TrackPiece> pieces(const QString& camera) const;

    /// An alarm of a camera begins or ends.
    void setAlarm(const QString& camera, bool on);

public Q_SLOTS:
    void removeSample();

Q_SIGNALS:
    /// There is more or less of this camera now; of all cameras if the name is empty.
    void changed(const QString& camera);

private Q_SLOTS:
    void start();
    void tell(const QString& line);
    void tellError(const QString& error);
    void tellSampleMade();

private:
    void makeSample();

    const CameraList& m_cameras;
    CameraHub* m_hub;
    EventLog* m_log;
    QString m_directory;
    Archive m_archive;
    qint64 m_limitBytes;
    std::unique_ptr<ArchiveRecorder> m_recorder;
    std::unique_ptr<SampleMaker> m_sample;
};
