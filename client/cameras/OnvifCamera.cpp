#include "cameras/OnvifCamera.h"

#include "cameras/CameraDescription.h"
#include "onvif/CameraStreams.h"

namespace {

constexpr int ListenAgainMs = 20'000;
constexpr int MostSources = 256;

OnvifLogin loginOf(const CameraDescription& about, const QString& password)
{
    return {QUrl(about.onvifAddress), about.user, password, about.onvifCertificate, about.isPlainAllowed};
}

} // namespace

OnvifCamera::OnvifCamera(const CameraDescription& about, const QString& password, QObject* parent)
    : QObject(parent), m_login(loginOf(about, password)), m_profile(about.onvifMainProfile),
      m_device(m_login), m_ptz(&m_device, m_profile), m_events(&m_device)
{
    m_again.setSingleShot(true);
    m_again.setInterval(ListenAgainMs);
    connect(&m_again, &QTimer::timeout, this, &OnvifCamera::listen);
    connect(m_ptz.steering(), &PtzSteering::failed, this, &OnvifCamera::failed);
    connect(m_ptz.steering(), &PtzSteering::stopped, this, &OnvifCamera::settled);
    connect(&m_events, &OnvifEvents::ended, this, &OnvifCamera::settled);
    connect(&m_events, &OnvifEvents::stateChanged, this, &OnvifCamera::takeEvents);
    connect(&m_events, &OnvifEvents::told, this, &OnvifCamera::takeEvent);
}

bool OnvifCamera::isFor(const CameraDescription& about, const QString& password) const
{
    const OnvifLogin login = loginOf(about, password);
    return login.address == m_login.address && login.user == m_login.user &&
           login.password == m_login.password && login.certificate == m_login.certificate &&
           login.isPlainAllowed == m_login.isPlainAllowed && about.onvifMainProfile == m_profile;
}

void OnvifCamera::open(OnvifDevice::Done done)
{
    if (m_isOpen)
        return done({});
    m_waiting.push_back(std::move(done));
    if (m_waiting.size() == 1)
        m_device.open([this](const OnvifFault& fault) { takeOpened(fault); });
}

void OnvifCamera::takeOpened(const OnvifFault& fault)
{
    m_isOpen = !fault;
    m_ptz.steering()->setReady(m_isOpen);
    for (const OnvifDevice::Done& done : std::exchange(m_waiting, {}))
        done(fault);
}

/// The newest move waits in the steering while the device is opened, where a stop drops it.
void OnvifCamera::move(const PtzMove& move)
{
    m_ptz.steering()->move(move);
    open([this](const OnvifFault& fault) {
        if (!fault)
            return;
        m_ptz.steering()->drop();
        Q_EMIT failed(fault);
    });
}

void OnvifCamera::steer(int command, bool start)
{
    if (!start)
        return stop();
    if (const auto order = OnvifPtz::moveOf(command))
        move(*order);
}

void OnvifCamera::moveTo(const QRectF& part)
{
    move(OnvifPtz::moveTo(part));
}

void OnvifCamera::goTo(const PtzPreset& preset)
{
    move({PtzMove::Kind::Preset, 0, 0, 0, preset.token});
}

void OnvifCamera::readPresets(OnvifPtz::PresetsDone done)
{
    open([this, done = std::move(done)](const OnvifFault& fault) {
        if (fault)
            done(fault, {});
        else
            m_ptz.readPresets(done);
    });
}

void OnvifCamera::storePreset(const QString& name, OnvifDevice::Done done)
{
    open([this, name, done = std::move(done)](const OnvifFault& fault) {
        if (fault)
            done(fault);
        else
            m_ptz.storePreset(name, done);
    });
}

void OnvifCamera::listen()
{
    open([this](const OnvifFault& fault) {
        if (!fault)
            startEvents();
        else if (!m_isLeft && fault.kind != OnvifFault::Kind::WrongPassword &&
                 fault.kind != OnvifFault::Kind::NotBuilt)
            m_again.start();
    });
}

/// A device with several video sources reports for all of them: what is this camera's is known by its
/// profile.
void OnvifCamera::startEvents()
{
    if (m_isLeft || !m_device.has(OnvifDevice::Service::Events))
        return;
    askProfiles(&m_device, [this](const OnvifFault&, const QVector<MediaProfile>& profiles) {
        m_sources.clear();
        for (const MediaProfile& profile : profiles) {
            if (profile.token == m_profile)
                m_sources = QStringList{profile.source, profile.sourceConfiguration, profile.token};
        }
        if (!m_isLeft)
            m_events.start();
    });
}

void OnvifCamera::leave()
{
    stop();
    m_again.stop();
    m_isLeft = true;
    m_events.stop();
    endEvents();
}

void OnvifCamera::endEvents()
{
    setOn(OnvifEvent::Kind::Motion, {});
    setOn(OnvifEvent::Kind::Alarm, {});
}

/// A device that has lost its clock takes no password until it is asked for its time again.
void OnvifCamera::takeEvents(const OnvifFault& fault)
{
    if (!fault)
        return;
    endEvents();
    if (fault.kind != OnvifFault::Kind::WrongPassword)
        return;
    m_events.stop();
    m_isOpen = false;
    m_again.start();
}

void OnvifCamera::takeEvent(const OnvifEvent& event)
{
    const bool isOurs = event.kind == OnvifEvent::Kind::Alarm || m_sources.isEmpty() ||
                        event.source.isEmpty() || m_sources.contains(event.source);
    if (!isOurs)
        return;
    QSet<QString> on = m_on[int(event.kind)];
    if (event.isOn && on.size() < MostSources)
        on.insert(event.source);
    else if (!event.isOn)
        on.remove(event.source);
    setOn(event.kind, on);
}

void OnvifCamera::setOn(OnvifEvent::Kind kind, const QSet<QString>& sources)
{
    const bool was = !std::exchange(m_on[int(kind)], sources).isEmpty();
    if (was == !sources.isEmpty())
        return;
    if (kind == OnvifEvent::Kind::Motion)
        Q_EMIT motionChanged(!was);
    else
        Q_EMIT alarmChanged(!was);
}
