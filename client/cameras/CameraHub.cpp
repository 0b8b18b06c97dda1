#include "cameras/CameraHub.h"

#include "cameras/CameraList.h"
#include "cameras/CaptionStrip.h"
#include "cameras/OnvifHub.h"
#include "decode/MotionRule.h"
#include "sound/SoundOutput.h"
#include "source/RelayPatience.h"
#include "synthetic/CameraSource.h"

#include <QPointer>

#include <algorithm>

namespace {

/// How often it looks around while it keeps a source.
constexpr int Looks = 6;

} // namespace

CameraHub::CameraHub(const CameraList& cameras, QObject* parent, int keptMs)
    : QObject(parent), m_cameras(cameras), m_keptMs(keptMs), m_onvif(new OnvifHub(cameras, this)),
      m_relayPatience(std::make_shared<RelayPatience>()), m_speaker(std::make_shared<SoundOutput>())
{
    connect(&cameras, &CameraList::changed, this, &CameraHub::takeChange);
    connect(&cameras, &CameraList::aboutToBeRemoved, this, &CameraHub::forget);
    connect(&m_letGo, &QTimer::timeout, this, &CameraHub::letGo);
}

QSharedPointer<VideoSource> CameraHub::acquire(const CameraRecord& camera, StreamKind kind)
{
    if (!camera.address)
        return {};
    const std::optional<SourceAddress> small = camera.address->small();
    const bool isSmall = kind == StreamKind::Small && small;
    const QPair<QString, bool> key(camera.about.id, isSmall);
    if (QSharedPointer<VideoSource> running = m_sources.value(key).toStrongRef())
        return running;
    // A source may be let go inside one of its own signals.
    QSharedPointer<VideoSource> source(makeSource(camera, isSmall).release(), &QObject::deleteLater);
    m_sources.insert(key, source);
    source->setWatched(false);
    source->setMotionRule({camera.about.sensitivity, camera.about.zones});
    source->start();
    return source;
}

std::unique_ptr<VideoSource> CameraHub::makeSource(const CameraRecord& camera, bool isSmall) const
{
    const SourceAddress& own = isSmall ? *camera.address->small() : *camera.address;
    const std::optional<SourceAddress> relayed = m_relay ? m_relay(camera, isSmall) : std::nullopt;
    return relayed ? makeRelayedSource(*relayed, own, m_relayPatience) : makeCameraSource(own, captionStrip);
}

QSharedPointer<VideoSource> CameraHub::watch(const CameraRecord& camera, StreamKind kind)
{
    const QSharedPointer<VideoSource> source = acquire(camera, kind);
    if (!source)
        return {};
    if (++m_watchers[source.data()] == 1)
        source->setWatched(true);
    return QSharedPointer<VideoSource>(source.data(),
                                       [source, hub = QPointer<CameraHub>(this)](VideoSource*) {
                                           if (hub)
                                               hub->unwatch(source);
                                       });
}

void CameraHub::unwatch(QSharedPointer<VideoSource> source)
{
    if (--m_watchers[source.data()] > 0)
        return;
    m_watchers.remove(source.data());
    source->setWatched(false);
    m_unseen.append({std::move(source), QDeadlineTimer(m_keptMs)});
    // A tour that goes on faster than that must not put it off for ever.
    if (!m_letGo.isActive())
        m_letGo.start(m_keptMs / Looks);
}

void CameraHub::letGo()
{
    const auto isOver = [](const Unseen& one) { return one.ends.hasExpired(); };
    m_unseen.erase(std::remove_if(m_unseen.begin(), m_unseen.end(), isOver), m_unseen.end());
    if (m_unseen.isEmpty())
        m_letGo.stop();
}

void CameraHub::takeChange(const CameraRecord* camera, const CameraRecord& before)
{
    if (!isSameStream(*camera, before))
        forget(camera);
    for (bool isSmall : {false, true}) {
        if (const auto source = m_sources.value({camera->about.id, isSmall}).toStrongRef())
            source->setMotionRule({camera->about.sensitivity, camera->about.zones});
    }
}

/// Who still holds its sources keeps them; the next one who asks gets others.
void CameraHub::forget(const CameraRecord* camera)
{
    for (bool isSmall : {false, true}) {
        const QSharedPointer<VideoSource> source = m_sources.take({camera->about.id, isSmall}).toStrongRef();
        const auto isIt = [&source](const Unseen& one) { return one.source == source; };
        m_unseen.erase(std::remove_if(m_unseen.begin(), m_unseen.end(), isIt), m_unseen.end());
    }
}
