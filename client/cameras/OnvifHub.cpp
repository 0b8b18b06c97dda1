#include "cameras/OnvifHub.h"

#include "cameras/CameraList.h"
#include "cameras/OnvifCamera.h"
#include "common/EngineText.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QTimer>

#include <algorithm>

namespace {

/// How long the program's end waits for cameras to answer a stop.
constexpr int FarewellMs = 1500;
/// And to hear that nobody listens any more, which a camera finds out by itself within a minute.
constexpr int UnsubscribeMs = 250;
constexpr int LookMs = 10;

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

/// It is kept until it has answered that it is to stop, and that nobody listens.
void OnvifHub::letGo(const CameraRecord* camera)
{
    OnvifCamera* device = m_devices.take(camera);
    if (!device)
        return;
    device->leave();
    device->disconnect(this);
    const auto go = [device] {
        if (!device->isStopping() && !device->isLeaving())
            device->deleteLater();
    };
    connect(device, &OnvifCamera::settled, device, go);
    go();
}

void OnvifHub::stopAll()
{
    for (OnvifCamera* device : qAsConst(m_devices))
        device->stop();
}

void OnvifHub::settle()
{
    // Those that were let go before are among them, and go as soon as they have answered.
    const auto devices = [this] { return findChildren<OnvifCamera*>(QString(), Qt::FindDirectChildrenOnly); };
    for (OnvifCamera* device : devices())
        device->leave();
    QDeadlineTimer unsubscribe(UnsubscribeMs);
    QDeadlineTimer farewell(FarewellMs);
    const auto isWaiting = [&](const OnvifCamera* device) {
        return (device->isStopping() && !farewell.hasExpired()) ||
               (device->isLeaving() && !unsubscribe.hasExpired());
    };
    const auto isAnyWaiting = [&] {
        const QList<OnvifCamera*> all = devices();
        return std::any_of(all.begin(), all.end(), isWaiting);
    };
    QEventLoop loop;
    QTimer look;
    connect(&look, &QTimer::timeout, &loop, [&] {
        if (!isAnyWaiting())
            loop.quit();
    });
    look.start(LookMs);
    if (isAnyWaiting())
        loop.exec(QEventLoop::ExcludeUserInputEvents);
}
