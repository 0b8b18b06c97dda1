#pragma once

#include "archive/ArchiveKeeper.h"
#include "cameras/CameraDescription.h"

#include <QObject>
#include <QSharedPointer>

#include <vector>

class ArchiveRecorder;
class VideoSource;
struct RecorderOptions;

/// Records all sources as long as it lives and the archive lets it, and tells what happens on the standard
/// error stream.
class Recorder : public QObject
{
    Q_OBJECT

public:
    /// Records the sources of the options, and all of `cameras` that are to be.
    Recorder(const RecorderOptions& options, const QVector<CameraDescription>& cameras);
    ~Recorder() override;

private:
    struct Camera
    {
        QString name;
        QSharedPointer<VideoSource> source;
        QSharedPointer<VideoSource> small; ///< in which motion is looked for; the same one if there is none
        QString toldReason;                ///< why it is lost
    };

    void add(const QString& name, const SourceAddress& address);
    void addAll(const QVector<CameraDescription>& cameras, const QString& passwords);
    void takeRole();
    void record();
    void recordCamera(const Camera& camera);
    void tellState(const QString& name);

    std::unique_ptr<ArchiveKeeper> m_keeper;
    std::unique_ptr<ArchiveRecorder> m_recorder;
    std::vector<Camera> m_cameras;
};

/// Makes the index of an archive anew from its files. What an index that can be read knows of motion and
/// alarms is kept. The program's exit status.
int rebuildIndex(const QString& directory);

/// A line on the standard error stream.
void tell(const QString& line);
