#include "cameras/CameraJson.h"

#include <QJsonArray>

#include <cmath>

namespace {

constexpr int LongestText = 4096;
constexpr int MostZones = 64;

struct TextField
{
    const char* key;
    QString CameraDescription::*text;
};

constexpr TextField TextFields[] = {
    {"id", &CameraDescription::id},
    {"name", &CameraDescription::name},
    {"group", &CameraDescription::group},
    {"recordedAs", &CameraDescription::recordedAs},
    {"main", &CameraDescription::mainUrl},
    {"small", &CameraDescription::smallUrl},
    {"user", &CameraDescription::user},
    {"onvifAddress", &CameraDescription::onvifAddress},
    {"onvifCertificate", &CameraDescription::onvifCertificate},
    {"onvifMainProfile", &CameraDescription::onvifMainProfile},
    {"onvifSmallProfile", &CameraDescription::onvifSmallProfile},
};

const QStringList Transports{"auto", "tcp", "udp"};
const QStringList Recordings{"always", "motion", "never"};
const QStringList PtzKinds{"none", "onvif"};

/// Takes what an object holds; once something was wrong it takes nothing more.
class Reader
{
public:
    explicit Reader(const QJsonObject& object) : m_object(object) {}

    bool isWell() const { return m_isWell; }

    QString text(const char* key)
    {
        const QJsonValue value = m_object.value(QLatin1String(key));
        const QString text = value.toString();
        check(value.isUndefined() || (value.isString() && text.size() <= LongestText));
        return text;
    }

    template <class Choice> Choice choice(const char* key, const QStringList& choices)
    {
        const QString text = this->text(key);
        const int index = text.isEmpty() ? 0 : choices.indexOf(text);
        check(index >= 0);
        return Choice(qMax(0, index));
    }

    double number(const char* key, double usual, double least, double most)
    {
        const QJsonValue value = m_object.value(QLatin1String(key));
        const double number = value.isUndefined() ? usual : value.toDouble(std::nan(""));
        const bool isFit = number >= least && number <= most;
        check(isFit);
        return isFit ? number : usual;
    }

    bool flag(const char* key, bool usual)
    {
        const QJsonValue value = m_object.value(QLatin1String(key));
        check(value.isUndefined() || value.isBool());
        return value.toBool(usual);
    }

    QVector<QRectF> zones(const char* key)
    {
        const QJsonValue value = m_object.value(QLatin1String(key));
        const QJsonArray array = value.toArray();
        check((value.isUndefined() || value.isArray()) && array.size() <= MostZones);
        QVector<QRectF> zones;
        for (int i = 0; m_isWell && i < array.size(); ++i)
            zones.append(zone(array.at(i).toObject()));
        return zones;
    }

    void check(bool isWell) { m_isWell = m_isWell && isWell; }

private:
    QRectF zone(const QJsonObject& object)
    {
        Reader reader(object);
        const double x = reader.number("x", -1, 0, 1);
        const double y = reader.number("y", -1, 0, 1);
        const double width = reader.number("width", 0, 0, 1);
        const double height = reader.number("height", 0, 0, 1);
        check(reader.isWell() && width > 0 && height > 0);
        return QRectF(x, y, width, height) & QRectF(0, 0, 1, 1);
    }

    QJsonObject m_object;
    bool m_isWell = true;
};

QJsonArray zonesToJson(const QVector<QRectF>& zones)
{
    QJsonArray array;
    for (const QRectF& zone : zones)
        array.append(QJsonObject{
            {"x", zone.x()}, {"y", zone.y()}, {"width", zone.width()}, {"height", zone.height()}});
    return array;
}

} // namespace

QJsonObject cameraToJson(const CameraDescription& camera)
{
    QJsonObject object;
    for (const TextField& field : TextFields) {
        const QString& text = camera.*field.text;
        if (!text.isEmpty())
            object.insert(QLatin1String(field.key), text);
    }
    object.insert("transport", Transports.at(int(camera.transport)));
    object.insert("recording", Recordings.at(int(camera.recording)));
    object.insert("sensitivity", camera.sensitivity);
    object.insert("zones", zonesToJson(camera.zones));
    object.insert("ptz", PtzKinds.at(int(camera.ptz)));
    object.insert("enabled", camera.isEnabled);
    if (camera.isPlainAllowed)
        object.insert("plainPassword", true);
    return object;
}

std::optional<CameraDescription> cameraFromJson(const QJsonValue& value)
{
    Reader reader(value.toObject());
    CameraDescription camera;
    for (const TextField& field : TextFields)
        camera.*field.text = reader.text(field.key);
    camera.transport = reader.choice<SourceAddress::Transport>("transport", Transports);
    camera.recording = reader.choice<CameraDescription::Recording>("recording", Recordings);
    camera.sensitivity =
        int(reader.number("sensitivity", CameraDescription::UsualSensitivity,
                          CameraDescription::LeastSensitivity, CameraDescription::MostSensitivity));
    camera.zones = reader.zones("zones");
    camera.ptz = reader.choice<CameraDescription::Ptz>("ptz", PtzKinds);
    camera.isEnabled = reader.flag("enabled", true);
    camera.isPlainAllowed = reader.flag("plainPassword", false);
    reader.check(value.isObject() && !camera.id.isEmpty() && !camera.name.isEmpty());
    return reader.isWell() ? std::optional(camera) : std::nullopt;
}
