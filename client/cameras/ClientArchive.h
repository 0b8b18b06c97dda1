#pragma once

#include "archive/ArchiveReader.h"

#include <QMap>
#include <QObject>
#include <QSet>

#include <memory>

class ArchiveKeeper;
class ArchiveRecorder;
class CameraHub;
class CameraList;
struct CameraRecord;
struct ClientSettings;
class EventLog;
class FleetDesk;
class SampleMaker;

/// The client's recordings: it records some of the cameras while the client runs, and makes a sample at the
/// first start. Where another program records into the archive it only shows what comes, until that program
/// is gone. An archive that can't be used is told, and everything else goes on. Cameras go by the names that
/// they have now; in the archive a camera keeps the one it had first.
class ClientArchive : public QObject
{
    Q_OBJECT

public:
    /// How many of the synthetic cameras are recorded, from the list's start, as each has to be encoded for
    /// it. Of all others none is left out.
    static constexpr int RecordedSynthetics = 16;

    /// With a part in a fleet, which must outlive this, it records nothing and shows what the fleet has.
    ClientArchive(const CameraList& cameras, CameraHub* hub, EventLog* log, const ClientSettings& settings,
                  FleetDesk* fleet = nullptr);
    ~ClientArchive() override;

    /// True if something has been recorded there before.
    static bool isThere(const ClientSettings& settings);
    /// Where recordings lie if the settings name no place.
    static QString usualDirectory();
    /// Ends all recordings properly and goes on at another place, or by other limits.
    void reopen(const ClientSettings& settings);

    /// The cameras that are recorded.
    QVector<const CameraRecord*> cameras() const;
    /// True while this program records the camera, as far as it knows.
    bool isRecorded(const CameraRecord& camera) const;

    /// What touches the time from `fromMs` to before `toMs`; none while the index can't be read. Then
    /// changed() comes as soon as it can.
    std::optional<QVector<Segment>> segments(const QString& camera, qint64 fromMs, qint64 toMs) const;
    std::optional<QVector<Span>> spans(const QString& camera, qint64 fromMs, qint64 toMs) const;
    /// As RecordingReader's, by the names that cameras have now.
    QHash<QString, RecordedTimes> times(const QStringList& cameras, qint64 fromMs, qint64 toMs) const;
    int camerasAtOnce() const { return m_reader->camerasAtOnce(); }
    /// The same as segments(), to be played, and what comes next.
    std::optional<TrackStretch> stretch(const QString& camera, qint64 fromMs, qint64 toMs) const;
    /// The start of the last segment of a camera.
    std::optional<qint64> newestMs(const QString& camera) const;
    /// The first motion or alarm that begins after a moment, and the last that begins before it.
    std::optional<Span> spanAfter(const QString& camera, qint64 ms) const;
    std::optional<Span> spanBefore(const QString& camera, qint64 ms) const;
    /// For a reader in another thread, which knows a camera by its key.
    QString keyOf(const QString& camera) const;
    ReaderMaker readerMaker() const;

    /// Why not everything is recorded here, in the words of this start's language; empty while all is well.
    QString trouble() const;

    /// What is being recorded of a camera here becomes a recording with its next key frame; changed() tells.
    void cut(const QString& camera);
    /// An alarm of a camera begins or ends.
    void setAlarm(const QString& camera, bool on);

public Q_SLOTS:
    void removeSample();

Q_SIGNALS:
    /// There is more or less of this camera now; of all cameras if the name is empty.
    void changed(const QString& camera);
    /// trouble() is new.
    void troubleChanged();

private Q_SLOTS:
    void start();
    void takeRole();
    void takeFailure(const QString& key, const QString& error);
    void takeRecovery(const QString& key);
    void tellChange(const QString& key);
    void tell(const QString& line);
    void tellError(const QString& error);
    void tellSampleMade();
    void tellSampleRemoved(int count);
    void makeSample();

private:
    void follow(FleetDesk* fleet, const ClientSettings& settings);
    void makeKeeper(const ClientSettings& settings);
    void open(const ClientSettings& settings);
    void record();
    void recordCamera(const CameraRecord& camera);
    void makeFirstSample();
    void recordNew(const CameraRecord* camera);
    void takeChange(const CameraRecord* camera, const CameraRecord& before);
    void forget(const CameraRecord* camera);
    QString nameOf(const QString& key) const;
    QString failureOf(const QString& key) const;
    void askAgain(const QString& camera) const;

    const CameraList& m_cameras;
    CameraHub* m_hub;
    EventLog* m_log;
    std::unique_ptr<ArchiveKeeper> m_keeper;
    std::unique_ptr<ArchiveReader> m_ownReader;
    FleetDesk* m_fleet;
    RecordingReader* m_reader = nullptr; ///< the fleet's or the own
    mutable QSet<QString> m_refused;     ///< cameras of which something could not be read
    bool m_isNew = false;
    QMap<QString, QString> m_failures; ///< by key, why a camera is not recorded, as the engine has it
    std::unique_ptr<ArchiveRecorder> m_recorder;
    std::unique_ptr<SampleMaker> m_sample;
};
