#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "panes/DeckStreams.h"
#include "panes/FramePump.h"
#include "panes/StreamChoice.h"
#include "source/VideoSource.h"

#include <QHash>

namespace {

/// Of so many panes on a page small pictures are smoothly enlarged.
constexpr int EnlargedPanes = 4;
/// Of a pane that is zoomed only the map shows the whole picture.
constexpr int MapDivisor = 4;

} // namespace

QSize DeckStreams::wholeSize(const Pane& pane)
{
    const QSize pixels = pane.pump->panePixels();
    return pane.pump->isZoomed() ? pixels / MapDivisor : pixels;
}

/// A camera in several panes gives pictures for the largest one.
void DeckStreams::tellSizes()
{
    QHash<VideoSource*, QSize> sizes;
    int shown = 0;
    for (const Pane& pane : m_panes) {
        shown += isOnScreen(pane) ? 1 : 0;
        for (VideoSource* source : {pane.source.data(), pane.next.data()}) {
            if (source)
                sizes[source] = sizes[source].expandedTo(wholeSize(pane));
        }
    }
    for (auto it = sizes.cbegin(); it != sizes.cend(); ++it)
        it.key()->setShownSize({it.value(), shown <= EnlargedPanes});
}

void DeckStreams::chooseKind(int index)
{
    Pane& pane = m_panes[index];
    if (!pane.camera->address || !pane.camera->address->small() || pane.replay)
        return;
    const bool showsSmall = (pane.kind == StreamKind::Small) != !pane.next.isNull();
    if (showsSmall && pane.pump->frame())
        pane.smallSize = pane.pump->videoSize();
    const StreamKind wanted = pane.pump->isZoomed()
                                  ? StreamKind::Main
                                  : chooseStream(pane.pump->panePixels(), pane.smallSize, pane.kind);
    if (wanted == pane.kind)
        return;
    pane.kind = wanted;
    if (pane.next) {
        pane.next.clear();
        return;
    }
    pane.next = m_makeSource(index, *pane.camera, wanted);
    if (!pane.next)
        return;
    connect(pane.next.data(), &VideoSource::frameReady, this, &DeckStreams::takeNext, Qt::UniqueConnection);
}

/// The first picture of another stream is there.
void DeckStreams::takeNext()
{
    for (int i = 0; i < m_panes.size(); ++i) {
        Pane& pane = m_panes[i];
        if (!pane.next || pane.next.data() != sender())
            continue;
        if (pane.replay) {
            // Chosen anew once it is over.
            pane.kind = pane.kind == StreamKind::Small ? StreamKind::Main : StreamKind::Small;
            pane.next.clear();
            continue;
        }
        Q_EMIT stopped(i);
        pane.source = std::move(pane.next);
        pane.next.clear();
        connect(pane.source.data(), &VideoSource::stateChanged, this, &DeckStreams::sourceStateChanged,
                Qt::UniqueConnection);
        pane.pump->setSource(pane.source.data());
        Q_EMIT started(i);
        showState(i);
    }
    disconnect(static_cast<VideoSource*>(sender()), &VideoSource::frameReady, this, &DeckStreams::takeNext);
}
