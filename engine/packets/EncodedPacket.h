#pragma once

#include "packets/FFmpeg.h"

#include <QtGlobal>

#include <functional>

/// How the packets of a stream are to be read.
struct StreamFormat
{
    AvParameters parameters;
    AVRational timeBase;
    /// That of the sound that comes with these pictures; null without any.
    std::shared_ptr<const StreamFormat> sound;

    /// Null if memory is short.
    static std::shared_ptr<const StreamFormat> of(const AVCodecParameters& parameters, AVRational timeBase,
                                                  std::shared_ptr<const StreamFormat> sound = nullptr);
    static std::shared_ptr<const StreamFormat> of(const AVCodecContext& codec);
    /// True if packets of both can follow each other in one file.
    bool isLike(const StreamFormat& other) const;
    /// A codec that reads such packets, opened; null with one line in `error` if there is none. Without a
    /// decoder it is FFmpeg's own choice; what `prepare` makes of it before it opens may fail too.
    AvCodec openDecoder(QString* error, const AVCodec* decoder = nullptr,
                        const std::function<bool(AVCodecContext&)>& prepare = {}) const;
};

/// One packet, never changed once it is made.
struct EncodedPacket
{
    /// pts and dts are set, dts grows from packet to packet of the same format, and the times of sound count
    /// from the same start as those of its pictures.
    AvPacket packet;
    std::shared_ptr<const StreamFormat> format;
    qint64 wallMs; ///< when it came, milliseconds since 1970

    bool isSound() const { return format && format->parameters->codec_type == AVMEDIA_TYPE_AUDIO; }
    /// A picture that is complete in itself.
    bool isKey() const { return packet->flags & AV_PKT_FLAG_KEY && !isSound(); }
    size_t bytes() const { return size_t(packet->size); }
};
