#pragma once

#include "source/VideoSource.h"

#include <QPointer>

class CPaneDeck;

/// Shows a source's frames in one pane of a deck.
class FramePump : public QObject
{
    Q_OBJECT

public:
    /// The deck may go at any time.
    FramePump(CPaneDeck* deck, int pane, QObject* parent = nullptr);
    /// Takes the frame off the pane.
    ~FramePump() override;

    /// Shows this source's frames from now on; null for none. The last frame stays until the next one or
    /// clear().
    void setSource(VideoSource* source);

    /// Shows one frame that comes from elsewhere; null clears. May be deleted in the deck's signals.
    void show(FramePtr frame);
    void clear();
    /// What the pane shows; null for nothing.
    const FramePtr& frame() const { return m_frame; }
    /// The size of the video that it shows a frame of; empty for none.
    QSize videoSize() const;

Q_SIGNALS:
    void videoSizeChanged();

private:
    void takeFrame();

    QPointer<CPaneDeck> m_deck;
    int m_pane;
    QPointer<VideoSource> m_source;
    FramePtr m_frame;
};
