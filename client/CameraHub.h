#pragma once

#include <QHash>
#include <QObject>
#include <QSharedPointer>

class VideoSource;
struct CameraRecord;

/// Gives each camera's one source to all who show it. A source that nobody holds is stopped.
class CameraHub : public QObject
{
    Q_OBJECT

public:
    explicit CameraHub(QObject* parent = nullptr);

    /// The running source of a camera; null, with one line in `error`, if its address makes no sense.
    QSharedPointer<VideoSource> Acquire(const CameraRecord& camera, QString* error);

private:
    QHash<QString, QWeakPointer<VideoSource>> m_hashSources;
};
