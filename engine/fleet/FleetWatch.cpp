#include "fleet/FleetWatch.h"

#include "fleet/DeskTable.h"
#include "fleet/FleetSchema.h"

#include <QSet>
#include <QSqlDriver>
#include <QTimerEvent>

#include <algorithm>

namespace {

/// What no notification has told, as its connection was lost without a word, is seen so much later.
constexpr int LookMs = 1000;
const QString Channel = "panedeck_change";
constexpr qint64 MinuteMs = 60'000;
constexpr qint64 DayMs = 86'400'000;

} // namespace

/// What is new since the last look.
struct FleetWatch::News
{
    QSet<QString> cameras; ///< an empty name for all
    QSet<QString> marked;  ///< or some mark of it acknowledged
    bool isList = false;
    bool isLeases = false;
    bool isViews = false;
};

void FleetWatch::start()
{
    qRegisterMetaType<QVector<LeasedCamera>>();
    qRegisterMetaType<QVector<FleetMark>>();
    qRegisterMetaType<QVector<PtzLease>>();
    qRegisterMetaType<PtzAnswer>();
    qRegisterMetaType<FleetRights>();
    qRegisterMetaType<QVector<SharedView>>();
    m_timer.start(LookMs, this);
    look();
}

void FleetWatch::end()
{
    m_timer.stop();
    m_database.close();
}

void FleetWatch::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    m_timer.start(LookMs, this);
    look();
}

void FleetWatch::answer(const Question& question)
{
    const bool isThere = m_database.isOpen();
    question(isThere ? &m_database : nullptr);
    if (isThere && m_database.result() == FleetDatabase::Result::Away)
        lose();
}

void FleetWatch::look()
{
    const bool isNew = !m_database.isOpen();
    if ((isNew && !join()) || !catchUp())
        lose();
}

bool FleetWatch::join()
{
    if (!m_database.open())
        return false;
    const FleetSchema::State state = FleetSchema::check(m_database);
    if (state != FleetSchema::State::Current) {
        m_database.refuse("the shared index has no tables of this version");
        return false;
    }
    // The driver tells it in the middle of its own work, and would not survive a look that loses the server.
    connect(m_database.driver(),
            QOverload<const QString&, QSqlDriver::NotificationSource, const QVariant&>::of(
                &QSqlDriver::notification),
            this, [this] { m_timer.start(0, this); });
    if (!m_database.driver()->subscribeToNotification(Channel) || !readLine() || !readRights())
        return false;
    if (!m_away.isEmpty())
        Q_EMIT awayChanged(QString());
    m_away.clear();
    return true;
}

/// A server that took another one's place, maybe without the last of what that one knew, counts from where it
/// was: what is known by number is known no more.
bool FleetWatch::readLine()
{
    QSqlQuery query = m_database.query();
    if (!m_database.run(query,
                        "SELECT system_identifier || CASE WHEN pg_is_in_recovery() THEN '' ELSE "
                        "left(pg_walfile_name(pg_current_wal_lsn()), 8) END FROM pg_control_system()") ||
        !query.next())
        return false;
    const QString line = query.value(0).toString();
    m_isOther = m_isOther || (!m_line.isEmpty() && line != m_line);
    m_line = line;
    return true;
}

/// Tells all changes behind the last one that was told. Who comes first, or finds another index than before,
/// takes everything for new.
bool FleetWatch::catchUp()
{
    QSqlQuery query = m_database.query();
    if (!m_database.run(query,
                        "SELECT coalesce(max(id), 0), pg_snapshot_xmin(pg_current_snapshot())::text::bigint, "
                        "(extract(epoch FROM clock_timestamp()) * 1000)::bigint FROM change") ||
        !query.next())
        return false;
    m_now = {query.value(0).toLongLong(), query.value(1).toLongLong(), query.value(2).toLongLong()};
    const bool isFirst = m_seen < 0;
    if (isFirst)
        m_begin = m_now;
    else if (m_isOther || m_now.last < m_seen)
        forget();
    const std::optional<News> found = isFirst ? News{{QString()}, {}, true, true, true} : news();
    if (!found || !tell(*found))
        return false;
    m_seen = m_now.last;
    m_isOther = false;
    return true;
}

/// All marks since this desk began are told once more.
void FleetWatch::forget()
{
    m_told.clear();
    m_begin.over = 0;
    m_seen = 0;
    m_isOther = true;
}

std::optional<FleetWatch::News> FleetWatch::news()
{
    News news;
    if (m_isOther)
        news = {{QString()}, {}, true, true, true};
    QSqlQuery query = m_database.query();
    if (!m_database.run(query, "SELECT kind, camera FROM change WHERE id > ? AND id <= ?",
                        {m_seen, m_now.last}))
        return std::nullopt;
    while (query.next()) {
        const QString kind = query.value(0).toString();
        news.isList = news.isList || kind == "camera";
        news.isLeases = news.isLeases || kind == "ptz";
        news.isViews = news.isViews || kind == "view";
        if (kind == "span" || kind == "seen")
            news.marked.insert(query.value(1).toString());
        if (kind == "segment" || kind == "span" || kind == "camera")
            news.cameras.insert(query.value(1).toString());
    }
    return news;
}

bool FleetWatch::tell(const News& news)
{
    if ((news.isList && !readCameras()) || (news.isLeases && !readLeases()) || (news.isViews && !readViews()))
        return false;
    for (const QString& camera : news.cameras)
        Q_EMIT changed(camera);
    return std::all_of(news.marked.cbegin(), news.marked.cend(),
                       [this](const QString& camera) { return readMarks(camera); });
}

bool FleetWatch::readMarks(const QString& camera)
{
    constexpr int Most = 500;
    const auto known = m_told.constFind(camera);
    const bool isKnown = known != m_told.cend();
    const Told before = isKnown ? *known : Told{0, m_begin.over};
    // By the clock of a recorder that is ahead all others would be late.
    qint64 fromMs = qMin(before.lastMs, m_now.ms) - DayMs;
    if (!isKnown)
        fromMs = m_begin.over == 0 ? m_begin.ms - MinuteMs : 0;
    QSqlQuery query = m_database.query();
    if (!m_database.run(
            query,
            "SELECT kind, start_ms, end_ms, acknowledged_by IS NOT NULL FROM span WHERE camera = ? "
            "AND NOT sample AND changed_in >= ? AND (start_ms >= ? OR acknowledged_by IS NOT NULL) "
            "ORDER BY start_ms DESC LIMIT ?",
            {camera, before.over, fromMs, Most}))
        return false;
    QVector<FleetMark> marks;
    while (query.next()) {
        const FleetMark mark{
            {Span::Kind(query.value(0).toInt()), query.value(1).toLongLong(), query.value(2).toLongLong()},
            query.value(3).toBool()};
        // An archive that comes with all it has is no news but for its last.
        if (isKnown || marks.isEmpty() || mark.isAcknowledged || mark.span.startMs >= m_now.ms - DayMs)
            marks.prepend(mark);
    }
    if (marks.isEmpty())
        return true;
    m_told.insert(camera, {qMax(before.lastMs, marks.last().span.startMs), m_now.over});
    Q_EMIT marked(camera, marks);
    return true;
}

bool FleetWatch::readCameras()
{
    const auto cameras = FleetCameras::read(m_database);
    if (cameras)
        Q_EMIT camerasRead(*cameras);
    return cameras.has_value();
}

bool FleetWatch::readLeases()
{
    const auto leases = DeskTable::leases(m_database, m_desk);
    if (leases)
        Q_EMIT leasesRead(*leases);
    return leases.has_value();
}

bool FleetWatch::readRights()
{
    const auto rights = DeskTable::rights(m_database);
    if (rights)
        Q_EMIT rightsRead(*rights);
    return rights.has_value();
}

bool FleetWatch::readViews()
{
    const auto views = DeskTable::views(m_database);
    if (views)
        Q_EMIT viewsRead(*views);
    return views.has_value();
}

void FleetWatch::lose()
{
    const QString reason = m_database.reason().isEmpty() ? "the server does not answer" : m_database.reason();
    m_database.close();
    if (m_away == reason)
        return;
    m_away = reason;
    Q_EMIT awayChanged(reason);
}
