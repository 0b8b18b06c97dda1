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
        tell(m_database.reason());
        return false;
    }
    if (FleetSchema::check(m_database) != FleetSchema::State::Current) {
        tell("the shared index has no tables of this version");
        return false;
    }
    if (join() && findLost())
        return true;
    tell(m_database.reason());
    return false;
}

/// What another program with this recorder's number has told meanwhile may have gone by the same numbers.
bool SpoolSender::join()
{
    const bool isJoined = m_leases.join();
    m_wasElsewhere = m_wasElsewhere || m_leases.isElsewhere();
    if (isJoined && m_wasElsewhere && !renew())
        return false;
    m_wasElsewhere = m_wasElsewhere && !isJoined;
    return isJoined;
}

bool SpoolSender::renew()
{
    if (m_spool.renew())
        return true;
    m_database.refuse("the archive's own index is busy");
    return false;
}

/// A replica that took the server's place, a backup or an index that is new may not know all that was told:
/// all is told once more then.
bool SpoolSender::findLost()
{
    const std::optional<SpoolReader::Batch> told = m_spool.told();
    if (!told || told->last == 0)
        return true;
    QSqlQuery query = m_database.query();
    if (!m_database.run(query, "SELECT last FROM spool WHERE recorder = ?::uuid AND id = ?::uuid",
                        {m_recorder.id, told->spool}))
        return false;
    if (query.next() && query.value(0).toLongLong() >= told->last)
        return true;
    return renew();
}

/// False if the server does not take it.
bool SpoolSender::sendSome()
{
    for (;;) {
        const std::optional<SpoolReader::Batch> batch = m_spool.next(RowsAtOnce);
        // The archive's own index is busy or being made anew: later.
        if (!batch || batch->last == 0)
            break;
        if (!m_leases.isHere() || !deliver(batch->rows, batch->spool))
            return false;
        if (!m_spool.drop(*batch))
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
    if (m_database.run("SELECT deliver(?::uuid, ?::uuid, ?::jsonb)",
                       {m_recorder.id, spool, QString::fromUtf8(text)}))
        return true;
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
