#include "alarms/AlarmBook.h"

#include <algorithm>
#include <utility>

bool AlarmBook::begin(const QString& cameraId, const QString& cameraName, qint64 nowMs)
{
    Alarm* last = newestOf(cameraId);
    if (last && last->endMs == 0)
        return false;
    const bool goesOn = last && !last->isSeen && nowMs >= last->endMs && nowMs - last->endMs < SoonMs;
    if (goesOn)
        last->endMs = 0;
    else
        m_alarms.prepend({++m_lastNumber, cameraId, cameraName, nowMs, 0, false});
    if (m_alarms.size() > Most)
        m_alarms.removeLast();
    Q_EMIT changed();
    return !goesOn;
}

void AlarmBook::end(const QString& cameraId, qint64 nowMs)
{
    Alarm* last = newestOf(cameraId);
    if (!last || last->endMs != 0)
        return;
    // A clock may have been set back.
    last->endMs = qMax(nowMs, last->startMs + 1);
    Q_EMIT changed();
}

void AlarmBook::addPast(const QString& cameraId, const QString& cameraName, qint64 startMs, qint64 endMs)
{
    // Two recorders may have seen the same.
    const auto isIt = [&](const Alarm& alarm) {
        return alarm.cameraId == cameraId && alarm.startMs < endMs &&
               (alarm.endMs == 0 || alarm.endMs > startMs);
    };
    if (std::any_of(m_alarms.cbegin(), m_alarms.cend(), isIt))
        return;
    const auto isEarlier = [startMs](const Alarm& alarm) { return alarm.startMs <= startMs; };
    m_alarms.insert(std::find_if(m_alarms.begin(), m_alarms.end(), isEarlier),
                    {++m_lastNumber, cameraId, cameraName, startMs, qMax(endMs, startMs + 1), false});
    if (m_alarms.size() > Most)
        m_alarms.removeLast();
    Q_EMIT changed();
}

void AlarmBook::setAcknowledging(bool may)
{
    if (std::exchange(m_mayAcknowledge, may) != may)
        Q_EMIT changed();
}

int AlarmBook::unseenCount() const
{
    return int(std::count_if(m_alarms.begin(), m_alarms.end(), [](const Alarm& one) { return !one.isSeen; }));
}

void AlarmBook::setSeen(quint64 number)
{
    setSeenWhere([number](const Alarm& alarm) { return alarm.number == number; });
}

void AlarmBook::setSeenOf(const QString& cameraId)
{
    setSeenWhere([&cameraId](const Alarm& alarm) { return alarm.cameraId == cameraId; });
}

void AlarmBook::setSeenAt(const QString& cameraId, qint64 startMs)
{
    setSeenWhere([&](const Alarm& alarm) { return alarm.cameraId == cameraId && alarm.startMs == startMs; });
}

void AlarmBook::setAllSeen()
{
    setSeenWhere([](const Alarm&) { return true; });
}

Alarm* AlarmBook::newestOf(const QString& cameraId)
{
    const auto isIts = [&cameraId](const Alarm& alarm) { return alarm.cameraId == cameraId; };
    const auto found = std::find_if(m_alarms.begin(), m_alarms.end(), isIts);
    return found == m_alarms.end() ? nullptr : &*found;
}

template <class Test> void AlarmBook::setSeenWhere(Test test)
{
    QVector<Alarm> news;
    for (Alarm& alarm : m_alarms) {
        if (alarm.isSeen || !test(alarm))
            continue;
        alarm.isSeen = true;
        news.append(alarm);
    }
    for (const Alarm& alarm : qAsConst(news))
        Q_EMIT seen(alarm.cameraId, alarm.startMs);
    if (!news.isEmpty())
        Q_EMIT changed();
}
