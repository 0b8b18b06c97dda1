#include "cameras/CameraFile.h"

#include "cameras/CameraJson.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
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

std::optional<QByteArray> CameraFile::content(QString* error) const
{
    QFile file(m_path);
    const QFileInfo about(m_path);
    QString why;
    if (!about.isFile())
        why = "it is no file";
    else if (about.size() > MostBytes)
        why = "it is too large";
    else if (!file.open(QIODevice::ReadOnly))
        why = file.errorString();
    if (why.isEmpty())
        return file.readAll();
    *error = why;
    return std::nullopt;
}

std::optional<QVector<CameraDescription>> CameraFile::read(QString* error)
{
    QString why;
    const auto found = content(&why);
    const auto cameras = found ? camerasOf(*found, &why) : std::nullopt;
    if (cameras)
        m_known = found;
    else
        *error = QString("cannot read %1: %2").arg(m_path, why);
    return cameras;
}

bool CameraFile::write(const QVector<CameraDescription>& cameras, QString* error)
{
    const auto refuse = [&](const QString& why) {
        *error = QString("cannot write %1: %2").arg(m_path, why);
        return false;
    };
    QString why;
    if (exists() != m_known.has_value() || (m_known && content(&why) != m_known))
        return refuse("another program has changed it");
    QDir().mkpath(QFileInfo(m_path).path());
    QSaveFile file(m_path);
    const QByteArray content = contentOf(cameras);
    if (!file.open(QIODevice::WriteOnly))
        return refuse(file.errorString());
    if (!file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) || file.write(content) != content.size() ||
        !file.commit())
        return refuse(file.errorString());
    m_known = content;
    return true;
}
