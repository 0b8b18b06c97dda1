#pragma once

#include "panes/PictureCover.h"

/// What stands in the corner of a pane's picture.
struct PaneLabel
{
    QString name;
    bool isRecorded = false; ///< by the operator's button
    bool isArchived = false; ///< by the archive
    bool isHeard = false;
    QString state; ///< what the operator must know of the picture; empty for all is well

    bool isEmpty() const
    {
        return name.isEmpty() && !isRecorded && !isArchived && !isHeard && state.isEmpty();
    }
    bool operator==(const PaneLabel& other) const;
};

/// A small plate in the lower corner of a pane's picture, readable on any. It hides the pixels under it, so
/// that a new picture doesn't paint it anew.
class PaneStrip : public PictureCover
{
    Q_OBJECT

public:
    /// `picture` is the pane's widget.
    explicit PaneStrip(QWidget* picture);

    void setLabel(const PaneLabel& label);

    /// How high strips of such a picture are.
    static int heightFor(const QSize& picture);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void place() override;
    int marksWidth() const;
    void paintMarks(QPainter& painter, int x) const;

    PaneLabel m_label;
};
