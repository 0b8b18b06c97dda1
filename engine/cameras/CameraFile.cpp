#include "cameras/CameraFile.h"

#include "cameras/CameraJson.h"
#include "cameras/PrivateFile.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

namespace {

constexpr qint64 MostBytes = 16 << 20;
constexpr int MostCameras = 4096;
constexpr char VersionKey[] = "version";
constexpr char CamerasKey[] = "cameras";

std::optional<QVector<CameraDescription>> camerasOf(const QByteArray& content, QString* error)
{
    QJsonParseError fault;
    const QJsonObject root = QJsonDocument::fromJson(content, &fault).object();
    const QJsonValue version = root.value(VersionKey);
    if (fault.error != QJsonParseError::NoError || !version.isDouble()) {
        *error = "it is no list of cameras";
        return std::nullopt;
    }
    if (version.toDouble() != CameraFile::Version) {
        *error = "it is of another version";
        return std::nullopt;
    }
    const QJsonArray array = root.value(CamerasKey).toArray();
    QVector<CameraDescription> cameras;
    bool isWhole = root.value(CamerasKey).isArray() && array.size() <= MostCameras;
    for (int i = 0; isWhole && i < array.size(); ++i) {
        const auto camera = cameraFromJson(array.at(i));
        isWhole = camera.has_value();
        if (isWhole)
            cameras.append(*camera);
    }
    *error = isWhole ? faultOf(cameras) : QString("camera %1 is damaged").arg(cameras.size() + 1);
    return error->isEmpty() ? std::optional(cameras) : std::nullopt;
}

QByteArray contentOf(const QVector<CameraDescription>& cameras)
{
    QJsonArray array;
    for (const CameraDescription& camera : cameras)
        array.append(cameraToJson(camera));
    return QJsonDocument({{VersionKey, CameraFile::Version}, {CamerasKey, array}}).toJson();
}

} // namespace

QString CameraFile::userPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/PaneDeck/cameras.json";
}

bool CameraFile::exists() const
{
    const QFileInfo about(m_path);
    return about.exists() || about.isSymLink();
}

std::optional<QVector<CameraDescription>> CameraFile::read(QString* error)
{
    const auto content = readPrivateFile(m_path, MostBytes, error);
    QString why;
    const auto cameras = content ? camerasOf(*content, &why) : std::nullopt;
    if (cameras)
        m_known = content;
    else if (content)
        *error = QString("cannot read %1: %2").arg(m_path, why);
    m_fault = cameras ? QString() : *error;
    return cameras;
}

bool CameraFile::write(const QVector<CameraDescription>& cameras, QString* error)
{
    QString why;
    if (exists() != m_known.has_value() || (m_known && readPrivateFile(m_path, MostBytes, &why) != m_known)) {
        const QString changed = QString("cannot write %1: %2").arg(m_path, "another program has changed it");
        *error = m_fault.isEmpty() ? changed : m_fault;
        return false;
    }
    const QByteArray content = contentOf(cameras);
    // What could not be read again would take all cameras with it.
    if (content.size() > MostBytes)
        why = "it is too large";
    if (!why.isEmpty() || !camerasOf(content, &why)) {
        *error = QString("cannot write %1: %2").arg(m_path, why);
        return false;
    }
    if (!writePrivateFile(m_path, content, error))
        return false;
    m_known = content;
    return true;
}
