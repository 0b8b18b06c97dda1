#include "fleet/LeaseTable.h"

#include "fleet/FleetRecorder.h"

#include <limits>

namespace {

/// Cameras that the recorder `me` may record.
constexpr const char* Mine =
    "camera.enabled AND (camera.recorder IS NULL OR camera.recorder = me.id) AND (camera.site = '' "
    "OR camera.site = me.site)";

/// The same of one of all recorders.
constexpr const char* Its =
    "(camera.recorder IS NULL OR camera.recorder = recorder.id) AND (camera.site = '' "
    "OR camera.site = recorder.site)";

/// Lives on, as the tables' other statements have it.
constexpr const char* Alive = "recorder.alive_until > clock_timestamp()";

} // namespace

bool LeaseTable::join()
{
    return m_database.run(
        "INSERT INTO recorder (id, name, site, url) VALUES (?::uuid, ?, ?, ?) ON CONFLICT (id) DO UPDATE "
        "SET name = EXCLUDED.name, site = EXCLUDED.site, url = EXCLUDED.url",
        {m_recorder.id, m_recorder.name, m_recorder.site, m_recorder.url});
}

bool LeaseTable::step()
{
    if (!m_database.run(
            "UPDATE recorder SET alive_until = clock_timestamp() + interval '10 s' WHERE id = ?::uuid",
            {m_recorder.id}) ||
        !letGo())
        return false;
    const std::optional<Share> share = this->share();
    if (!share)
        return false;
    if (share->held < share->fair)
        return take(share->fair - share->held, true) && offer(0);
    // What is still free nobody else can take: those who may have their shares of other cameras.
    return take(std::numeric_limits<int>::max(), false) && offer(share->held - share->fair);
}

/// A camera is shared by those who live and may record it; one share is the sum over the cameras.
std::optional<LeaseTable::Share> LeaseTable::share()
{
    QSqlQuery query = m_database.query();
    const QString text = QString("SELECT (SELECT count(*) FROM lease WHERE recorder = me.id), (SELECT "
                                 "coalesce(ceil(sum(1.0 / greatest(1, "
                                 "(SELECT count(*) FROM recorder WHERE %1 AND %2)))), 0) FROM camera "
                                 "WHERE %3) FROM recorder me "
                                 "WHERE me.id = ?::uuid")
                             .arg(Alive, Its, Mine);
    if (!m_database.run(query, text, {m_recorder.id}) || !query.next())
        return std::nullopt;
    return Share{query.value(0).toInt(), query.value(1).toInt()};
}

/// Of two that take at once each gets what the other has not locked. Who records a camera till now, or comes
/// back in this moment and did, goes on until it is ready here.
bool LeaseTable::take(int count, bool offeredToo)
{
    const QString text =
        QString("WITH free AS (SELECT lease.camera, before.id AS running FROM lease JOIN camera ON camera.id "
                "= lease.camera JOIN recorder me ON me.id = "
                "?::uuid LEFT JOIN "
                "recorder before ON before.id = lease.recorder WHERE %1 AND lease.recorder IS DISTINCT FROM "
                "me.id AND "
                "(before.id IS NULL OR before.alive_until < clock_timestamp() OR (lease.offered AND "
                "?::boolean)) ORDER BY lease.camera LIMIT "
                "? FOR UPDATE OF lease SKIP LOCKED) UPDATE lease SET recorder = ?::uuid, taken = "
                "clock_timestamp(), offered "
                "= false, ready = false, previous = free.running FROM free WHERE lease.camera = free.camera")
            .arg(Mine);
    return m_database.run(text, {m_recorder.id, offeredToo, count, m_recorder.id});
}

/// Offered are so many, and no more, those first that another one may take.
bool LeaseTable::offer(int count)
{
    const QString text =
        QString("UPDATE lease SET offered = NOT lease.offered FROM (SELECT lease.camera, row_number() OVER "
                "(ORDER BY EXISTS (SELECT 1 FROM recorder WHERE recorder.id <> ?::uuid AND %1 AND %2) DESC, "
                "lease.camera DESC) <= ? AS wanted FROM lease JOIN camera ON camera.id = lease.camera WHERE "
                "lease.recorder = ?::uuid) one WHERE lease.camera = one.camera AND lease.offered <> "
                "one.wanted")
            .arg(Alive, Its);
    return m_database.run(text, {m_recorder.id, count, m_recorder.id});
}

/// What is no longer this one's to record: switched off, or kept for another.
bool LeaseTable::letGo()
{
    const QString text =
        QString("UPDATE lease SET recorder = NULL, previous = NULL, offered = false, ready = false FROM "
                "camera, recorder me WHERE me.id = ?::uuid AND lease.recorder = me.id AND camera.id = "
                "lease.camera AND NOT (%1)")
            .arg(Mine);
    return m_database.run(text, {m_recorder.id});
}

std::optional<QVector<LeasedCamera>> LeaseTable::cameras()
{
    QSqlQuery query = m_database.query();
    if (!m_database.run(query,
                        "SELECT camera.id, camera.name, camera.description, lease.ready AND lease.recorder = "
                        "me.id FROM lease "
                        "JOIN camera ON camera.id = lease.camera JOIN recorder me ON me.id = ?::uuid WHERE "
                        "lease.recorder = "
                        "me.id OR (lease.previous = me.id AND NOT lease.ready AND lease.taken > "
                        "clock_timestamp() - interval "
                        "'10 s') ORDER BY camera.id",
                        {m_recorder.id}))
        return std::nullopt;
    QVector<LeasedCamera> cameras;
    while (query.next())
        cameras.append({query.value(0).toString(), query.value(1).toString(), query.value(2).toString(),
                        query.value(3).toBool()});
    return cameras;
}

bool LeaseTable::setReady(const QString& camera)
{
    return m_database.run(
        "UPDATE lease SET ready = true, previous = NULL WHERE camera = ? AND recorder = ?::uuid AND NOT "
        "ready",
        {camera, m_recorder.id});
}

bool LeaseTable::leave()
{
    return m_database.run("UPDATE lease SET recorder = NULL, previous = NULL, offered = false, ready = false "
                          "WHERE recorder "
                          "= ?::uuid",
                          {m_recorder.id}) &&
           m_database.run("UPDATE recorder SET alive_until = '-infinity' WHERE id = ?::uuid",
                          {m_recorder.id});
}
