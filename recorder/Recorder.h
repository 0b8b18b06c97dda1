#pragma once

#include "RecordedList.h"
#include "archive/ArchiveKeeper.h"

#include <QBasicTimer>
#include <QDateTime>
#include <QObject>
#include <QSharedPointer>

#include <vector>

class ArchiveRecorder;
class FleetDuty;
class VideoSource;
struct RecorderOptions;

/// Records all cameras as long as it lives and the archive lets it, and tells what happens on the standard
/// error stream.
class Recorder : public QObject
{
    Q_OBJECT

public:
    /// Records the sources of the options, and what the shared index gives, or else what stands in the file
    /// of cameras, as it is now and whenever it changes.
    explicit Recorder(const RecorderOptions& options);
    ~Recorder() override;

    /// What is to be recorded from now on, all of it, no name twice. What goes on goes on without a break.
    void setCameras(const QVector<RecordedCamera>& cameras);

Q_SIGNALS:
    /// A camera's packets come and are recorded.
    void recording(const QString& name);
    /// Of these nothing was recorded for eight seconds, all of them, once a second. The disk is in doubt if
    /// packets of any come all the same.
    void stalled(const QStringList& names, bool isDiskInDoubt);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    struct Camera
    {
        RecordedCamera about;
        QSharedPointer<VideoSource> source;
        QSharedPointer<VideoSource> small{}; ///< in which motion is looked for; the same one if there is none
        QString toldReason{};                ///< why it is lost
        qint64 progress = 0;                 ///< of its recording, when it was looked at last
        int stillSteps = 0;                  ///< how often it had not grown then, one after the other
    };

    void add(const RecordedCamera& camera);
    void readList();
    void drop(Camera& camera);
    void look();
    bool isRecorded(const RecordedCamera& camera) const;
    void takeRole();
    void record();
    void record(const Camera& camera);
    void tellState(const QString& name);

    QVector<RecordedCamera> m_named; ///< by the options
    RecordedList m_list;
    QString m_listPath; ///< the file of cameras; empty where others say what to record
    QDateTime m_listTime;
    QBasicTimer m_listTimer;
    QBasicTimer m_lookTimer;           ///< where others can take what is not recorded here
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
