#include "packets/PictureOrder.h"

#include <QByteArray>

namespace {

constexpr int SequenceParameters = 7;
constexpr int Baseline = 66;
constexpr int AnyAspect = 255;
constexpr int OrderOfPackets = 2;

/// The fields of an H.264 header one after the other; behind its end all are 0, and it has failed.
class HeaderBits
{
public:
    explicit HeaderBits(const QByteArray& bytes) : m_bytes(bytes) {}

    bool hasFailed() const { return m_at > m_bytes.size() * 8; }
    bool flag() { return bits(1) != 0; }
    void skip(int count) { m_at = qMin(m_at + count, m_bytes.size() * 8 + 1); }

    quint32 bits(int count)
    {
        quint32 value = 0;
        for (; count > 0; --count, skip(1))
            value = value << 1 | (m_at < m_bytes.size() * 8 ? m_bytes[m_at / 8] >> (7 - m_at % 8) & 1 : 0);
        return value;
    }

    /// A number that is as long as it is large.
    quint32 number()
    {
        int length = 0;
        while (length < 32 && !hasFailed() && !flag())
            ++length;
        return length < 32 ? (1U << length) - 1 + bits(length) : 0;
    }

    void numbers(quint32 count)
    {
        for (; count > 0 && !hasFailed(); --count)
            number();
    }

private:
    const QByteArray m_bytes;
    int m_at = 0;
};

bool hasChroma(quint32 profile)
{
    return QByteArray("\x64\x6e\x7a\xf4\x2c\x53\x56\x76\x80").contains(char(profile));
}

void skipBufferModel(HeaderBits& header)
{
    const quint32 count = header.number() + 1;
    header.skip(8);
    for (quint32 i = 0; i < count && !header.hasFailed(); ++i) {
        header.numbers(2);
        header.skip(1);
    }
    header.skip(20);
}

/// What a decoder may know beside; true if it tells that no picture is held back.
bool tellsOrder(HeaderBits& header)
{
    if (header.flag() && header.bits(8) == AnyAspect)
        header.skip(32);
    if (header.flag())
        header.skip(1);
    if (header.flag()) {
        header.skip(4);
        header.skip(header.flag() ? 24 : 0);
    }
    if (header.flag())
        header.numbers(2);
    if (header.flag())
        header.skip(65);
    const bool hasUnits = header.flag();
    if (hasUnits)
        skipBufferModel(header);
    const bool hasSlices = header.flag();
    if (hasSlices)
        skipBufferModel(header);
    header.skip(hasUnits || hasSlices ? 2 : 1);
    if (!header.flag())
        return false;
    header.skip(1);
    header.numbers(4);
    return header.number() == 0 && !header.hasFailed();
}

bool keepsOrder(HeaderBits header)
{
    const quint32 profile = header.bits(8);
    header.skip(16);
    header.number();
    if (hasChroma(profile)) {
        if (header.number() == 3)
            header.skip(1);
        header.numbers(2);
        header.skip(1);
        if (header.flag())
            return false;
    }
    header.number();
    const quint32 order = header.number();
    if (header.hasFailed() || order == 1)
        return false;
    if (order == OrderOfPackets || profile == Baseline)
        return true;
    header.numbers(2);
    header.skip(1);
    header.numbers(2);
    if (!header.flag())
        header.skip(1);
    header.skip(1);
    if (header.flag())
        header.numbers(4);
    return header.flag() && tellsOrder(header);
}

} // namespace

bool PictureOrder::isKept(const AVCodecParameters& stream)
{
    if (stream.codec_id != AV_CODEC_ID_H264 || !stream.extradata)
        return false;
    const QByteArray mark("\0\0\1", 3);
    const auto all =
        QByteArray::fromRawData(reinterpret_cast<const char*>(stream.extradata), stream.extradata_size);
    bool hasHeader = false;
    for (int at = all.indexOf(mark); at >= 0; at = all.indexOf(mark, at + 1)) {
        const int next = all.indexOf(mark, at + 1);
        QByteArray unit = all.mid(at + mark.size(), next < 0 ? -1 : next - at - mark.size());
        if (unit.isEmpty() || (unit[0] & 0x1f) != SequenceParameters)
            continue;
        // Zeros in it are kept apart, so that nothing in it looks like the beginning of the next one.
        unit.replace(QByteArray("\0\0\3", 3), QByteArray("\0\0", 2));
        hasHeader = true;
        if (!keepsOrder(HeaderBits(unit.mid(1))))
            return false;
    }
    return hasHeader;
}
