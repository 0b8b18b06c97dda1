#include "fleet/LeaseTable.h"

#include "fleet/FleetRecorder.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <limits>
#include <utility>

namespace {

/// A recorder that lives says so more often.
constexpr qint64 SilentMs = 3000;

/// Cameras that the recorder `me` may record.
constexpr const char* Mine =
    "camera.enabled AND (camera.recorder IS NULL OR camera.recorder = me.id) AND (camera.site = '' "
    "OR camera.site = me.site)";

} // namespace

bool LeaseTable::join()
{
    const bool isSilent = m_other > 0 && m_otherSince.hasExpired(SilentMs);
    QSqlQuery query = m_database.query();
    if (!m_database.run(query, "SELECT join_recorder(?::uuid, ?, ?, ?, ?::uuid, ?)",
                        {m_recorder.id, m_recorder.name, m_recorder.site, m_recorder.url, m_recorder.instance,
                         isSilent ? m_other : -1}) ||
        !query.next())
        return false;
    noteOther(query.value(0).toLongLong());
    if (m_other > 0)
        m_database.refuse(m_isElsewhere ? "another program has this recorder's number" : "");
    return m_other == 0 && tellLive();
}

/// Desks read it with their cameras.
bool LeaseTable::tellLive()
{
    return m_database.run(
        "WITH other AS (UPDATE recorder SET live = ? WHERE id = ?::uuid AND live <> ? "
        "RETURNING id) SELECT tell_change('camera', ARRAY(SELECT id FROM camera)) FROM other",
        {m_recorder.live, m_recorder.id, m_recorder.live});
}

/// One that was killed says nothing new.
void LeaseTable::noteOther(qint64 aliveUntil)
{
    m_isElsewhere = aliveUntil > 0 && (m_isElsewhere || (m_other > 0 && m_other != aliveUntil));
    if (std::exchange(m_other, aliveUntil) != aliveUntil)
        m_otherSince.start();
}

bool LeaseTable::isHere()
{
    QSqlQuery query = m_database.query();
    return m_database.run(query, "SELECT 1 FROM recorder WHERE id = ?::uuid AND instance = ?::uuid",
                          {m_recorder.id, m_recorder.instance}) &&
           query.next();
}

bool LeaseTable::step(bool isWell)
{
    QSqlQuery query = m_database.query();
    if (!m_database.run(query,
                        "UPDATE recorder SET alive_until = clock_timestamp() + interval '10 s', well = "
                        "?::boolean WHERE id = ?::uuid AND instance = ?::uuid",
                        {isWell, m_recorder.id, m_recorder.instance}) ||
        query.numRowsAffected() != 1 || !letGo())
        return false;
    const std::optional<Share> share = this->share();
    if (!share)
        return false;
    if (share->held < share->fair)
        return take(share->fair - share->held, true) && offer(0);
    // What is still free nobody else can take: those who may have their shares of other cameras.
    return take(std::numeric_limits<int>::max(), false) && offer(share->held - share->fair);
}

/// A camera is shared by those who can record it; one share is the sum over the cameras.
std::optional<LeaseTable::Share> LeaseTable::share()
{
    QSqlQuery query = m_database.query();
    const char* text = "SELECT (SELECT count(*) FROM lease WHERE recorder = me.id), (SELECT "
                       "coalesce(ceil(sum(1.0 / others)), "
                       "0) FROM (SELECT count(*) AS others FROM able GROUP BY camera HAVING bool_or(recorder "
                       "= me.id)) mine) "
                       "FROM recorder me WHERE me.id = ?::uuid";
    if (!m_database.run(query, text, {m_recorder.id}) || !query.next())
        return std::nullopt;
    return Share{query.value(0).toInt(), query.value(1).toInt()};
}

/// Of two that take at once each gets what the other has not locked. What nobody can record goes to anybody
/// who may: somebody is to try. Who records a camera till now, or comes
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
                "?::boolean)) AND (EXISTS (SELECT 1 FROM able WHERE able.camera = camera.id AND recorder = "
                "me.id) OR NOT EXISTS (SELECT 1 FROM able WHERE able.camera = camera.id)) ORDER BY "
                "lease.camera LIMIT "
                "? FOR UPDATE OF lease SKIP LOCKED) UPDATE lease SET recorder = ?::uuid, taken = "
                "clock_timestamp(), offered "
                "= false, ready = false, previous = free.running FROM free WHERE lease.camera = free.camera")
            .arg(Mine);
    return m_database.run(text, {m_recorder.id, offeredToo, count, m_recorder.id});
}

/// Offered are so many, and no more, those first that another one may take.
bool LeaseTable::offer(int count)
{
    const char* text =
        "UPDATE lease SET offered = NOT lease.offered FROM (SELECT lease.camera, row_number() OVER "
        "(ORDER BY EXISTS (SELECT 1 FROM able WHERE able.camera = lease.camera AND able.recorder <> "
        "lease.recorder) DESC, lease.camera DESC) <= ? AS wanted FROM lease JOIN camera ON camera.id = "
        "lease.camera WHERE "
        "lease.recorder = ?::uuid) one WHERE lease.camera = one.camera AND lease.offered <> "
        "one.wanted";
    return m_database.run(text, {count, m_recorder.id});
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
                        "'15 s') ORDER BY camera.id",
                        {m_recorder.id}))
        return std::nullopt;
    QVector<LeasedCamera> cameras;
    while (query.next())
        cameras.append({query.value(0).toString(), query.value(1).toString(), query.value(2).toString(),
                        query.value(3).toBool()});
    return cameras;
}

std::optional<QStringList> LeaseTable::giveBack(const QStringList& cameras)
{
    QSqlQuery query = m_database.query();
    QStringList given;
    const QString text =
        QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(cameras)).toJson(QJsonDocument::Compact));
    if (!m_database.run(query, "SELECT give_back(?::uuid, ARRAY(SELECT jsonb_array_elements_text(?::jsonb)))",
                        {m_recorder.id, text}))
        return std::nullopt;
    while (query.next())
        given.append(query.value(0).toString());
    return given;
}

bool LeaseTable::setReady(const QString& camera)
{
    const QVariantList values{camera, m_recorder.id};
    return m_database.run("UPDATE lease SET ready = true, previous = NULL WHERE camera = ? AND recorder = "
                          "?::uuid AND NOT ready",
                          values) &&
           m_database.run(
               "UPDATE failure SET rests_until = clock_timestamp() WHERE camera = ? AND recorder = "
               "?::uuid AND rests_until > clock_timestamp()",
               values);
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
