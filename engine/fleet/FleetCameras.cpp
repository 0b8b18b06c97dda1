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
    if (!database.run(query, "SELECT id, name, description FROM camera ORDER BY name, id"))
        return std::nullopt;
    QVector<LeasedCamera> cameras;
    while (query.next())
        cameras.append({query.value(0).toString(), query.value(1).toString(), query.value(2).toString()});
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

/// The lock is that of tell_change(): two desks that took it after their first cameras would wait for each
/// other. One that is cut off in between would hold all recorders up with it.
bool begin(FleetDatabase& database)
{
    return database.run("BEGIN") && database.run("SET LOCAL idle_in_transaction_session_timeout = '5s'") &&
           database.run("SELECT pg_advisory_xact_lock(hashtext('panedeck change'))");
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
    if (begin(database) && changeAll(database, cameras, gone) && database.run("COMMIT"))
        return true;
    database.rollBack();
    return false;
}
