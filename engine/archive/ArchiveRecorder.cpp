#include "archive/ArchiveRecorder.h"

#include "archive/ArchiveKeeper.h"
#include "archive/SegmentSink.h"
#include "archive/WriteProgress.h"
#include "packets/PacketGate.h"
#include "packets/PacketQueue.h"
#include "source/VideoSource.h"

#include <QDateTime>
#include <QTimerEvent>

#include <algorithm>

namespace {

/// A program that is killed loses no more than this of a span.
constexpr int SpanStepMs = 500;
constexpr std::chrono::seconds Patience{3};
constexpr qint64 BeforeMs = 5000;
constexpr qint64 AfterMs = 10'000;

CameraSpan spanOf(const QString& camera, Span::Kind kind, qint64 startMs, bool goesOn)
{
    // However short it was, it was there.
    const qint64 end = qMax(startMs + 1, QDateTime::currentMSecsSinceEpoch());
    return {camera, {kind, startMs, end}, false, goesOn};
}

} // namespace

ArchiveRecorder::ArchiveRecorder(ArchiveKeeper* keeper, qint64 segmentMs, QObject* parent)
    : QObject(parent), m_keeper(keeper), m_segmentMs(segmentMs)
{
    m_spanTimer.start(SpanStepMs, this);
}

ArchiveRecorder::~ArchiveRecorder()
{
    stop();
}

std::shared_ptr<SegmentSink> ArchiveRecorder::makeSink(const QString& camera)
{
    SegmentSink::Listener listener;
    listener.finished = [keeper = m_keeper](const FinishedPart& part) { keeper->finish(part); };
    listener.failed = [this, camera](const QString& error) {
        m_keeper->makeRoom();
        QMetaObject::invokeMethod(
            this, [this, camera, error] { takeFailure(camera, error); }, Qt::QueuedConnection);
    };
    return std::make_shared<SegmentSink>(m_keeper->paths(), camera, m_segmentMs, listener);
}

void ArchiveRecorder::record(const QString& camera, QSharedPointer<VideoSource> source,
                             QSharedPointer<VideoSource> motionSource, When when)
{
    Channel channel;
    channel.camera = camera;
    channel.source = source;
    channel.motionSource = motionSource ? motionSource : source;
    channel.sink = makeSink(camera);
    if (when == When::OnMotion)
        channel.gate = std::make_shared<PacketGate>(channel.sink, BeforeMs, AfterMs);
    const std::shared_ptr<PacketSink> target =
        channel.gate ? channel.gate : std::shared_ptr<PacketSink>(channel.sink);
    channel.progress = std::make_shared<WriteProgress>(target, channel.sink);
    channel.queue = std::make_shared<PacketQueue>(channel.progress);
    source->addSink(channel.queue);
    connect(channel.motionSource.data(), &VideoSource::motionChanged, this,
            [this, from = channel.motionSource.data()](bool motion) { noteMotion(from, motion); });
    channel.motionSource->setMotionDetection(true);
    m_channels.push_back(channel);
}

void ArchiveRecorder::stop()
{
    end(std::exchange(m_channels, {}));
}

void ArchiveRecorder::forget(const QString& camera)
{
    const auto isOther = [&camera](const Channel& channel) { return channel.camera != camera; };
    const auto its = std::stable_partition(m_channels.begin(), m_channels.end(), isOther);
    std::vector<Channel> channels(its, m_channels.end());
    m_channels.erase(its, m_channels.end());
    end(std::move(channels));
}

void ArchiveRecorder::cut(const QString& camera)
{
    for (const Channel& channel : m_channels) {
        if (channel.camera == camera)
            channel.sink->cut();
    }
}

qint64 ArchiveRecorder::progress(const QString& camera) const
{
    for (const Channel& channel : m_channels) {
        if (channel.camera == camera)
            return channel.progress->count();
    }
    return -1;
}

void ArchiveRecorder::end(std::vector<Channel> channels)
{
    for (Channel& channel : channels) {
        channel.source->removeSink(channel.queue);
        disconnect(channel.motionSource.data(), nullptr, this, nullptr);
        channel.motionSource->setMotionDetection(false);
        channel.queue->close();
        setSpan(channel, channel.motion, false);
        setSpan(channel, channel.alarm, false);
    }
    const auto until = PacketQueue::Clock::now() + Patience;
    for (const Channel& channel : channels) {
        channel.queue->wait(until);
        channel.sink->silence();
    }
}

void ArchiveRecorder::takeFailure(const QString& camera, const QString& error)
{
    if (error.isEmpty())
        Q_EMIT wellAgain(camera);
    else
        Q_EMIT failed(camera, error);
}

void ArchiveRecorder::noteMotion(const VideoSource* source, bool motion)
{
    for (Channel& channel : m_channels) {
        if (channel.motionSource.data() == source)
            setSpan(channel, channel.motion, motion);
    }
}

void ArchiveRecorder::setAlarm(const QString& camera, bool on)
{
    for (Channel& channel : m_channels) {
        if (channel.camera == camera)
            setSpan(channel, channel.alarm, on);
    }
}

void ArchiveRecorder::setSpan(const Channel& channel, OpenSpan& span, bool on)
{
    if (on == (span.startMs > 0))
        return;
    const qint64 start = on ? QDateTime::currentMSecsSinceEpoch() : span.startMs;
    span.startMs = on ? start : 0;
    if (channel.gate)
        channel.gate->setOpen(channel.motion.startMs > 0 || channel.alarm.startMs > 0);
    m_keeper->setSpans({spanOf(channel.camera, span.kind, start, on)});
}

void ArchiveRecorder::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_spanTimer.timerId())
        keepSpans();
}

void ArchiveRecorder::keepSpans()
{
    QVector<CameraSpan> spans;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    for (Channel& channel : m_channels) {
        for (OpenSpan* span : {&channel.motion, &channel.alarm}) {
            if (span->startMs == 0)
                continue;
            // A clock that was set back begins another one.
            span->startMs = qMin(span->startMs, now);
            spans.append(spanOf(channel.camera, span->kind, span->startMs, true));
        }
    }
    if (!spans.isEmpty())
        m_keeper->setSpans(spans);
}
