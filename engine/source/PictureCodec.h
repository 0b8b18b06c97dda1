#pragma once

#include "packets/EncodedPacket.h"

#include <deque>
#include <memory>

class DecodeDevice;

/// A decoder of pictures: the processor's own, or a device's as soon as there is one, from a key frame on.
/// Where a device fails, the processor takes over from the key frame that its next picture needs, and no
/// picture is lost or comes twice. Where the processor does no better, the packets are damaged: the device is
/// not to blame, and taken again later. The packets' times are microseconds.
class PictureCodec
{
public:
    /// So much is kept at most to be decoded again; behind that a failed device costs what is left up to the
    /// next key frame.
    static constexpr size_t MostKeptBytes = 8 << 20;
    static constexpr size_t MostKept = 600;
    /// Key frames that the processor decodes at most before a device is taken again.
    static constexpr int MostPassed = 60;

    /// False with one line in `error`.
    bool open(std::shared_ptr<const StreamFormat> format, QString* error);
    bool isOpen() const { return m_codec != nullptr; }
    const StreamFormat& format() const { return *m_format; }
    /// The packets start over, or go on elsewhere.
    void startOver();
    /// A packet that `isHurried` is left out if its picture is one that no other needs.
    void send(AvPacket packet, bool isHurried);
    /// What is decoded from now on is only looked at roughly: edges of its blocks stay as they are.
    void setRough(bool rough) { m_isRough = rough; }
    /// No more packets.
    void drain();
    bool isDraining() const { return m_isDraining; }
    /// FFmpeg's number: AVERROR(EAGAIN) for one that wants packets, AVERROR_EOF after the last picture.
    int receive(AVFrame& picture);

private:
    struct Sent
    {
        AvPacket packet;
        bool isHurried;
    };

    void takeDevice();
    void fallBack();
    void keep(AvPacket packet, bool isHurried);
    void dropWhatHasCome();
    void dropSent(size_t count);
    int give(const AVPacket& packet, bool isHurried);
    bool sendAgain();
    bool isWell(int result, AVFrame& picture);
    void judge(int result, const AVFrame& picture);
    void blame(DecodeDevice& device) const;
    bool isSilent() const;
    bool isNew(const AVFrame& picture);
    void forget();

    std::shared_ptr<const StreamFormat> m_format;
    AvCodec m_codec;
    std::shared_ptr<DecodeDevice> m_device;  ///< null while the processor decodes
    std::shared_ptr<DecodeDevice> m_suspect; ///< has failed, until the processor has done better or not
    std::deque<Sent> m_sent; ///< to the device, from the key frame on that its next picture needs
    size_t m_sentBytes = 0;
    std::deque<Sent> m_again;  ///< what the processor decodes anew
    int64_t m_shownUs = 0;     ///< place of the last picture that came
    int64_t m_againEndsUs = 0; ///< pictures up to there came before
    int m_silence = 0;         ///< packets since the device's last picture, or since it failed
    int m_passes = 0;          ///< key frames that the processor decodes before a device is taken
    int m_passesNext = 1;
    bool m_isDamaged = false; ///< the processor finds fault with what the device failed at
    bool m_hasGiven = false;  ///< the device has given a picture since it began
    bool m_hasShown = false;  ///< since the last start
    bool m_needsKey = false;  ///< after a device that failed
    bool m_isRough = false;
    bool m_isDraining = false;
};
