#include "cameras/CameraHub.h"

#include "cameras/CameraList.h"
#include "sound/SoundOutput.h"
#include "source/VideoSource.h"

CameraHub::CameraHub(QObject* parent) : QObject(parent), m_speaker(std::make_shared<SoundOutput>()) {}

QSharedPointer<VideoSource> CameraHub::acquire(const CameraRecord& camera, QString* error)
{
    if (QSharedPointer<VideoSource> running = m_sources.value(camera.name).toStrongRef())
        return running;
    const auto address = SourceAddress::parse(camera.name + "=" + camera.address, error);
    if (!address)
        return {};
    // A source may be let go inside one of its own signals.
    QSharedPointer<VideoSource> source(new VideoSource(*address), &QObject::deleteLater);
    m_sources.insert(camera.name, source);
    source->start();
    return source;
}
