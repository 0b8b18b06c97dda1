#pragma once

#include <QHash>
#include <QObject>
#include <QSharedPointer>

#include <memory>

class SoundOutput;
class VideoSource;
struct CameraRecord;

/// Gives each camera's one source to all who show it, and the loudspeaker that all share. A source that
/// nobody holds is stopped.
class CameraHub : public QObject
{
    Q_OBJECT

public:
    explicit CameraHub(QObject* parent = nullptr);

    /// The running source of a camera; null for a record without an address.
    QSharedPointer<VideoSource> acquire(const CameraRecord& camera);

    const std::shared_ptr<SoundOutput>& speaker() const { return m_speaker; }

private:
    QHash<QString, QWeakPointer<VideoSource>> m_sources;
    std::shared_ptr<SoundOutput> m_speaker;
};
