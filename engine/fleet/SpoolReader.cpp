#include "fleet/SpoolReader.h"

#include "archive/ArchiveIndex.h"
#include "archive/IndexFile.h"
#include "archive/Spool.h"

#include <QJsonObject>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

namespace {

/// The thread that delivers waits for nobody who shows a picture.
constexpr const char* ReaderOptions = "QSQLITE_BUSY_TIMEOUT=2000";

/// No text of the server's holds a null.
QString textOf(const QVariant& value)
{
    return value.toString().remove(QChar(0));
}

QJsonObject rowOf(const QSqlQuery& query)
{
    return {{"seq", query.value(0).toLongLong()},      {"what", query.value(1).toInt()},
            {"gone", query.value(2).toBool()},         {"path", textOf(query.value(3))},
            {"camera", textOf(query.value(4))},        {"kind", query.value(5).toInt()},
            {"start_ms", query.value(6).toLongLong()}, {"end_ms", query.value(7).toLongLong()},
            {"bytes", query.value(8).toLongLong()},    {"sample", query.value(9).toBool()}};
}

/// An index is a file that anybody may have written.
bool isPlausible(const QSqlQuery& query)
{
    const qint64 startMs = query.value(6).toLongLong();
    return startMs >= 0 && startMs <= Segment::LastMs && query.value(7).toLongLong() <= Segment::LastMs;
}

} // namespace

bool SpoolReader::isReady()
{
    const quint64 inode = IndexFile::inode(m_path);
    if (!m_connection.isEmpty() && inode == m_inode)
        return true;
    close();
    if (inode == 0)
        return false;
    m_connection = QUuid::createUuid().toString();
    QSqlDatabase index = QSqlDatabase::addDatabase("QSQLITE", m_connection);
    index.setDatabaseName(m_path);
    index.setConnectOptions(ReaderOptions);
    m_inode = inode;
    return index.open();
}

void SpoolReader::close()
{
    if (!m_connection.isEmpty())
        QSqlDatabase::removeDatabase(m_connection);
    m_connection.clear();
}

std::optional<SpoolReader::Batch> SpoolReader::next(int count)
{
    std::optional<Batch> batch = told();
    if (!batch)
        return std::nullopt;
    QSqlQuery query(QSqlDatabase::database(m_connection));
    query.prepare("SELECT seq, what, gone, path, camera, kind, start_ms, end_ms, bytes, sample FROM outbox "
                  "ORDER BY seq "
                  "LIMIT ?");
    query.addBindValue(count);
    if (!query.exec())
        return std::nullopt;
    while (query.next()) {
        batch->last = query.value(0).toLongLong();
        if (isPlausible(query))
            batch->rows.append(rowOf(query));
    }
    return batch;
}

std::optional<SpoolReader::Batch> SpoolReader::told()
{
    if (!isReady())
        return std::nullopt;
    QSqlQuery query(QSqlDatabase::database(m_connection));
    if (!query.exec("SELECT id, told FROM spool") || !query.next())
        return std::nullopt;
    return Batch{query.value(0).toString(), query.value(1).toLongLong(), {}};
}

bool SpoolReader::renew()
{
    QSqlError error;
    QSqlDatabase index = isReady() ? QSqlDatabase::database(m_connection) : QSqlDatabase();
    return index.isOpen() && Spool::renew(index, &error);
}

bool SpoolReader::drop(const Batch& batch, qint64 told)
{
    if (!isReady())
        return false;
    QSqlQuery query(QSqlDatabase::database(m_connection));
    query.prepare("UPDATE spool SET told = ? WHERE id = ?");
    query.addBindValue(told);
    query.addBindValue(batch.spool);
    if (!query.exec())
        return false;
    query.prepare("DELETE FROM outbox WHERE seq <= ? AND EXISTS (SELECT 1 FROM spool WHERE id = ?)");
    query.addBindValue(batch.last);
    query.addBindValue(batch.spool);
    return query.exec();
}
