#include "ClipFeed.h"

#include "packets/InputStreams.h"
#include "source/SourceLink.h"

#include <QDateTime>

std::shared_ptr<const ClipFeed::Clip> ClipFeed::read(const QString& path, QString* error)
{
    AVFormatContext* context = nullptr;
    if (avformat_open_input(&context, path.toUtf8().constData(), nullptr, nullptr) < 0 ||
        avformat_find_stream_info(context, nullptr) < 0) {
        *error = "can't read " + path;
        return nullptr;
    }
    const AvInput input(context);
    const InputStreams streams(*context);
    auto clip = std::make_shared<Clip>();
    clip->format = streams.format();
    AvPacket packet(av_packet_alloc());
    while (packet && av_read_frame(context, packet.get()) >= 0) {
        if (packet->stream_index == streams.pictures()) {
            clip->bytes += packet->size;
            clip->packets.emplace_back(av_packet_clone(packet.get()));
        }
        av_packet_unref(packet.get());
    }
    clip->lengthUs = context->duration;
    return clip;
}

SourceFeed::Step ClipFeed::advance()
{
    using std::chrono::microseconds;
    const auto start = SourceLink::Clock::now() + microseconds(m_phaseUs);
    const AVRational timeBase = m_clip->format->timeBase;
    m_link.setState(SourceState::Playing);
    for (qint64 round = 0; !m_link.isStopped(); ++round) {
        const int64_t shift = av_rescale_q(round * m_clip->lengthUs, Microseconds, timeBase);
        for (const AvPacket& one : m_clip->packets) {
            AvPacket packet(av_packet_clone(one.get()));
            packet->pts += shift;
            packet->dts += shift;
            const auto due = start + microseconds(av_rescale_q(packet->dts, timeBase, Microseconds));
            if (!m_link.waitUntil(due))
                break;
            m_given += packet->size;
            m_link.packets().give(std::make_shared<EncodedPacket>(
                EncodedPacket{std::move(packet), m_clip->format, QDateTime::currentMSecsSinceEpoch()}));
        }
    }
    return Step::Failed;
}
