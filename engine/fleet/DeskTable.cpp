#include "fleet/DeskTable.h"

#include "fleet/FleetDatabase.h"

#include <QSysInfo>

std::optional<QVector<PtzLease>> DeskTable::leases(FleetDatabase& database, const QString& desk)
{
    QSqlQuery query = database.query();
    if (!database.run(
            query,
            "SELECT camera, holder, CASE WHEN asked_until > clock_timestamp() THEN asking END, desk "
            "= ?::uuid, coalesce(asking_desk = ?::uuid, false), extract(epoch FROM until - "
            "clock_timestamp()) * 1000 FROM ptz_lease WHERE until > clock_timestamp()",
            {desk, desk}))
        return std::nullopt;
    QVector<PtzLease> leases;
    while (query.next())
        leases.append({query.value(0).toString(), query.value(1).toString(), query.value(2).toString(),
                       query.value(3).toBool(), query.value(4).toBool(), query.value(5).toLongLong()});
    return leases;
}

PtzAnswer DeskTable::take(FleetDatabase& database, const QString& desk, const QString& camera)
{
    QSqlQuery query = database.query();
    PtzAnswer answer;
    answer.camera = camera;
    if (!database.run(query, "SELECT is_mine, left_ms, who FROM take_ptz(?, ?::uuid, ?)",
                      {camera, desk, QSysInfo::machineHostName()}) ||
        !query.next()) {
        answer.refusal = database.reason();
        return answer;
    }
    answer.isMine = query.value(0).toBool();
    answer.leftMs = query.value(1).toLongLong();
    answer.holder = query.value(2).toString();
    return answer;
}

bool DeskTable::ask(FleetDatabase& database, const QString& desk, const QString& camera)
{
    return database.run("SELECT ask_ptz(?, ?::uuid, ?)", {camera, desk, QSysInfo::machineHostName()});
}

bool DeskTable::give(FleetDatabase& database, const QString& desk, const QString& camera)
{
    return database.run("SELECT give_ptz(?, ?::uuid)", {camera, desk});
}

bool DeskTable::keep(FleetDatabase& database, const QString& desk, const QString& camera)
{
    return database.run("SELECT keep_ptz(?, ?::uuid)", {camera, desk});
}

std::optional<FleetRights> DeskTable::rights(FleetDatabase& database)
{
    QSqlQuery query = database.query();
    if (!database.run(query,
                      "SELECT has_table_privilege('camera', 'INSERT') AND has_table_privilege('camera', "
                      "'UPDATE'), has_column_privilege('span', 'acknowledged_by', 'UPDATE'), "
                      "has_function_privilege('take_ptz(text, uuid, text)', 'EXECUTE'), "
                      "has_table_privilege('deck_view', 'INSERT')") ||
        !query.next())
        return std::nullopt;
    return FleetRights{query.value(0).toBool(), query.value(1).toBool(), query.value(2).toBool(),
                       query.value(3).toBool()};
}

std::optional<QVector<SharedView>> DeskTable::views(FleetDatabase& database)
{
    QSqlQuery query = database.query();
    if (!database.run(query, "SELECT name, description FROM deck_view ORDER BY name"))
        return std::nullopt;
    QVector<SharedView> views;
    while (query.next())
        views.append({query.value(0).toString(), query.value(1).toString()});
    return views;
}

bool DeskTable::putView(FleetDatabase& database, const SharedView& view, const QString& before)
{
    const bool isRenamed = !before.isEmpty() && before != view.name;
    return database.change([&] {
        return (!isRenamed ||
                database.run("UPDATE deck_view SET name = ? WHERE name = ?", {view.name, before})) &&
               database.run("INSERT INTO deck_view (name, description) VALUES (?, CAST(? AS jsonb)) ON "
                            "CONFLICT (name) DO UPDATE SET description = EXCLUDED.description, changed_by = "
                            "session_user",
                            {view.name, view.description});
    });
}

bool DeskTable::removeView(FleetDatabase& database, const QString& name)
{
    return database.run("DELETE FROM deck_view WHERE name = ?", {name});
}
