#include "source/PictureCodec.h"

#include "source/DecodeDevices.h"

#include <limits>

namespace {

constexpr int64_t Never = std::numeric_limits<int64_t>::min();
/// A device that takes so many packets and gives no picture doesn't work: more than codecs hold back where
/// pictures come in another order than their packets, more than devices begin with where they don't, and more
/// than the two fields of a picture once it has begun.
constexpr int MostSilence = 24;
constexpr int MostSilenceAtFirst = 6;
constexpr int MostSilenceInOrder = 3;

} // namespace

bool PictureCodec::open(std::shared_ptr<const StreamFormat> format, QString* error)
{
    forget();
    m_device.reset();
    m_passes = 0;
    m_passesNext = 1;
    m_needsKey = false;
    m_format = std::move(format);
    m_codec = m_format->openDecoder(error);
    if (!m_codec)
        return false;
    m_codec->pkt_timebase = Microseconds;
    return true;
}

void PictureCodec::startOver()
{
    forget();
    avcodec_flush_buffers(m_codec.get());
}

void PictureCodec::forget()
{
    m_sent.clear();
    m_sentBytes = 0;
    m_again.clear();
    m_suspect.reset();
    m_againEndsUs = Never;
    m_hasShown = false;
    m_silence = 0;
    m_hasGiven = false;
    m_isDraining = false;
}

void PictureCodec::send(AvPacket packet, bool isHurried)
{
    if (packet->flags & AV_PKT_FLAG_KEY) {
        m_needsKey = false;
        if (m_passes > 0)
            --m_passes;
        else if (!m_device && !m_suspect)
            takeDevice();
    }
    if (m_needsKey)
        return;
    const int error = give(*packet, isHurried);
    if (!m_device)
        return;
    keep(std::move(packet), isHurried);
    // Of a packet that makes no sense nobody has a picture.
    if (error < 0 && error != AVERROR_INVALIDDATA)
        fallBack();
}

int PictureCodec::give(const AVPacket& packet, bool isHurried)
{
    m_codec->skip_frame = isHurried ? AVDISCARD_NONREF : AVDISCARD_DEFAULT;
    m_codec->skip_loop_filter = m_isRough ? AVDISCARD_ALL : AVDISCARD_DEFAULT;
    m_silence += isHurried ? 0 : 1;
    const int error = avcodec_send_packet(m_codec.get(), &packet);
    m_isDamaged = m_isDamaged || error == AVERROR_INVALIDDATA;
    return error;
}

/// From a key frame on, or nothing.
void PictureCodec::keep(AvPacket packet, bool isHurried)
{
    if (m_sent.empty() && !(packet->flags & AV_PKT_FLAG_KEY))
        return;
    m_sentBytes += size_t(packet->size);
    m_sent.push_back({std::move(packet), isHurried});
    if (m_sentBytes > MostKeptBytes || m_sent.size() > MostKept)
        dropSent(m_sent.size());
}

/// Of a key frame whose picture has come no packet before it is needed any more.
void PictureCodec::dropWhatHasCome()
{
    for (size_t i = m_sent.size(); i-- > 1;) {
        const AVPacket& packet = *m_sent[i].packet;
        if (packet.flags & AV_PKT_FLAG_KEY && packet.pts <= m_shownUs)
            return dropSent(i);
    }
}

void PictureCodec::dropSent(size_t count)
{
    for (; count > 0; --count) {
        m_sentBytes -= size_t(m_sent.front().packet->size);
        m_sent.pop_front();
    }
}

void PictureCodec::drain()
{
    m_isDraining = true;
    if (m_again.empty())
        avcodec_send_packet(m_codec.get(), nullptr);
}

int PictureCodec::receive(AVFrame& picture)
{
    while (true) {
        const int result = avcodec_receive_frame(m_codec.get(), &picture);
        if (m_device && !isWell(result, picture)) {
            fallBack();
            continue;
        }
        judge(result, picture);
        if (result < 0 && sendAgain())
            continue;
        if (result < 0 || isNew(picture))
            return result;
    }
}

bool PictureCodec::isWell(int result, AVFrame& picture)
{
    if (result == AVERROR_EOF)
        return m_silence == 0;
    if (result < 0)
        return (result == AVERROR(EAGAIN) || result == AVERROR_INVALIDDATA) && !isSilent();
    m_silence = 0;
    m_hasGiven = true;
    const DecodeDevice::Fetched fetched = m_device->fetch(picture);
    if (fetched == DecodeDevice::Fetched::NotNeeded)
        blame(*std::exchange(m_device, nullptr));
    return fetched != DecodeDevice::Fetched::Failed;
}

bool PictureCodec::isSilent() const
{
    if (m_codec->has_b_frames > 0)
        return m_silence >= MostSilence;
    return m_silence >= (m_hasGiven ? MostSilenceInOrder : MostSilenceAtFirst);
}

/// What the processor has decoded and not given yet is left out.
void PictureCodec::takeDevice()
{
    const std::shared_ptr<DecodeDevices> devices = DecodeDevices::inUse();
    std::shared_ptr<DecodeDevice> device = devices ? devices->choose(*m_format->parameters) : nullptr;
    if (!device)
        return;
    QString error;
    AvCodec codec =
        m_format->openDecoder(&error, device->decoderFor(m_format->parameters->codec_id),
                              [&device](AVCodecContext& prepared) { return device->attach(prepared); });
    if (!codec) {
        devices->leaveOut(*device, *m_format->parameters);
        return;
    }
    codec->pkt_timebase = Microseconds;
    m_codec = std::move(codec);
    m_device = std::move(device);
    m_silence = 0;
    m_hasGiven = false;
}

/// A device that has failed is compared with the processor at the next picture: it comes, or should have
/// come.
void PictureCodec::judge(int result, const AVFrame& picture)
{
    if (!m_suspect)
        return;
    const bool hasPicture = result >= 0 && (picture.best_effort_timestamp == AV_NOPTS_VALUE ||
                                            picture.best_effort_timestamp > m_againEndsUs);
    const bool hasNone = result == AVERROR(EAGAIN) && m_again.empty() && m_silence > m_codec->has_b_frames;
    m_isDamaged = m_isDamaged || hasNone || result == AVERROR_INVALIDDATA ||
                  (hasPicture && picture.decode_error_flags != 0);
    if (!hasPicture && !hasNone)
        return;
    const std::shared_ptr<DecodeDevice> device = std::move(m_suspect);
    if (!m_isDamaged)
        return blame(*device);
    m_passes = m_passesNext;
    m_passesNext = qMin(MostPassed, 2 * m_passesNext);
}

void PictureCodec::blame(DecodeDevice& device) const
{
    if (const std::shared_ptr<DecodeDevices> devices = DecodeDevices::inUse())
        devices->leaveOut(device, *m_format->parameters);
}

void PictureCodec::fallBack()
{
    m_suspect = std::move(m_device);
    m_isDamaged = false;
    m_silence = 0;
    QString error;
    if (AvCodec codec = m_format->openDecoder(&error)) {
        codec->pkt_timebase = Microseconds;
        m_codec = std::move(codec);
    }
    m_again = std::exchange(m_sent, {});
    m_sentBytes = 0;
    m_needsKey = m_again.empty();
    m_againEndsUs = m_hasShown ? m_shownUs : Never;
}

bool PictureCodec::sendAgain()
{
    if (m_again.empty())
        return false;
    const Sent next = std::move(m_again.front());
    m_again.pop_front();
    const int64_t place = next.packet->pts;
    const bool isShown = place != AV_NOPTS_VALUE && place <= m_againEndsUs;
    give(*next.packet, next.isHurried || isShown);
    if (m_again.empty() && m_isDraining)
        drain();
    return true;
}

/// False for a picture that the device had given before it failed.
bool PictureCodec::isNew(const AVFrame& picture)
{
    const int64_t place = picture.best_effort_timestamp;
    if (place == AV_NOPTS_VALUE)
        return true;
    if (place <= m_againEndsUs)
        return false;
    m_againEndsUs = Never;
    m_shownUs = place;
    m_hasShown = true;
    dropWhatHasCome();
    return true;
}
