#include "cameras/CameraHub.h"

#include "cameras/CameraList.h"
#include "cameras/CaptionStrip.h"
#include "sound/SoundOutput.h"
#include "synthetic/CameraSource.h"

CameraHub::CameraHub(QObject* parent) : QObject(parent), m_speaker(std::make_shared<SoundOutput>()) {}

QSharedPointer<VideoSource> CameraHub::acquire(const CameraRecord& camera)
{
    if (QSharedPointer<VideoSource> running = m_sources.value(camera.name).toStrongRef())
        return running;
    if (!camera.address)
        return {};
    // A source may be let go inside one of its own signals.
    QSharedPointer<VideoSource> source(makeCameraSource(*camera.address, captionStrip).release(),
                                       &QObject::deleteLater);
    m_sources.insert(camera.name, source);
    source->start();
    return source;
}
