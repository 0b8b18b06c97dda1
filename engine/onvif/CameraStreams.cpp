#include "onvif/CameraStreams.h"

#include "onvif/DeviceAddress.h"

namespace {

using Service = OnvifDevice::Service;

constexpr int MostProfiles = 64;
constexpr int WidestSmall = 1024;
/// ONVIF has 64; what is kept of a camera has its limit too.
constexpr int LongestToken = 256;

bool isEncoded(const MediaProfile& profile)
{
    return !profile.encoding.isEmpty() || !profile.size.isEmpty();
}

bool isStills(const MediaProfile& profile)
{
    return profile.encoding == "JPEG";
}

const SoapNode& configuration(const SoapNode& profile, const QString& kind)
{
    const SoapNode& ofMedia2 = profile.at("Configurations/" + kind);
    return ofMedia2.name.isEmpty() ? profile.at(kind + "Configuration") : ofMedia2;
}

qint64 area(const MediaProfile& profile)
{
    return qint64(profile.size.width()) * profile.size.height();
}

bool isBetter(const MediaProfile& one, const MediaProfile& than)
{
    if (than.token.isEmpty() || isStills(one) != isStills(than))
        return than.token.isEmpty() || isStills(than);
    return area(one) > area(than);
}

MediaProfile smallFor(const MediaProfile& main, const QVector<MediaProfile>& profiles)
{
    const int widest = qMin(WidestSmall, main.size.width() / 2);
    MediaProfile best;
    for (const MediaProfile& one : profiles) {
        const bool fits = one.source == main.source && isStills(one) == isStills(main) &&
                          !one.size.isEmpty() && one.size.width() <= widest;
        if (fits && isBetter(one, best))
            best = one;
    }
    return best;
}

void askMedia(OnvifDevice* device, Service service, ProfilesDone done)
{
    SoapNode question = OnvifDevice::operation(service, "GetProfiles");
    if (service == Service::Media2)
        question.add(SoapNode("Type", "All"));
    device->call(service, question, [service, done = std::move(done)](const SoapAnswer& answer) {
        QVector<MediaProfile> profiles = readProfiles(answer.body);
        for (MediaProfile& profile : profiles)
            profile.service = service;
        done(answer.fault, profiles);
    });
}

SoapNode streamQuestion(const MediaProfile& profile)
{
    SoapNode body = OnvifDevice::operation(profile.service, "GetStreamUri");
    if (profile.service == Service::Media2)
        return body.add(SoapNode("Protocol", "RtspUnicast")).add(SoapNode("ProfileToken", profile.token));
    const QString schema = "http://www.onvif.org/ver10/schema";
    SoapNode setup("StreamSetup");
    SoapNode kind("Stream", "RTP-Unicast");
    SoapNode transport("Transport");
    transport.add(SoapNode("Protocol", "RTSP"));
    kind.nameSpace = transport.nameSpace = schema;
    return body.add(setup.add(kind).add(transport)).add(SoapNode("ProfileToken", profile.token));
}

/// Media2 has given profiles, but no stream.
bool isInVain(const QVector<DeviceCamera>& cameras)
{
    return !cameras.isEmpty() && std::all_of(cameras.begin(), cameras.end(), [](const DeviceCamera& camera) {
        return camera.main.service == Service::Media2 && camera.mainUrl.isEmpty();
    });
}

/// Asks for one stream after the other.
class StreamReader : public QObject
{
public:
    StreamReader(OnvifDevice* device, CamerasDone done)
        : QObject(device), m_device(device), m_done(std::move(done))
    {
    }

    void start()
    {
        askProfiles(m_device, [this](const OnvifFault& fault, const QVector<MediaProfile>& profiles) {
            begin(fault, profiles);
        });
    }

private:
    void begin(const OnvifFault& fault, const QVector<MediaProfile>& profiles);
    void ask(int stream);
    void take(int stream, const SoapAnswer& answer);
    void finish();

    OnvifDevice* m_device;
    CamerasDone m_done;
    OnvifFault m_fault;
    QVector<DeviceCamera> m_cameras;
};

void StreamReader::begin(const OnvifFault& fault, const QVector<MediaProfile>& profiles)
{
    m_fault = fault;
    m_cameras = chooseProfiles(profiles);
    ask(0);
}

/// Even streams are main ones, odd ones the small ones of the same cameras.
void StreamReader::ask(int stream)
{
    if (stream >= 2 * m_cameras.size())
        return finish();
    const DeviceCamera& camera = m_cameras[stream / 2];
    const MediaProfile& profile = stream % 2 ? camera.small : camera.main;
    if (profile.token.isEmpty())
        return ask(stream + 1);
    m_device->call(profile.service, streamQuestion(profile),
                   [this, stream](const SoapAnswer& answer) { take(stream, answer); });
}

void StreamReader::take(int stream, const SoapAnswer& answer)
{
    DeviceCamera& camera = m_cameras[stream / 2];
    if (answer.fault)
        m_fault = answer.fault;
    const SoapNode& told = answer.body.at("Uri");
    const QUrl url = streamAddress(m_device->address(),
                                   told.name.isEmpty() ? answer.body.at("MediaUri/Uri").text : told.text);
    (stream % 2 ? camera.smallUrl : camera.mainUrl) = url.toString(QUrl::FullyEncoded);
    ask(stream + 1);
}

/// Some devices tell of Media2, and then do nothing for it.
void StreamReader::finish()
{
    if (isInVain(m_cameras) && m_device->has(Service::Media)) {
        askMedia(m_device, Service::Media,
                 [this](const OnvifFault& fault, const auto& profiles) { begin(fault, profiles); });
        return;
    }
    QVector<DeviceCamera> whole;
    for (DeviceCamera camera : qAsConst(m_cameras)) {
        if (camera.mainUrl.isEmpty())
            continue;
        camera.name = m_device->name();
        if (m_cameras.size() > 1)
            camera.name += ' ' + QString::number(whole.size() + 1);
        whole.append(camera);
    }
    if (whole.isEmpty() && !m_fault)
        m_fault.kind = OnvifFault::Kind::NotSupported;
    deleteLater();
    m_done(whole.isEmpty() ? m_fault : OnvifFault(), whole);
}

} // namespace

QVector<MediaProfile> readProfiles(const SoapNode& body)
{
    QVector<MediaProfile> profiles;
    for (const SoapNode& node : body.children) {
        if (node.name != "Profiles" || profiles.size() >= MostProfiles)
            continue;
        const SoapNode& source = configuration(node, "VideoSource");
        const SoapNode& encoder = configuration(node, "VideoEncoder");
        const QSize size(encoder.at("Resolution/Width").text.toInt(),
                         encoder.at("Resolution/Height").text.toInt());
        MediaProfile profile{node.attribute("token"),
                             source.at("SourceToken").text,
                             source.attribute("token"),
                             encoder.at("Encoding").text,
                             size.expandedTo({0, 0}).boundedTo({65536, 65536}),
                             !configuration(node, "PTZ").name.isEmpty()};
        if (!profile.token.isEmpty() && profile.token.size() <= LongestToken)
            profiles.append(profile);
    }
    return profiles;
}

void askProfiles(OnvifDevice* device, ProfilesDone done)
{
    if (!device->has(Service::Media2))
        return askMedia(device, Service::Media, std::move(done));
    askMedia(device, Service::Media2,
             [device, done = std::move(done)](const auto& fault, const auto& profiles) {
                 if (profiles.isEmpty() && device->has(Service::Media))
                     askMedia(device, Service::Media, done);
                 else
                     done(fault, profiles);
             });
}

QVector<DeviceCamera> chooseProfiles(const QVector<MediaProfile>& profiles)
{
    QVector<DeviceCamera> cameras;
    const bool hasEncoder = std::any_of(profiles.begin(), profiles.end(), isEncoded);
    for (const MediaProfile& profile : profiles) {
        if (hasEncoder && !isEncoded(profile))
            continue;
        const auto known = std::find_if(cameras.begin(), cameras.end(), [&](const DeviceCamera& camera) {
            return camera.main.source == profile.source;
        });
        if (known == cameras.end())
            cameras.append(DeviceCamera{{}, profile, {}, {}, {}});
        else if (isBetter(profile, known->main))
            known->main = profile;
    }
    for (DeviceCamera& camera : cameras)
        camera.small = smallFor(camera.main, profiles);
    return cameras;
}

void readCameras(OnvifDevice* device, CamerasDone done)
{
    (new StreamReader(device, std::move(done)))->start();
}
