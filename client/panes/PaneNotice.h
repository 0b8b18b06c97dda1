#pragma once

#include "panes/PictureCover.h"

#include <QBasicTimer>

class VideoSource;

/// What a pane says in place of its picture: what it waits for, why it was lost and when it is tried again,
/// or, over the last picture, which is dimmed, for how long none has come.
class PaneNotice : public PictureCover
{
    Q_OBJECT

public:
    /// `picture` is the pane's widget.
    explicit PaneNotice(QWidget* picture);

    /// Tells about this source from now on; null for nothing. Call it again when the source's state is new.
    /// `waiting` is what is told until it plays, or nothing.
    void follow(VideoSource* source, const QString& waiting);

protected:
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void update();
    QString text(bool inBrief) const;

    QPointer<VideoSource> m_source;
    QString m_waiting;
    QString m_text;
    QString m_brief; ///< where there is no room for it
    bool m_isDimmed = false;
    QBasicTimer m_timer; ///< runs while the seconds are counted
};
