#pragma once

#include "packets/EncodedPacket.h"
#include "source/SourceFeed.h"

#include <QVector>

#include <atomic>

/// The packets of a clip, over and over, each when it is due; nothing of them is decoded.
class ClipFeed : public SourceFeed
{
public:
    struct Clip
    {
        std::shared_ptr<const StreamFormat> format;
        std::vector<AvPacket> packets;
        qint64 lengthUs = 0;
        qint64 bytes = 0;
    };

    /// Null with a reason for what can't be read.
    static std::shared_ptr<const Clip> read(const QString& path, QString* error);

    /// `given` counts the bytes that it has given.
    ClipFeed(std::shared_ptr<const Clip> clip, SourceLink& link, qint64 phaseUs, std::atomic<qint64>& given)
        : m_clip(std::move(clip)), m_link(link), m_phaseUs(phaseUs), m_given(given)
    {
    }

    bool open() override { return true; }
    Step advance() override;
    qint64 pts() const override { return 0; }
    FramePtr picture() override { return nullptr; }
    bool isPaced() const override { return false; }
    bool isLive() const override { return true; }
    bool givesPackets() const override { return true; }

private:
    std::shared_ptr<const Clip> m_clip;
    SourceLink& m_link;
    qint64 m_phaseUs;
    std::atomic<qint64>& m_given;
};
