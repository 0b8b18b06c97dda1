#pragma once

#include "panes/ZoomView.h"
#include "source/VideoSource.h"

#include <QPointer>

#include <memory>

class CPaneDeck;
class PartMaker;

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
    /// Shows that part of this frame and of all that follow, from the picture's own pixels.
    void setZoom(const ZoomView& zoom);
    bool isZoomed() const { return !m_zoom.isWhole(); }
    /// What the pane shows; null for nothing.
    const FramePtr& frame() const { return m_frame; }
    /// The size of the video that it shows a frame of; empty for none.
    QSize videoSize() const;
    /// How many pixels of the screen the pane has; none once the deck has gone.
    QSize panePixels() const;

Q_SIGNALS:
    void videoSizeChanged();

private:
    void takeFrame();
    void paint();
    void showPart(const FramePtr& part);

    QPointer<CPaneDeck> m_deck;
    int m_pane;
    QPointer<VideoSource> m_source;
    FramePtr m_frame;
    ZoomView m_zoom;
    std::unique_ptr<PartMaker> m_parts; ///< once it was zoomed
};
