#include "onvif/CameraStreams.h"

#include "onvif/DeviceAddress.h"

namespace {

using Service = OnvifDevice::Service;

constexpr int MostProfiles = 64;
constexpr int WidestSmall = 1024;
/// ONVIF has 64; what is kept of a camera has its limit too.
constexpr int LongestToken = 256;

bool isStills(const MediaProfile& profile)
{
    return profile.encoding == "JPEG";
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
        m_device->call(Service::Media, OnvifDevice::operation(Service::Media, "GetProfiles"),
                       [this](const SoapAnswer& answer) {
                           m_fault = answer.fault;
                           m_cameras = chooseProfiles(readProfiles(answer.body));
                           ask(0);
                       });
    }

private:
    void ask(int stream);
    void take(int stream, const SoapAnswer& answer);
    void finish();

    OnvifDevice* m_device;
    CamerasDone m_done;
    OnvifFault m_fault;
    QVector<DeviceCamera> m_cameras;
};

/// Even streams are main ones, odd ones the small ones of the same cameras.
void StreamReader::ask(int stream)
{
    if (stream >= 2 * m_cameras.size())
        return finish();
    const DeviceCamera& camera = m_cameras[stream / 2];
    const QString token = (stream % 2 ? camera.small : camera.main).token;
    if (token.isEmpty())
        return ask(stream + 1);
    const QString schema = "http://www.onvif.org/ver10/schema";
    SoapNode setup("StreamSetup");
    SoapNode kind("Stream", "RTP-Unicast");
    SoapNode transport("Transport");
    transport.add(SoapNode("Protocol", "RTSP"));
    kind.nameSpace = transport.nameSpace = schema;
    SoapNode body = OnvifDevice::operation(Service::Media, "GetStreamUri");
    body.add(setup.add(kind).add(transport)).add(SoapNode("ProfileToken", token));
    m_device->call(Service::Media, body, [this, stream](const SoapAnswer& answer) { take(stream, answer); });
}

void StreamReader::take(int stream, const SoapAnswer& answer)
{
    DeviceCamera& camera = m_cameras[stream / 2];
    if (answer.fault)
        m_fault = answer.fault;
    const QUrl url = streamAddress(m_device->address(), answer.body.at("MediaUri/Uri").text);
    (stream % 2 ? camera.smallUrl : camera.mainUrl) = url.toString(QUrl::FullyEncoded);
    ask(stream + 1);
}

void StreamReader::finish()
{
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
        const SoapNode& source = node.at("VideoSourceConfiguration");
        const SoapNode& encoder = node.at("VideoEncoderConfiguration");
        const QSize size(encoder.at("Resolution/Width").text.toInt(),
                         encoder.at("Resolution/Height").text.toInt());
        MediaProfile profile{node.attribute("token"),
                             source.at("SourceToken").text,
                             source.attribute("token"),
                             encoder.at("Encoding").text,
                             size.expandedTo({0, 0}).boundedTo({65536, 65536}),
                             !node.at("PTZConfiguration").name.isEmpty()};
        if (!profile.token.isEmpty() && profile.token.size() <= LongestToken)
            profiles.append(profile);
    }
    return profiles;
}

QVector<DeviceCamera> chooseProfiles(const QVector<MediaProfile>& profiles)
{
    QVector<DeviceCamera> cameras;
    for (const MediaProfile& profile : profiles) {
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
