#include "fleet/FleetReader.h"

#include "fleet/FleetIndex.h"
#include "fleet/FleetWatch.h"
#include "fleet/PlainFleetReader.h"
#include "fleet/WorkerThread.h"

#include <QSet>
#include <QTimerEvent>

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

constexpr auto Patience = std::chrono::milliseconds(50);
constexpr int RestMs = 500;
/// A server that hangs holds the thread that asks, which then can't tell.
constexpr int PulseMs = 1000;
constexpr int MostMissedPulses = 3;
constexpr unsigned long EndMs = 1000;
/// Questions for about the same time share an answer.
constexpr qint64 HourMs = 3'600'000;
constexpr int MostAnswers = 1000;

} // namespace

/// What is known of a camera in a stretch of whole hours.
struct FleetReader::Window
{
    QVector<Segment> segments;
    QVector<Span> spans;
    qint64 nextMs = 0; ///< of the first segment behind it; 0 if there is none
};

FleetReader::FleetReader(const FleetAddress& address, QObject* parent)
    : QObject(parent), m_address(address), m_watch(new FleetWatch(address))
{
    connect(m_watch, &FleetWatch::changed, this, &FleetReader::takeChange);
    connect(m_watch, &FleetWatch::answered, this, &FleetReader::changed);
    connect(m_watch, &FleetWatch::marked, this, &FleetReader::marked);
    connect(m_watch, &FleetWatch::camerasRead, this, &FleetReader::camerasRead);
    connect(m_watch, &FleetWatch::leasesRead, this, &FleetReader::leasesRead);
    connect(m_watch, &FleetWatch::leaseAnswered, this, &FleetReader::leaseAnswered);
    connect(m_watch, &FleetWatch::rightsRead, this, &FleetReader::rightsRead);
    connect(m_watch, &FleetWatch::viewsRead, this, &FleetReader::viewsRead);
    connect(m_watch, &FleetWatch::awayChanged, this, &FleetReader::takeAway);
    m_thread = threadOf(m_watch);
    m_pulse.start(PulseMs, this);
}

FleetReader::~FleetReader()
{
    askToEnd(m_watch);
    m_thread->wait(EndMs);
}

namespace {

template <class Question> auto answerOf(FleetDatabase* database, const Question& question)
{
    using Answer = decltype(question(std::declval<FleetIndex&>()));
    if (!database)
        return Answer();
    FleetIndex index(*database);
    return question(index);
}

} // namespace

/// Under the lock.
void FleetReader::makeRoom()
{
    if (m_answers->all.size() > MostAnswers)
        m_answers->all.clear();
}

/// Under the lock: true if it is to be asked for now.
bool FleetReader::isDue(const QString& key, const QString& camera)
{
    Answer& answer = m_answers->all[key];
    answer.camera = camera;
    answer.isLate = answer.isLate || !m_away.isEmpty();
    if (!answer.isStale || answer.isAsked || !m_away.isEmpty())
        return false;
    answer.isAsked = true;
    answer.isStale = false;
    return true;
}

void FleetReader::await(std::unique_lock<std::mutex>& lock, const QStringList& keys)
{
    const auto isAsked = [this](const QString& key) { return m_answers->all[key].isAsked; };
    const auto areThere = [&] { return std::none_of(keys.begin(), keys.end(), isAsked); };
    if (areThere())
        return;
    if (m_restsUntil.hasExpired() && m_answers->arrived.wait_for(lock, Patience, areThere))
        return;
    for (const QString& key : keys)
        m_answers->all[key].isLate = m_answers->all[key].isLate || isAsked(key);
    m_restsUntil.setRemainingTime(RestMs);
}

/// Under the lock, in the thread that asks.
void FleetReader::take(Answers& answers, FleetWatch* watch, const QString& key, const std::any& value)
{
    Answer& kept = answers.all[key];
    kept.isAsked = false;
    kept.isStale = kept.isStale || !value.has_value();
    kept.isLate = kept.isLate || !value.has_value();
    if (!value.has_value())
        return;
    kept.value = value;
    if (std::exchange(kept.isLate, false))
        Q_EMIT watch->answered(kept.camera);
}

template <class Value>
std::optional<Value> FleetReader::ask(const QString& key, const QString& camera, Question<Value> question)
{
    std::unique_lock lock(m_answers->mutex);
    makeRoom();
    if (isDue(key, camera))
        post(key, question);
    await(lock, {key});
    const std::any& value = m_answers->all[key].value;
    return value.has_value() ? std::make_optional(std::any_cast<Value>(value)) : std::nullopt;
}

template <class Value> void FleetReader::post(const QString& key, Question<Value> question)
{
    send([answers = m_answers, watch = m_watch, key, question](FleetDatabase* database) {
        const std::optional<Value> value = answerOf(database, question);
        const std::lock_guard lock(answers->mutex);
        take(*answers, watch, key, value ? std::any(*value) : std::any());
        answers->arrived.notify_all();
    });
}

std::optional<FleetReader::Window> FleetReader::window(const QString& camera, qint64 fromMs, qint64 toMs)
{
    const qint64 from = qMax<qint64>(0, fromMs) / HourMs * HourMs;
    const qint64 to = (qBound<qint64>(from, toMs, Segment::LastMs) / HourMs + 1) * HourMs;
    const Question<Window> question = [camera, from, to](FleetIndex& index) -> std::optional<Window> {
        const auto segments = index.segments(camera, from, to);
        const auto spans = segments ? index.spans(camera, from, to) : std::nullopt;
        const auto next = spans ? index.nextMs(camera, to) : std::nullopt;
        return next ? std::make_optional(Window{*segments, *spans, *next}) : std::nullopt;
    };
    return ask<Window>(QString("%1 %2 %3").arg(from).arg(to).arg(camera), camera, question);
}

namespace {

template <class List> List touching(const List& all, qint64 fromMs, qint64 toMs)
{
    List found;
    for (const auto& one : all) {
        if (one.startMs < toMs && one.endMs > fromMs)
            found.append(one);
    }
    return found;
}

} // namespace

std::optional<QVector<Segment>> FleetReader::segments(const QString& camera, qint64 fromMs, qint64 toMs)
{
    const std::optional<Window> known = window(camera, fromMs, toMs);
    return known ? std::make_optional(touching(known->segments, fromMs, toMs)) : std::nullopt;
}

std::optional<QVector<Span>> FleetReader::spans(const QString& camera, qint64 fromMs, qint64 toMs)
{
    const std::optional<Window> known = window(camera, fromMs, toMs);
    return known ? std::make_optional(touching(known->spans, fromMs, toMs)) : std::nullopt;
}

std::optional<TrackStretch> FleetReader::stretch(const QString& camera, qint64 fromMs, qint64 toMs)
{
    const std::optional<Window> known = window(camera, fromMs, toMs);
    return known ? std::make_optional(stretchOf(known->segments, known->nextMs, fromMs, toMs)) : std::nullopt;
}

std::optional<qint64> FleetReader::newestMs(const QString& camera)
{
    const auto newest = ask<qint64>("newest " + camera, camera,
                                    [camera](FleetIndex& index) { return index.newestMs(camera); });
    return newest && *newest > 0 ? newest : std::nullopt;
}

std::optional<Span> FleetReader::spanAfter(const QString& camera, qint64 ms)
{
    return firstOf(
        ask<QVector<Span>>(QString("after %1 %2").arg(ms).arg(camera), camera,
                           [camera, ms](FleetIndex& index) { return index.spanAfter(camera, ms); }));
}

std::optional<Span> FleetReader::spanBefore(const QString& camera, qint64 ms)
{
    return firstOf(
        ask<QVector<Span>>(QString("before %1 %2").arg(ms).arg(camera), camera,
                           [camera, ms](FleetIndex& index) { return index.spanBefore(camera, ms); }));
}

ReaderMaker FleetReader::readerMaker() const
{
    return [address = m_address] { return std::make_unique<PlainFleetReader>(address); };
}

void FleetReader::takeChange(const QString& camera)
{
    {
        const std::lock_guard lock(m_answers->mutex);
        for (Answer& answer : m_answers->all)
            answer.isStale = answer.isStale || camera.isEmpty() || answer.camera == camera;
    }
    Q_EMIT changed(camera);
}

void FleetReader::takeAway(const QString& reason)
{
    m_watchAway = reason;
    m_missedPulses = 0;
    tellAway(reason);
}

void FleetReader::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_pulse.timerId())
        return;
    if (m_answers->isPulseDue) {
        if (++m_missedPulses == MostMissedPulses && m_away.isEmpty())
            tellAway("the shared index does not answer");
        return;
    }
    m_missedPulses = 0;
    tellAway(m_watchAway);
    m_answers->isPulseDue = true;
    QMetaObject::invokeMethod(
        m_watch, [answers = m_answers] { answers->isPulseDue = false; }, Qt::QueuedConnection);
}

void FleetReader::tellAway(const QString& reason)
{
    if (m_away == reason)
        return;
    m_away = reason;
    Q_EMIT awayChanged();
    if (!reason.isEmpty())
        return;
    sayAcknowledged();
    QSet<QString> waiting;
    {
        const std::lock_guard lock(m_answers->mutex);
        for (Answer& answer : m_answers->all) {
            if (!answer.isAsked && std::exchange(answer.isLate, false))
                waiting.insert(answer.camera);
        }
    }
    for (const QString& camera : qAsConst(waiting))
        Q_EMIT changed(camera);
}
