#pragma once

#include "decode/Frame.h"
#include "packets/EncodedPacket.h"

class PacketHub;

/// Makes packets for a source that has none, at half the size of its pictures, so that many cameras can be
/// encoded beside each other. Meant for some 12 pictures a second: every twelfth is a key frame.
class PacketEncoder
{
public:
    void encode(const Frame& frame, PacketHub& hub);

private:
    bool open(const Frame& frame);
    bool convert(const Frame& frame);
    void deliver(PacketHub& hub, qint64 wallMs);

    AvCodec m_codec;
    AvFrame m_picture;
    AvPacket m_packet;
    std::shared_ptr<const StreamFormat> m_format;
    QSize m_size; ///< of the frames that it is set up for
    qint64 m_firstMs = 0;
};
