#include "source/MediaFeed.h"

#include "source/LiveFeed.h"
#include "source/RelayPatience.h"
#include "source/SourceLink.h"

#include <QDateTime>

MediaFeed::MediaFeed(const SourceAddress& address, SourceLink& link)
    : m_link(link), m_input(address, [&link] { return link.isStopped(); }), m_sound(link.sound())
{
}

FeedMaker MediaFeed::maker(const SourceAddress& address)
{
    return [address](SourceLink& link) -> std::unique_ptr<SourceFeed> {
        if (address.isLive())
            return std::make_unique<LiveFeed>(address, link);
        return std::make_unique<MediaFeed>(address, link);
    };
}

FeedMaker MediaFeed::maker(const SourceAddress& relay, const SourceAddress& camera,
                           const std::shared_ptr<RelayPatience>& patience)
{
    return [relay, camera, patience, isRelayed = false](SourceLink& link) mutable {
        isRelayed = !isRelayed && patience->answers(relay, [&link] { return link.isStopped(); });
        return maker(isRelayed ? relay : camera)(link);
    };
}

bool MediaFeed::open()
{
    if (!m_input.open())
        return fail(m_input.error());
    const InputStreams& streams = m_input.streams();
    if (!m_input.isPlain())
        m_stamper = std::make_unique<PacketStamper>(streams.format());
    m_sound.begin(streams.soundFormat());
    m_link.setSound(streams.soundFormat() != nullptr);
    QString error;
    return m_decoder.open(streams.format(), &error) || fail(error);
}

SourceFeed::Step MediaFeed::advance()
{
    m_shown = SourceLink::Clock::now();
    while (true) {
        const Step step = m_decoder.advance([this] { return feedDecoder(); });
        m_sawPicture = m_sawPicture || step == Step::Picture;
        if (step != Step::End)
            return step;
        if (!loop())
            return Step::Failed;
    }
}

bool MediaFeed::feedDecoder()
{
    if (m_link.isStopped())
        return fail("stopped");
    const int error = m_input.read();
    if (error == AVERROR_EOF)
        m_decoder.drain();
    else if (error >= 0)
        takePacket();
    if (error >= 0 || error == AVERROR_EOF || error == AVERROR(EAGAIN))
        return true;
    m_input.fail("cannot read: %1", error);
    return fail(m_input.error());
}

void MediaFeed::takePacket()
{
    const AVPacket& packet = m_input.packet();
    const InputStreams& streams = m_input.streams();
    if (packet.stream_index == streams.sound()) {
        giveSound(packet);
        hearSound(packet);
    } else if (packet.stream_index == streams.pictures()) {
        givePacket(packet);
        const AVRational timeBase = streams.format()->timeBase;
        m_decoder.send(packet, [=](int64_t stamp) { return placeOf(stamp, timeBase); });
    }
}

void MediaFeed::givePacket(const AVPacket& given)
{
    if (!m_stamper)
        return;
    // Stamped also while nobody takes it, so that the times go on without a break.
    const PacketPtr packet = m_stamper->stamp(given);
    if (packet && m_link.packets().hasSinks())
        m_link.packets().give(packet);
}

void MediaFeed::giveSound(const AVPacket& given)
{
    const auto& format = m_input.streams().format()->sound;
    if (!m_stamper || !format)
        return;
    const PacketPtr packet = m_stamper->stampSound(given, format);
    if (packet && m_link.packets().hasSinks())
        m_link.packets().give(packet);
}

/// Sound lies where its pictures do.
void MediaFeed::hearSound(const AVPacket& packet)
{
    if (!m_sawPicture || packet.pts == AV_NOPTS_VALUE)
        return;
    const qint64 place = placeOf(packet.pts, m_input.streams().soundFormat()->timeBase);
    m_sound.hear(packet, m_shown + std::chrono::microseconds(place - m_decoder.placeUs()));
}

qint64 MediaFeed::placeOf(int64_t stamp, AVRational timeBase) const
{
    return m_input.placeOf(stamp, timeBase) + m_offset;
}

bool MediaFeed::loop()
{
    if (!m_sawPicture)
        return fail("no pictures in it");
    if (!m_input.rewind())
        return fail("the stream has ended");
    m_decoder.startOver();
    if (m_stamper)
        m_stamper->startOver();
    m_offset = m_decoder.endUs();
    m_sawPicture = false;
    return true;
}

FramePtr MediaFeed::picture()
{
    const std::shared_ptr<Frame> frame = m_decoder.picture(m_stamper ? m_link.shownSize() : ShownSize());
    if (frame)
        frame->wallMs = QDateTime::currentMSecsSinceEpoch();
    return frame;
}
