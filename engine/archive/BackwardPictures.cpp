#include "archive/BackwardPictures.h"

namespace {

/// A file without an index is read from its beginning.
constexpr size_t MostPackets = 6000;

} // namespace

void BackwardPictures::start(qint64 beforeMs)
{
    m_beforeMs = beforeMs;
    m_error.clear();
    m_reader.reset();
    m_packets.clear();
    m_coming.clear();
    m_ready.clear();
    m_isDecoding = false;
}

std::shared_ptr<Frame> BackwardPictures::next(const Wish& wish)
{
    while (m_ready.empty()) {
        while (decode(wish.shown)) {
        }
        m_ready = std::exchange(m_coming, {});
        if (!gather(wish.keysOnly) && m_ready.empty())
            return nullptr;
    }
    // So that all have come when the last of these goes.
    for (size_t i = 0; i <= m_packets.size() / m_ready.size() && decode(wish.shown); ++i) {
    }
    const std::shared_ptr<Frame> frame = m_ready.back();
    m_ready.pop_back();
    return frame;
}

std::optional<TrackPiece> BackwardPictures::pieceBefore() const
{
    if (const auto piece = m_track->at(m_beforeMs - 1))
        return piece;
    const auto piece = m_track->before(m_beforeMs);
    return piece && m_beforeMs - piece->endMs <= SegmentTrack::SeamMs ? piece : std::nullopt;
}

/// Reads what lies before all that was gathered, from the key frame before it on. False where nothing does.
bool BackwardPictures::gather(bool keysOnly)
{
    const std::optional<TrackPiece> piece = m_error.isEmpty() ? pieceBefore() : std::nullopt;
    if (!piece || !enter(*piece))
        return false;
    m_groupEndMs = qMin(m_beforeMs, piece->endMs);
    m_reader->seek(m_groupEndMs - 1);
    readGroup();
    const bool isThere = !m_packets.empty() && m_groupMs < m_groupEndMs;
    // A piece may have no length.
    m_beforeMs = isThere ? m_groupMs : qMin(piece->startMs, m_groupEndMs - 1);
    if (!isThere)
        m_packets.clear();
    if (keysOnly && isThere)
        m_packets.resize(1);
    m_groupSize = m_packets.size();
    m_decoded = 0;
    m_stride = 1;
    m_isDecoding = isThere;
    m_decoder.startOver();
    return true;
}

bool BackwardPictures::enter(const TrackPiece& piece)
{
    if (m_reader && m_reader->piece().path == piece.path)
        return true;
    m_reader = std::make_unique<SegmentReader>();
    return m_reader->open(piece, &m_error) && m_decoder.open(m_reader->format(), &m_error);
}

void BackwardPictures::readGroup()
{
    m_packets.clear();
    m_groupMs = m_groupEndMs;
    while (const AVPacket* packet = m_reader->read()) {
        if (m_reader->isSound(*packet))
            continue;
        if (m_reader->momentOf(packet->dts) >= m_groupEndMs || m_packets.size() >= MostPackets)
            return;
        const qint64 ms = m_reader->momentOf(packet->pts);
        // The last pictures may follow the next key frame, which they need too.
        if (packet->flags & AV_PKT_FLAG_KEY && ms < m_groupEndMs) {
            m_packets.clear();
            m_groupMs = ms;
        }
        m_packets.emplace_back(av_packet_clone(packet));
    }
}

/// Goes on by a picture; false if there is none.
bool BackwardPictures::decode(const ShownSize& shown)
{
    const auto feedOne = [this] {
        feed();
        return true;
    };
    m_isDecoding = m_isDecoding && m_decoder.advance(feedOne) == SourceFeed::Step::Picture;
    const qint64 ms = m_decoder.placeUs() / 1000;
    if (m_isDecoding && ms >= m_groupMs && ms < m_groupEndMs)
        keep(shown, ms);
    return m_isDecoding;
}

void BackwardPictures::feed()
{
    if (m_packets.empty())
        return m_decoder.drain();
    const AvPacket packet = std::move(m_packets.front());
    m_packets.pop_front();
    if (packet)
        m_decoder.send(*packet, [this](int64_t stamp) { return m_reader->momentOf(stamp) * 1000; });
}

void BackwardPictures::keep(const ShownSize& shown, qint64 ms)
{
    if (m_decoded++ % m_stride != 0)
        return;
    const std::shared_ptr<Frame> frame = m_decoder.picture({shown.most, false});
    if (!frame)
        return;
    // The pictures as they were decoded would take several times as much.
    frame->picture.reset();
    frame->wallMs = ms;
    m_stride = 1 + m_groupSize * frame->buffer.size() / size_t(MostBytes);
    m_coming.push_back(frame);
}
