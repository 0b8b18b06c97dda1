#include "synthetic/SyntheticCamera.h"

#include "synthetic/SyntheticFeed.h"

SyntheticCamera::SyntheticCamera(const SourceAddress& address, const CaptionPainter& caption, QObject* parent)
    : SyntheticCamera(address, caption,
                      std::make_shared<PtzControl>(SceneArt::WholeSize, SceneComposer::ViewSize), parent)
{
}

SyntheticCamera::SyntheticCamera(const SourceAddress& address, const CaptionPainter& caption,
                                 const std::shared_ptr<PtzControl>& ptz, QObject* parent)
    : VideoSource([=](SourceLink&) { return std::make_unique<SyntheticFeed>(address, caption, ptz); },
                  parent),
      m_ptz(ptz)
{
}

void SyntheticCamera::ptz(int command, bool start)
{
    m_ptz->command(command, start);
}
