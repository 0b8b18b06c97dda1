#include "synthetic/SyntheticFeed.h"

#include "source/SourceLink.h"

#include <QDateTime>

namespace {

constexpr qint64 StepUs = 40'000;

} // namespace

SyntheticFeed::SyntheticFeed(const SourceAddress& address, SourceLink& link)
    : m_address(address), m_link(link)
{
}

bool SyntheticFeed::open()
{
    QString error;
    auto art = SceneArt::scene(SceneComposer::sceneOf(m_address.number()), &error);
    if (!art)
        return fail(error);
    m_link.ptz().setUp(SceneArt::WholeSize, SceneComposer::ViewSize);
    m_composer = std::make_unique<SceneComposer>(m_address.number(), m_address.name(), std::move(art));
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
    m_composer->compose(*frame, frame->wallMs, m_link.ptz().view(nowMs()));
    return frame;
}

qint64 SyntheticFeed::nowMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}
