#pragma once

#include "cameras/SourceAddress.h"
#include "decode/FramePool.h"
#include "source/SourceFeed.h"
#include "synthetic/SceneComposer.h"

class SourceLink;

/// A built-in camera: 704 x 576 at 25 pictures a second, with its name and the time in the picture.
class SyntheticFeed : public SourceFeed
{
public:
    SyntheticFeed(const SourceAddress& address, SourceLink& link);

    bool open() override;
    Step advance() override;
    qint64 pts() const override { return m_pts; }
    FramePtr picture() override;
    bool isPaced() const override { return true; }
    bool isLive() const override { return true; }
    bool givesPackets() const override { return false; }

    /// The clock of the camera's motion, milliseconds.
    static qint64 nowMs();

private:
    SourceAddress m_address;
    SourceLink& m_link;
    FramePool m_pool;
    std::unique_ptr<SceneComposer> m_composer;
    qint64 m_pts = 0;
};
