#include "fleet/DeskTable.h"
#include "fleet/FleetReader.h"
#include "fleet/FleetWatch.h"

#include <QSemaphore>

namespace {

/// Who has changed something wants to know whether it holds.
constexpr int ChangeMs = 3000;
constexpr const char* NoAnswer = "the shared index does not answer";

} // namespace

void FleetReader::send(const FleetWatch::Question& question)
{
    QMetaObject::invokeMethod(
        m_watch, [watch = m_watch, question] { watch->answer(question); }, Qt::QueuedConnection);
}

bool FleetReader::change(const std::function<bool(FleetDatabase&)>& change, QString* error)
{
    struct Outcome
    {
        QSemaphore done;
        QString reason = NoAnswer;
    };
    const auto outcome = std::make_shared<Outcome>();
    send([outcome, change](FleetDatabase* database) {
        if (database)
            outcome->reason = change(*database) ? QString() : database->reason();
        outcome->done.release();
    });
    const bool isAnswered = outcome->done.tryAcquire(1, ChangeMs);
    *error = isAnswered ? outcome->reason : QString(NoAnswer);
    return error->isEmpty();
}

bool FleetReader::changeCameras(const QVector<CameraDescription>& cameras, const QStringList& gone,
                                QString* error)
{
    return change([=](FleetDatabase& database) { return FleetCameras::change(database, cameras, gone); },
                  error);
}

bool FleetReader::changeView(const SharedView& view, const QString& before, QString* error)
{
    return change(
        [=](FleetDatabase& database) {
            return view.description.isEmpty() ? DeskTable::removeView(database, view.name)
                                              : DeskTable::putView(database, view, before);
        },
        error);
}

void FleetReader::takePtz(const QString& camera)
{
    send([watch = m_watch, camera](FleetDatabase* database) {
        Q_EMIT watch->leaseAnswered(database ? DeskTable::take(*database, watch->desk(), camera)
                                             : PtzAnswer{camera, false, 0, {}, NoAnswer});
    });
}

void FleetReader::sendPtz(PtzWish wish, const QString& camera)
{
    send([watch = m_watch, wish, camera](FleetDatabase* database) {
        if (database)
            wish(*database, watch->desk(), camera);
    });
}

void FleetReader::askPtz(const QString& camera)
{
    sendPtz(&DeskTable::ask, camera);
}

void FleetReader::givePtz(const QString& camera)
{
    sendPtz(&DeskTable::give, camera);
}

void FleetReader::keepPtz(const QString& camera)
{
    sendPtz(&DeskTable::keep, camera);
}

void FleetReader::acknowledge(const QString& camera, qint64 startMs)
{
    {
        const std::lock_guard lock(m_answers->mutex);
        m_answers->seen.append({camera, startMs});
    }
    sayAcknowledged();
}

/// What the server does not answer waits for it to come back.
void FleetReader::sayAcknowledged()
{
    send([answers = m_answers](FleetDatabase* database) {
        std::unique_lock lock(answers->mutex);
        while (database && !answers->seen.isEmpty()) {
            const auto mark = answers->seen.first();
            lock.unlock();
            database->run("SELECT acknowledge(?, ?)", {mark.first, mark.second});
            if (database->result() == FleetDatabase::Result::Away)
                return;
            lock.lock();
            answers->seen.removeFirst();
        }
    });
}
