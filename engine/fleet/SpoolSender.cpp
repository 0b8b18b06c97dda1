#include "fleet/SpoolSender.h"

#include "fleet/FleetSchema.h"

#include <QJsonDocument>
#include <QTimerEvent>

namespace {

constexpr int SendMs = 500;
constexpr int RetryMs = 2000;
constexpr int RowsAtOnce = 500;
constexpr int PruneMs = 3'600'000;

} // namespace

SpoolSender::SpoolSender(const FleetAddress& address, const FleetRecorder& recorder, const QString& indexPath)
    : m_database(address), m_recorder(recorder), m_leases(m_database, m_recorder), m_spool(indexPath)
{
}

void SpoolSender::start()
{
    m_timer.start(0, this);
}

void SpoolSender::end()
{
    m_timer.stop();
    if (isReady())
        sendSome();
    m_database.close();
}

void SpoolSender::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    const bool isWell = isReady() && sendSome() && prune();
    if (!isWell)
        m_database.close();
    m_timer.start(isWell ? SendMs : RetryMs, this);
}

bool SpoolSender::isReady()
{
    if (m_database.isOpen())
        return true;
    if (!m_database.open()) {
        m_leases.noteAway();
        tell(m_database.reason());
        return false;
    }
    if (FleetSchema::check(m_database) != FleetSchema::State::Current) {
        tell("the shared index has no tables of this version");
        return false;
    }
    if (m_leases.join() && tellsAll())
        return true;
    tell(m_database.reason());
    return false;
}

bool SpoolSender::tellsAll()
{
    const std::optional<SpoolReader::Batch> told = m_spool.told();
    const std::optional<bool> isKnown = told ? isAllKnown(*told) : true;
    return isKnown && (*isKnown || renew());
}

/// A replica that took the server's place, a backup or an index that is new may not know all that was told,
/// and another program with this recorder's number may have told what this one has not: all is told once more
/// then. What was told last may have stayed in a spool that was busy.
std::optional<bool> SpoolSender::isAllKnown(const SpoolReader::Batch& batch)
{
    QSqlQuery query = m_database.query();
    if (!m_database.run(
            query,
            "SELECT (SELECT last FROM spool WHERE spool.recorder = me.id AND spool.id = ?::uuid) FROM "
            "recorder me WHERE id = ?::uuid AND instance = ?::uuid",
            {batch.spool, m_recorder.id, m_recorder.instance}) ||
        !query.next())
        return std::nullopt;
    const qint64 last = query.value(0).toLongLong();
    if (last != batch.told && (batch.spool != m_lastSpool || last != m_last))
        return false;
    m_lastSpool = batch.spool;
    m_last = last;
    return true;
}

bool SpoolSender::renew()
{
    if (m_spool.renew())
        return true;
    m_database.refuse("the archive's own index is busy");
    return false;
}

/// False if the server does not take it.
bool SpoolSender::sendSome()
{
    for (;;) {
        const std::optional<SpoolReader::Batch> batch = m_spool.next(RowsAtOnce);
        // The archive's own index is busy or being made anew: later.
        if (!batch || batch->last == 0)
            break;
        const std::optional<bool> isKnown = isAllKnown(*batch);
        if (!isKnown || !(*isKnown ? deliver(batch->rows, batch->spool) : renew()))
            return false;
        if (!*isKnown)
            continue;
        if (!m_spool.drop(*batch, m_last))
            break;
    }
    tell({});
    return true;
}

bool SpoolSender::prune()
{
    if (!m_keepsMonths.hasExpired())
        return true;
    m_keepsMonths.setRemainingTime(PruneMs);
    return m_database.run("SELECT drop_old_months()");
}

/// A row that the server will never take must not keep the others: it is looked for by halves, and left out.
bool SpoolSender::deliver(const QJsonArray& rows, const QString& spool)
{
    const QByteArray text = QJsonDocument(rows).toJson(QJsonDocument::Compact);
    QSqlQuery query = m_database.query();
    if (m_database.run(query, "SELECT deliver(?::uuid, ?::uuid, ?::jsonb)",
                       {m_recorder.id, spool, QString::fromUtf8(text)}) &&
        query.next()) {
        m_last = query.value(0).toLongLong();
        return true;
    }
    if (m_database.result() != FleetDatabase::Result::Failed) {
        tell(m_database.reason());
        return false;
    }
    if (rows.size() <= 1) {
        tell("the shared index does not take a recording: " + m_database.reason());
        return true;
    }
    QJsonArray first;
    QJsonArray second;
    for (int i = 0; i < rows.size(); ++i)
        (i < rows.size() / 2 ? first : second).append(rows.at(i));
    return deliver(first, spool) && deliver(second, spool);
}

void SpoolSender::tell(const QString& reason)
{
    if (m_told.isEmpty() == reason.isEmpty())
        return;
    m_told = reason;
    Q_EMIT troubled(reason);
}
