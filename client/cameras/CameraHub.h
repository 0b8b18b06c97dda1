#pragma once

#include <QDeadlineTimer>
#include <QHash>
#include <QObject>
#include <QSharedPointer>
#include <QTimer>
#include <QVector>

#include <functional>
#include <memory>
#include <optional>

class CameraList;
class OnvifHub;
class PtzLeases;
class RelayPatience;
class SoundOutput;
class SourceAddress;
class VideoSource;
struct CameraRecord;

/// Which of a camera's streams; one without a small one has its main stream in its place.
enum class StreamKind
{
    Main,
    Small,
};

/// Gives each stream's one source to all who use it, and the loudspeaker that all share. A source that nobody
/// holds goes on for half a minute, so that whoever turns back a page has its picture at once, and is stopped
/// then.
class CameraHub : public QObject
{
    Q_OBJECT

public:
    /// It hears first of each change in the list, and whoever hears of it then gets the new source.
    /// `keptMs` is how long a source goes on that nobody holds.
    explicit CameraHub(const CameraList& cameras, QObject* parent = nullptr, int keptMs = 30'000);

    const CameraList& cameras() const { return m_cameras; }

    /// The running source of a camera, whether or not its pictures are seen; null for a record without an
    /// address.
    QSharedPointer<VideoSource> acquire(const CameraRecord& camera, StreamKind kind = StreamKind::Main);
    /// The same, seen as long as it is held.
    QSharedPointer<VideoSource> watch(const CameraRecord& camera, StreamKind kind = StreamKind::Main);

    /// Who turns which camera, where others may do so too; null where nobody else does.
    PtzLeases* leases() const { return m_leases; }
    void setLeases(PtzLeases* leases) { m_leases = leases; }

    /// Who tells where else the pictures of a camera are, which is asked before the camera; none at first.
    using Relay = std::function<std::optional<SourceAddress>(const CameraRecord& camera, bool isSmall)>;
    void setRelay(Relay relay) { m_relay = std::move(relay); }
    OnvifHub* onvif() const { return m_onvif; }
    const std::shared_ptr<SoundOutput>& speaker() const { return m_speaker; }

private:
    struct Unseen
    {
        QSharedPointer<VideoSource> source;
        QDeadlineTimer ends;
    };

    std::unique_ptr<VideoSource> makeSource(const CameraRecord& camera, bool isSmall) const;
    void unwatch(QSharedPointer<VideoSource> source);
    void letGo();
    void takeChange(const CameraRecord* camera, const CameraRecord& before);
    void forget(const CameraRecord* camera);

    const CameraList& m_cameras;
    QHash<QPair<QString, bool>, QWeakPointer<VideoSource>> m_sources; ///< by id, and whether it is small
    QHash<VideoSource*, int> m_watchers;
    QVector<Unseen> m_unseen; ///< those that were seen last a short while ago
    const int m_keptMs;
    QTimer m_letGo;
    OnvifHub* m_onvif;
    PtzLeases* m_leases = nullptr;
    Relay m_relay;
    std::shared_ptr<RelayPatience> m_relayPatience;
    std::shared_ptr<SoundOutput> m_speaker;
};
