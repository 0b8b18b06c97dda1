#include "cameras/OnvifHub.h"

#include "cameras/CameraList.h"
#include "cameras/OnvifCamera.h"
#include "common/EngineText.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QTimer>

namespace {

/// How long the program's end waits for cameras to answer a stop.
constexpr int FarewellMs = 1500;

} // namespace

OnvifHub::OnvifHub(const CameraList& cameras, QObject* parent) : QObject(parent), m_cameras(cameras)
{
    connect(&cameras, &CameraList::added, this, &OnvifHub::update);
    connect(&cameras, &CameraList::changed, this, &OnvifHub::update);
    connect(&cameras, &CameraList::aboutToBeRemoved, this, &OnvifHub::letGo);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &OnvifHub::settle);
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state != Qt::ApplicationActive)
            stopAll();
    });
    QTimer::singleShot(0, this, &OnvifHub::listen);
}

OnvifHub::~OnvifHub() = default;

void OnvifHub::listen()
{
    for (int i = 0; i < m_cameras.count(); ++i)
        update(&m_cameras.at(i));
}

OnvifCamera* OnvifHub::find(const CameraRecord& camera)
{
    if (camera.about.onvifAddress.isEmpty() || !camera.address)
        return nullptr;
    if (OnvifCamera* known = m_devices.value(&camera))
        return known;
    auto* device = new OnvifCamera(camera.about, m_cameras.passwordOf(camera.about.id), this);
    m_devices.insert(&camera, device);
    const CameraRecord* key = &camera;
    connect(device, &OnvifCamera::failed, this,
            [this, key](const OnvifFault& fault) { Q_EMIT failed(key, engineText(fault.text())); });
    connect(device, &OnvifCamera::motionChanged, this,
            [this, key](bool on) { Q_EMIT motionChanged(key, on); });
    connect(device, &OnvifCamera::alarmChanged, this, [this, key](bool on) { Q_EMIT alarmChanged(key, on); });
    return device;
}

void OnvifHub::update(const CameraRecord* camera)
{
    const OnvifCamera* known = m_devices.value(camera);
    if (known && camera->address && known->isFor(camera->about, m_cameras.passwordOf(camera->about.id)))
        return;
    letGo(camera);
    if (OnvifCamera* device = find(*camera))
        device->listen();
}

/// A device that turns is kept until it has answered its stop.
void OnvifHub::letGo(const CameraRecord* camera)
{
    OnvifCamera* device = m_devices.take(camera);
    if (!device)
        return;
    device->endEvents();
    device->disconnect(this);
    device->stop();
    if (device->isStopping())
        connect(device, &OnvifCamera::stopped, device, &QObject::deleteLater);
    else
        device->deleteLater();
}

void OnvifHub::stopAll()
{
    for (OnvifCamera* device : qAsConst(m_devices))
        device->stop();
}

bool OnvifHub::isStopping() const
{
    for (const OnvifCamera* device : findChildren<OnvifCamera*>()) {
        if (device->isStopping())
            return true;
    }
    return false;
}

void OnvifHub::settle()
{
    stopAll();
    QEventLoop loop;
    QTimer::singleShot(FarewellMs, &loop, &QEventLoop::quit);
    for (const OnvifCamera* device : findChildren<OnvifCamera*>())
        connect(device, &OnvifCamera::stopped, &loop, [this, &loop] {
            if (!isStopping())
                loop.quit();
        });
    if (isStopping())
        loop.exec(QEventLoop::ExcludeUserInputEvents);
}
