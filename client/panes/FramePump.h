#pragma once

#include "source/VideoSource.h"

#include <QPointer>
#include <QWidget>

/// Brings a source's frames into one pane's label, by the label's meta-object alone, and keeps each frame
/// until the label has the next one. A label whose updates are off, as it is on a pane in use, gets its frame
/// painted all the same.
class FramePump : public QObject
{
    Q_OBJECT

public:
    /// `label` is what the deck's GetHWND gave; it may go at any time.
    explicit FramePump(QObject* label, QObject* parent = nullptr);
    /// Takes the frame off the label.
    ~FramePump() override;

    /// Shows this source's frames from now on; null for none. The last frame stays until the next one or
    /// clear().
    void setSource(VideoSource* source);

    /// Shows one frame that comes from elsewhere; null clears.
    void show(FramePtr frame);
    void clear();
    /// What the label shows; null for nothing.
    const FramePtr& frame() const { return m_frame; }

private Q_SLOTS:
    void takeFrame();

private:
    void handOver(const FramePtr& frame);

    QPointer<QWidget> m_label;
    QPointer<VideoSource> m_source;
    FramePtr m_frame;
    QSize m_size;
};
