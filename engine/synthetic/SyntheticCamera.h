#pragma once

#include "cameras/SourceAddress.h"
#include "source/VideoSource.h"
#include "synthetic/Caption.h"

class PtzControl;

/// A built-in camera, which turns and zooms. Where it looks outlasts a stop.
class SyntheticCamera : public VideoSource
{
    Q_OBJECT

public:
    /// `address` is of the kind Synthetic.
    explicit SyntheticCamera(const SourceAddress& address, const CaptionPainter& caption = {},
                             QObject* parent = nullptr);

    void ptz(int command, bool start) override;

private:
    SyntheticCamera(const SourceAddress& address, const CaptionPainter& caption,
                    const std::shared_ptr<PtzControl>& ptz, QObject* parent);

    std::shared_ptr<PtzControl> m_ptz;
};
