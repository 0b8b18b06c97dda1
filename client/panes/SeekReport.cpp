#include "panes/SeekReport.h"

#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "panes/PaneClips.h"
#include "source/VideoSource.h"

#include <CPaneDeck.h>

SeekReport::SeekReport(CPaneDeck* deck, DeckStreams* streams, QObject* parent)
    : QObject(parent), m_deck(deck), m_streams(streams)
{
    connect(streams, &DeckStreams::started, this, &SeekReport::watch);
}

void SeekReport::watch(int pane)
{
    const VideoSource* source = m_streams->sourceAt(pane);
    connect(source, &VideoSource::frameReady, this, [this, source] { takeFrame(*source); });
}

void SeekReport::takeFrame(const VideoSource& source)
{
    const FramePtr frame = source.frame();
    if (!m_sinceSeek.isValid() || &source != m_streams->sourceAt(m_deck->GetCurrentWnd()) || !frame)
        return;
    Q_EMIT told(word("shows %1 %2 ms after the seek")
                    .arg(PaneClips::clockText(frame->wallMs))
                    .arg(m_sinceSeek.elapsed()));
    m_sinceSeek.invalidate();
}
