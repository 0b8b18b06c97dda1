#include "fleet/FleetWatch.h"

#include "fleet/FleetSchema.h"

#include <QSet>
#include <QSqlDriver>
#include <QTimerEvent>

#include <algorithm>

namespace {

/// What no notification has told, as its connection was lost without a word, is seen so much later.
constexpr int LookMs = 1000;
const QString Channel = "panedeck_change";

} // namespace

void FleetWatch::start()
{
    qRegisterMetaType<QVector<LeasedCamera>>();
    qRegisterMetaType<QVector<FleetMark>>();
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
    if (!m_database.driver()->subscribeToNotification(Channel))
        return false;
    if (!m_away.isEmpty())
        Q_EMIT awayChanged(QString());
    m_away.clear();
    return true;
}

/// Tells all changes behind the last one that was told. Who comes first, or finds another index than before,
/// takes everything for new.
bool FleetWatch::catchUp()
{
    QSqlQuery query = m_database.query();
    if (!m_database.run(query, "SELECT coalesce(max(id), 0) FROM change") || !query.next())
        return false;
    const qint64 last = query.value(0).toLongLong();
    const bool isAll = m_seen < 0 || last < m_seen;
    if (!m_database.run(query, "SELECT kind, camera FROM change WHERE id > ? AND id <= ?", {m_seen, last}))
        return false;
    QSet<QString> cameras;
    QSet<QString> marked;
    bool isList = isAll;
    while (query.next()) {
        const QString kind = query.value(0).toString();
        isList = isList || kind == "camera";
        cameras.insert(query.value(1).toString());
        if (kind == "span" && !isAll)
            marked.insert(query.value(1).toString());
    }
    if (isList && !readCameras())
        return false;
    if (isAll)
        cameras = {QString()};
    for (const QString& camera : qAsConst(cameras))
        Q_EMIT changed(camera);
    const bool isTold = std::all_of(marked.cbegin(), marked.cend(),
                                    [this](const QString& camera) { return readMarks(camera); });
    if (isTold)
        m_seen = last;
    return isTold;
}

bool FleetWatch::readMarks(const QString& camera)
{
    constexpr int Newest = 20;
    QSqlQuery query = m_database.query();
    if (!m_database.run(
            query,
            "SELECT kind, start_ms, end_ms, acknowledged_by IS NOT NULL FROM span WHERE camera = ? AND NOT "
            "sample ORDER BY start_ms DESC LIMIT ?",
            {camera, Newest}))
        return false;
    QVector<FleetMark> marks;
    while (query.next())
        marks.prepend(
            {{Span::Kind(query.value(0).toInt()), query.value(1).toLongLong(), query.value(2).toLongLong()},
             query.value(3).toBool()});
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

void FleetWatch::lose()
{
    const QString reason = m_database.reason().isEmpty() ? "the server does not answer" : m_database.reason();
    m_database.close();
    if (m_away == reason)
        return;
    m_away = reason;
    Q_EMIT awayChanged(reason);
}
