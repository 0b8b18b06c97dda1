#pragma once

#include "video/FFmpeg.h"

#include <QtGlobal>

/// How the packets of a stream are to be read.
struct StreamFormat
{
    AvParameters parameters;
    AVRational timeBase;

    /// Null if memory is short.
    static std::shared_ptr<const StreamFormat> of(const AVCodecParameters& parameters, AVRational timeBase);
    static std::shared_ptr<const StreamFormat> of(const AVCodecContext& codec);
    /// True if packets of both can follow each other in one file.
    bool isLike(const StreamFormat& other) const;
    /// A codec that reads such packets, opened; null with one line in `error` if there is none.
    AvCodec openDecoder(QString* error) const;
};

/// One packet, never changed once it is made.
struct EncodedPacket
{
    AvPacket packet; ///< pts and dts are set, and dts grows from packet to packet of the same format
    std::shared_ptr<const StreamFormat> format;
    qint64 wallMs; ///< when it came, milliseconds since 1970

    bool isKey() const { return packet->flags & AV_PKT_FLAG_KEY; }
    size_t bytes() const { return size_t(packet->size); }
};
