#pragma once

#include "panes/ZoomView.h"

#include <QImage>
#include <QPointer>
#include <QWidget>

/// A small map in the lower corner of a pane's picture: the whole of it, and in it the part that is shown. It
/// hides the pixels under it. The mouse doesn't see it.
class PaneMap : public QWidget
{
    Q_OBJECT

public:
    /// `picture` is the pane's widget.
    explicit PaneMap(QWidget* picture);

    /// Shows the map, or hides it if nothing is zoomed or the picture has no room for it.
    void show(const ZoomView& view, const QImage& whole);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void place();

    QPointer<QWidget> m_picture;
    ZoomView m_view;
    QImage m_whole;
};
