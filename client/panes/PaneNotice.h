#pragma once

#include <QBasicTimer>
#include <QPointer>
#include <QWidget>

class VideoSource;

/// What an operator must know about the picture of a pane before trusting it: that it is late, or that it
/// stands still because none has come for some seconds; then it is dimmed. Lies over the picture; the mouse
/// doesn't see it.
class PaneNotice : public QWidget
{
    Q_OBJECT

public:
    /// `picture` is the pane's widget.
    explicit PaneNotice(QWidget* picture);

    /// Tells about this source from now on; null for nothing. Call it again when the source's state is new.
    void follow(VideoSource* source);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void update();
    QString text() const;

    QPointer<QWidget> m_picture;
    QPointer<VideoSource> m_source;
    QString m_text;
    bool m_isDimmed = false;
    QBasicTimer m_timer; ///< runs while the seconds are counted
};
