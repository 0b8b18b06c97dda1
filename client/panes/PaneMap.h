#pragma once

#include "panes/PictureCover.h"
#include "panes/ZoomView.h"

#include <QImage>

/// A small map in the lower corner of a pane's picture: the whole of it, and in it the part that is shown. It
/// hides the pixels under it.
class PaneMap : public PictureCover
{
    Q_OBJECT

public:
    /// `picture` is the pane's widget.
    explicit PaneMap(QWidget* picture);

    /// Shows the map, or hides it if nothing is zoomed or the picture has no room for it.
    void show(const ZoomView& view, const QImage& whole);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void place() override;

    ZoomView m_view;
    QImage m_whole;
};
