#include "fleet/FleetCameras.h"

#include "cameras/CameraJson.h"
#include "fleet/FleetDatabase.h"

#include <QJsonDocument>

std::optional<CameraDescription> descriptionOf(const LeasedCamera& camera)
{
    QJsonObject json = QJsonDocument::fromJson(camera.description.toUtf8()).object();
    json["id"] = camera.id;
    json["name"] = camera.name;
    return cameraFromJson(json);
}

std::optional<QVector<LeasedCamera>> FleetCameras::read(FleetDatabase& database)
{
    QSqlQuery query = database.query();
    // Any relay has all cameras: one that nobody records now is had from the one that was alive last.
    const char* text =
        "SELECT camera.id, camera.name, camera.description, coalesce(nullif(recorder.live, ''), "
        "(SELECT live FROM recorder WHERE live <> '' ORDER BY alive_until DESC, name LIMIT 1), '') "
        "FROM camera LEFT JOIN lease ON lease.camera = camera.id LEFT JOIN recorder ON recorder.id "
        "= lease.recorder ORDER BY camera.name, camera.id";
    if (!database.run(query, text))
        return std::nullopt;
    QVector<LeasedCamera> cameras;
    while (query.next())
        cameras.append({query.value(0).toString(), query.value(1).toString(), query.value(2).toString(),
                        false, query.value(3).toString()});
    return cameras;
}

namespace {

/// A camera that is not to be recorded no recorder gets.
bool put(FleetDatabase& database, const CameraDescription& camera)
{
    const QByteArray text = QJsonDocument(cameraToJson(camera)).toJson(QJsonDocument::Compact);
    const bool isRecorded = camera.isEnabled && camera.recording != CameraDescription::Recording::Never;
    return database.run(
        "INSERT INTO camera (id, name, description, enabled) VALUES (?, ?, CAST(? AS jsonb), ?) ON CONFLICT "
        "(id) DO UPDATE SET name = EXCLUDED.name, description = EXCLUDED.description, enabled = "
        "EXCLUDED.enabled",
        {camera.id, camera.name, QString::fromUtf8(text), isRecorded});
}

bool changeAll(FleetDatabase& database, const QVector<CameraDescription>& cameras, const QStringList& gone)
{
    for (const QString& id : gone) {
        if (!database.run("DELETE FROM camera WHERE id = ?", {id}))
            return false;
    }
    for (const CameraDescription& camera : cameras) {
        if (!put(database, camera))
            return false;
    }
    return true;
}

} // namespace

bool FleetCameras::change(FleetDatabase& database, const QVector<CameraDescription>& cameras,
                          const QStringList& gone)
{
    return database.change([&] { return changeAll(database, cameras, gone); });
}
