#pragma once

#include <QPointer>
#include <QWidget>

class QMyLabel;

/// Shows the frame of a pane in use in its label's place. A label whose updates are off is painted by Qt only
/// as long as nothing else overlaps what is to be painted, so this lies over it then. The mouse doesn't see
/// it.
class FrameCover : public QWidget
{
    Q_OBJECT

public:
    /// A sibling of the label, hidden, above it and right below `pAbove`.
    FrameCover(QMyLabel* pLabel, QWidget* pAbove);

    /// Covers the label as long as it has a frame, or not at all.
    void SetInUse(bool bInUse);

    /// The label has another frame or none any more; `bPaint` tells whether another one is painted.
    void ChangeFrame(bool bPaint);

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;
    bool event(QEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;

private:
    QPointer<QMyLabel> m_pLabel;
    bool m_bInUse = false;
};
