#include "fleet/FleetIndex.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QUrl>

#include <map>

namespace {

/// What touches a stretch of time. Nothing that begins earlier than the camera's longest one is long does.
QString touching(const QString& table)
{
    return QString("%1.camera = ? AND start_ms < ? AND end_ms > ? AND start_ms > ? - COALESCE((SELECT end_ms "
                   "- start_ms FROM "
                   "%1 WHERE camera = ? ORDER BY end_ms - start_ms DESC LIMIT 1), 0) AND start_ms >= 0 AND "
                   "end_ms "
                   "<= ? ORDER BY start_ms")
        .arg(table);
}

/// What touches a stretch of time of each camera of a list, by what is asked of one of them.
QString ofMany(const QString& table, const QString& one)
{
    return QString("FROM jsonb_array_elements_text(CAST(? AS jsonb)) c(camera), LATERAL (SELECT COALESCE(("
                   "SELECT end_ms - start_ms FROM %1 WHERE %1.camera = c.camera ORDER BY end_ms - start_ms "
                   "DESC LIMIT 1), 0) AS ms) longest, LATERAL (%2) found ORDER BY start_ms")
        .arg(table, one.arg(table + ".camera = c.camera AND start_ms < ? AND end_ms > ? AND start_ms > ? - "
                                    "longest.ms"));
}

/// Where something begins more than a gap of a second behind all before it, and at the end, which has no
/// time: when that before it ended. A recorder without an address has an archive no more; joined, it would be
/// looked up for each segment anew.
QString recordedOfMany()
{
    return "SELECT c.camera, start_ms, known_ms " +
           ofMany(
               "segment",
               "SELECT * FROM (SELECT start_ms, max(end_ms) OVER (ORDER BY start_ms ROWS BETWEEN UNBOUNDED "
               "PRECEDING AND 1 PRECEDING) AS known_ms FROM (SELECT start_ms, end_ms FROM segment WHERE %1 "
               "AND start_ms < end_ms AND (recorder IN (SELECT id FROM recorder WHERE url <> '')) IS TRUE "
               "UNION ALL SELECT NULL, NULL) each) step WHERE start_ms IS NULL OR known_ms IS NULL OR "
               "start_ms > known_ms + 999");
}

/// Neither the first nor the last of a camera is one that nobody can play.
QString startOfOne(const QString& condition, const QString& order)
{
    return QString("SELECT start_ms FROM segment JOIN recorder ON recorder.id = segment.recorder AND "
                   "recorder.url <> '' WHERE camera = ? AND %1 ORDER BY start_ms %2 LIMIT 1")
        .arg(condition, order);
}

QString spansOfMany()
{
    return "SELECT c.camera, start_ms, end_ms, kind " +
           ofMany("span", "SELECT kind, start_ms, end_ms FROM span WHERE %1");
}

} // namespace

FleetPlace::FleetPlace(const QString& recorderUrl) : m_paths(recorderUrl), m_root(recorderUrl)
{
    const QUrl url(recorderUrl);
    if (url.isLocalFile())
        m_root = url.toLocalFile();
    else if (url.scheme() == "http" || url.scheme() == "https")
        m_isRemote = true;
    else if (!recorderUrl.startsWith('/'))
        m_root.clear();
}

QString FleetPlace::full(const QString& path) const
{
    if (m_root.isEmpty() || m_paths.full(path).isEmpty())
        return QString();
    return m_root + "/" + (m_isRemote ? QString::fromLatin1(QUrl::toPercentEncoding(path, "/")) : path);
}

std::optional<QVector<Segment>> FleetIndex::segments(const QString& camera, qint64 fromMs, qint64 toMs)
{
    QVector<Segment> segments;
    QSqlQuery query = m_database.query();
    if (!m_database.run(
            query,
            "SELECT url, path, start_ms, end_ms, bytes, sample FROM segment JOIN recorder ON recorder.id = "
            "segment.recorder WHERE " +
                touching("segment"),
            {camera, toMs, fromMs, fromMs, camera, Segment::LastMs}))
        return std::nullopt;
    std::map<QString, FleetPlace> places;
    while (query.next()) {
        const FleetPlace& place =
            places.try_emplace(query.value(0).toString(), query.value(0).toString()).first->second;
        const QString path = place.full(query.value(1).toString());
        const Segment segment{path,
                              camera,
                              query.value(2).toLongLong(),
                              query.value(3).toLongLong(),
                              query.value(4).toLongLong(),
                              query.value(5).toBool()};
        if (!path.isEmpty() && segment.isPlausible())
            segments.append(segment);
    }
    return segments;
}

std::optional<QVector<Span>> FleetIndex::spans(const QString& camera, qint64 fromMs, qint64 toMs)
{
    return spansOf(touching("span"), {camera, toMs, fromMs, fromMs, camera, Segment::LastMs});
}

std::optional<QHash<QString, RecordedTimes>> FleetIndex::times(const QStringList& cameras, qint64 fromMs,
                                                               qint64 toMs)
{
    const QString list =
        QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(cameras)).toJson(QJsonDocument::Compact));
    const QVariantList values{list, toMs, fromMs, fromMs};
    QHash<QString, RecordedTimes> times;
    for (const QString& camera : cameras)
        times.insert(camera, {});
    QSqlQuery query = m_database.query();
    if (!m_database.run(query, recordedOfMany(), values))
        return std::nullopt;
    while (query.next()) {
        const QString camera = query.value(0).toString();
        QVector<Segment>& segments = times[camera].segments;
        if (!segments.isEmpty())
            segments.last().endMs = query.value(2).toLongLong();
        if (!query.isNull(1))
            segments.append({QString(), camera, query.value(1).toLongLong(), 0});
    }
    if (!m_database.run(query, spansOfMany(), values))
        return std::nullopt;
    while (query.next())
        times[query.value(0).toString()].spans.append(
            {Span::Kind(query.value(3).toInt()), query.value(1).toLongLong(), query.value(2).toLongLong()});
    return times;
}

std::optional<QVector<Span>> FleetIndex::spanAfter(const QString& camera, qint64 ms)
{
    return spansOf("camera = ? AND start_ms > ? ORDER BY start_ms LIMIT 1", {camera, ms});
}

std::optional<QVector<Span>> FleetIndex::spanBefore(const QString& camera, qint64 ms)
{
    return spansOf("camera = ? AND start_ms < ? ORDER BY start_ms DESC LIMIT 1", {camera, ms});
}

std::optional<QVector<Span>> FleetIndex::spansOf(const QString& condition, const QVariantList& values)
{
    QVector<Span> spans;
    QSqlQuery query = m_database.query();
    if (!m_database.run(query, "SELECT kind, start_ms, end_ms FROM span WHERE " + condition, values))
        return std::nullopt;
    while (query.next())
        spans.append(
            {Span::Kind(query.value(0).toInt()), query.value(1).toLongLong(), query.value(2).toLongLong()});
    return spans;
}

std::optional<qint64> FleetIndex::nextMs(const QString& camera, qint64 fromMs)
{
    return number(startOfOne("start_ms >= ?", "ASC"), {camera, fromMs});
}

std::optional<qint64> FleetIndex::newestMs(const QString& camera)
{
    return number(startOfOne("true", "DESC"), {camera});
}

std::optional<qint64> FleetIndex::number(const QString& text, const QVariantList& values)
{
    QSqlQuery query = m_database.query();
    if (!m_database.run(query, text, values))
        return std::nullopt;
    return query.next() ? query.value(0).toLongLong() : 0;
}
