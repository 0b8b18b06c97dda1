#include "synthetic/SyntheticFeed.h"

#include <QDateTime>

namespace {

constexpr qint64 StepUs = 40'000;

} // namespace

SyntheticFeed::SyntheticFeed(const SourceAddress& address, CaptionPainter caption,
                             std::shared_ptr<PtzControl> ptz)
    : m_address(address), m_caption(std::move(caption)), m_ptz(std::move(ptz))
{
}

bool SyntheticFeed::open()
{
    QString error;
    auto art = SceneArt::scene(SceneComposer::sceneOf(m_address.number()), &error);
    if (!art)
        return fail(error);
    m_composer = std::make_unique<SceneComposer>(m_address.number(), Caption(m_address.name(), m_caption),
                                                 std::move(art));
    return true;
}

SourceFeed::Step SyntheticFeed::advance()
{
    m_pts += StepUs;
    return Step::Picture;
}

FramePtr SyntheticFeed::picture()
{
    const std::shared_ptr<Frame> frame =
        m_pool.take(SceneComposer::ViewSize.width(), SceneComposer::ViewSize.height());
    frame->pts = m_pts;
    frame->wallMs = QDateTime::currentMSecsSinceEpoch();
    m_composer->compose(*frame, frame->wallMs, m_ptz->view());
    return frame;
}
