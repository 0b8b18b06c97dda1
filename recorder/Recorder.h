#pragma once

#include "archive/ArchiveKeeper.h"
#include "cameras/CameraDescription.h"
#include "decode/MotionRule.h"

#include <QObject>
#include <QSharedPointer>

#include <vector>

class ArchiveRecorder;
class FleetDuty;
class VideoSource;
struct RecorderOptions;

/// A camera to record, and the name it has in the archive.
struct RecordedCamera
{
    QString name;
    SourceAddress address;
    MotionRule motion{};
    bool isOnMotion = false; ///< recorded only while something moves, and around it
};

/// Records all cameras as long as it lives and the archive lets it, and tells what happens on the standard
/// error stream.
class Recorder : public QObject
{
    Q_OBJECT

public:
    /// Records the sources of the options, and all of `cameras` that are to be.
    Recorder(const RecorderOptions& options, const QVector<CameraDescription>& cameras);
    ~Recorder() override;

    /// What is to be recorded from now on, all of it, no name twice. What goes on goes on without a break.
    void setCameras(const QVector<RecordedCamera>& cameras);

Q_SIGNALS:
    /// A camera's packets come and are recorded.
    void recording(const QString& name);

private:
    struct Camera
    {
        RecordedCamera about;
        QSharedPointer<VideoSource> source;
        QSharedPointer<VideoSource> small; ///< in which motion is looked for; the same one if there is none
        QString toldReason;                ///< why it is lost
    };

    void add(const RecordedCamera& camera);
    void addAll(const QVector<CameraDescription>& cameras, const QString& passwords);
    void drop(Camera& camera);
    bool isRecorded(const RecordedCamera& camera) const;
    void takeRole();
    void record();
    void record(const Camera& camera);
    void tellState(const QString& name);

    std::unique_ptr<FleetDuty> m_duty; ///< none without a shared index; it goes last
    std::unique_ptr<ArchiveKeeper> m_keeper;
    std::unique_ptr<ArchiveRecorder> m_recorder;
    std::vector<Camera> m_cameras;
};

/// Makes the index of an archive anew from its files. What an index that can be read knows of motion and
/// alarms is kept. The program's exit status.
int rebuildIndex(const QString& directory);

/// A line on the standard error stream.
void tell(const QString& line);
