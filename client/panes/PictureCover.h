#pragma once

#include <QPointer>
#include <QWidget>

/// Lies over a pane's picture, or a part of it, and goes with it. The mouse and the keys don't see it. Hidden
/// at first.
class PictureCover : public QWidget
{
    Q_OBJECT

public:
    /// `picture` is the pane's widget.
    explicit PictureCover(QWidget* picture);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    /// Null once it has gone.
    const QWidget* picture() const { return m_picture; }

    /// The picture has a new place or size: goes over all of it.
    virtual void place();

private:
    QPointer<QWidget> m_picture;
};
