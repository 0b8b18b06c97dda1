#pragma once

#include "decode/FrameConverter.h"
#include "source/PictureCodec.h"
#include "source/ShownSize.h"
#include "source/SourceFeed.h"

#include <limits>

/// Turns packets into pictures, each at its place on its owner's line of time, and leaves out those before
/// the one that is wanted. All times are microseconds.
class PictureDecoder
{
public:
    /// Before every picture.
    static constexpr qint64 Anywhere = std::numeric_limits<qint64>::min() / 2;
    /// Before a wanted picture this much is decoded in full, so that there is one to show where its packets
    /// end too early.
    static constexpr qint64 FullyDecodedUs = 1'000'000;

    /// Takes packets of this format from now on; those that it still has are dropped, the picture is kept.
    /// False with one line in `error`.
    bool open(std::shared_ptr<const StreamFormat> format, QString* error);
    bool isOpen() const { return m_codec.isOpen(); }
    /// The packets start over, or go on elsewhere.
    void startOver() { m_codec.startOver(); }

    /// Pictures before `us` are left out. Further before it than `fullyDecodedUs` those that no other one
    /// needs are not even decoded.
    void setWanted(qint64 us, qint64 fullyDecodedUs = FullyDecodedUs);

    /// Pictures that no other one needs are left out from the next packet on.
    void setHurried(bool hurried) { m_isHurried = hurried; }

    /// What is sent from now on is only looked at roughly, and no picture after it needs it.
    void setRough(bool rough) { m_codec.setRough(rough); }

    /// Goes on to the next picture. `feed` is called whenever packets are needed: it sends the next one, or
    /// drains, or else gives up with false, which the step then is too.
    SourceFeed::Step advance(const std::function<bool()>& feed);
    /// `place` tells where a time stamp of the packet lies.
    void send(const AVPacket& packet, const std::function<qint64(int64_t stamp)>& place);
    /// No more packets: what the codec still has comes, then the end.
    void drain() { m_codec.drain(); }
    /// At the end, true once if the picture is there only because no later one came.
    bool takeLeftOut() { return std::exchange(m_hasLeftOut, false); }

    /// Where the picture lies, and where the one after it is expected.
    qint64 placeUs() const { return m_placeUs; }
    qint64 endUs() const { return m_endUs; }
    /// The picture, without the time at which it was taken; null if it can't be converted. It comes in its
    /// own size, or in what ShownSize makes of that.
    std::shared_ptr<Frame> picture(const ShownSize& shown = {});

private:
    bool takeComing();

    PictureCodec m_codec;
    AvFrame m_coming;
    AvFrame m_shown;
    FrameConverter m_converter;
    qint64 m_wantedUs = Anywhere;
    qint64 m_fullyDecodedUs = FullyDecodedUs;
    qint64 m_placeUs = 0;
    qint64 m_endUs = 0;
    bool m_isHurried = false;
    bool m_hasLeftOut = false;
};
