#pragma once

#include "cameras/SourceAddress.h"
#include "decode/FramePool.h"
#include "source/SourceFeed.h"
#include "synthetic/PtzMotion.h"
#include "synthetic/SceneComposer.h"

/// A built-in camera: 704 x 576 at 25 pictures a second, with its name and the time in the picture.
class SyntheticFeed : public SourceFeed
{
public:
    SyntheticFeed(const SourceAddress& address, CaptionPainter caption, std::shared_ptr<PtzControl> ptz);

    bool open() override;
    Step advance() override;
    qint64 pts() const override { return m_pts; }
    FramePtr picture() override;
    bool isPaced() const override { return true; }
    bool isLive() const override { return true; }
    bool givesPackets() const override { return false; }

private:
    SourceAddress m_address;
    CaptionPainter m_caption;
    std::shared_ptr<PtzControl> m_ptz;
    FramePool m_pool;
    std::unique_ptr<SceneComposer> m_composer;
    qint64 m_pts = 0;
};
