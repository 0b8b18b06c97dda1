#include "fleet/FleetIndex.h"
#include "fleet/FleetReader.h"
#include "fleet/FleetWatch.h"

namespace {

QString keyOfTimes(const QString& camera, qint64 fromMs, qint64 toMs)
{
    return QString("times %1 %2 %3").arg(fromMs).arg(toMs).arg(camera);
}

} // namespace

int FleetReader::camerasAtOnce() const
{
    return FleetIndex::CamerasAtOnce;
}

/// Each camera's is kept by itself, and anew when there is more of it; all that are due are asked for as one.
QHash<QString, RecordedTimes> FleetReader::times(const QStringList& cameras, qint64 fromMs, qint64 toMs)
{
    std::unique_lock lock(m_answers->mutex);
    makeRoom();
    QStringList keys;
    QStringList due;
    for (const QString& camera : cameras) {
        keys.append(keyOfTimes(camera, fromMs, toMs));
        if (isDue(keys.last(), camera))
            due.append(camera);
    }
    if (!due.isEmpty())
        postTimes(due, fromMs, toMs);
    await(lock, keys);
    QHash<QString, RecordedTimes> known;
    for (int i = 0; i < keys.size(); ++i) {
        if (const std::any& value = m_answers->all[keys[i]].value; value.has_value())
            known.insert(cameras[i], std::any_cast<RecordedTimes>(value));
    }
    return known;
}

void FleetReader::postTimes(const QStringList& cameras, qint64 fromMs, qint64 toMs)
{
    send([=, answers = m_answers, watch = m_watch](FleetDatabase* database) {
        const auto all = database ? FleetIndex(*database).times(cameras, fromMs, toMs) : std::nullopt;
        const std::lock_guard lock(answers->mutex);
        for (const QString& camera : cameras)
            take(*answers, watch, keyOfTimes(camera, fromMs, toMs),
                 all ? std::any(all->value(camera)) : std::any());
        answers->arrived.notify_all();
    });
}
