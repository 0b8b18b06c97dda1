#include "fleet/LeaseTable.h"

#include "fleet/FleetRecorder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace {

/// A recorder that lives says so more often.
constexpr int SilentMs = 3000;
/// One that was seen to live beside this one may be started anew, with its whole machine.
constexpr int GoneMs = 600'000;

QString textOf(const QStringList& list)
{
    return QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(list)).toJson(QJsonDocument::Compact));
}

QStringList listOf(const QJsonArray& array)
{
    QStringList list;
    for (const QJsonValue& value : array)
        list.append(value.toString());
    return list;
}

QVector<LeasedCamera> camerasOf(const QJsonArray& array)
{
    QVector<LeasedCamera> cameras;
    for (const QJsonValue& value : array) {
        const QJsonArray camera = value.toArray();
        cameras.append({camera.at(0).toString(), camera.at(1).toString(), camera.at(2).toString(),
                        camera.at(3).toBool()});
    }
    return cameras;
}

} // namespace

bool LeaseTable::join()
{
    const bool isSilent = m_other > 0 && m_otherSince.hasExpired(isElsewhere() ? GoneMs : SilentMs);
    QSqlQuery query = m_database.query();
    m_digest.clear();
    if (!m_database.run(query, "SELECT join_recorder(?::uuid, ?, ?, ?, ?::uuid, ?)",
                        {m_recorder.id, m_recorder.name, m_recorder.site, m_recorder.url, m_recorder.instance,
                         m_other == 0 ? -1
                         : isSilent   ? m_other
                                      : 0}) ||
        !query.next()) {
        noteAway();
        return false;
    }
    noteOther(query.value(0).toLongLong());
    if (m_other > 0)
        m_database.refuse(isElsewhere() ? "another program has this recorder's number" : "");
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
    const qint64 before = std::exchange(m_other, aliveUntil);
    if (before == aliveUntil)
        return;
    m_otherSince.start();
    m_otherSigns = before > 0 && aliveUntil > 0 ? m_otherSigns + 1 : 0;
}

bool LeaseTable::isHere()
{
    QSqlQuery query = m_database.query();
    return m_database.run(query, "SELECT 1 FROM recorder WHERE id = ?::uuid AND instance = ?::uuid",
                          {m_recorder.id, m_recorder.instance}) &&
           query.next();
}

std::optional<LeaseTable::News> LeaseTable::step(const State& state)
{
    QSqlQuery query = m_database.query();
    if (!m_database.run(query, "SELECT hold_leases(?::uuid, ?::uuid, ?, ?, ?, ?)",
                        {m_recorder.id, m_recorder.instance, state.isWell, textOf(state.stalled),
                         textOf(state.playing), m_digest}) ||
        !query.next() || query.value(0).isNull())
        return std::nullopt;
    const QJsonObject answer = QJsonDocument::fromJson(query.value(0).toByteArray()).object();
    News news{listOf(answer["given"].toArray()), std::nullopt};
    if (answer["cameras"].isArray())
        news.cameras = camerasOf(answer["cameras"].toArray());
    m_digest = answer["digest"].toString();
    return news;
}

std::optional<QVector<LeasedCamera>> LeaseTable::cameras()
{
    QSqlQuery query = m_database.query();
    if (!m_database.run(query, "SELECT camera, name, description, ready FROM leased(?::uuid)",
                        {m_recorder.id}))
        return std::nullopt;
    QVector<LeasedCamera> cameras;
    while (query.next())
        cameras.append({query.value(0).toString(), query.value(1).toString(), query.value(2).toString(),
                        query.value(3).toBool()});
    return cameras;
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
