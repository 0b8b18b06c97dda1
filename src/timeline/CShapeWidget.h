#pragma once

#include "common/HeldButton.h"

#include <QPoint>
#include <QString>
#include <QWidget>

/// The thumb of the scale: a widget cut to the outline of a picture, which the left button drags sideways.
class CShapeWidget : public QWidget
{
    Q_OBJECT

public:
    CShapeWidget(QWidget* parent, Qt::WindowFlags f);

    /// The range of the thumb's centre, in the parent's coordinates. Until it is set the centre can't leave x
    /// 0.
    void SetMoveRange(int nLeft, int nRight);

    /// The left button went down on the thumb and hasn't come up, and nothing has taken the mouse away since.
    bool IsPressed() const { return m_bPressed && m_heldButton.IsHeld(); }

Q_SIGNALS:
    /// The left button came up. The point is where the last drag left the thumb's top-left corner, in the
    /// parent's coordinates: (0, 0) before the first drag, and never the place that somebody else moved the
    /// thumb to.
    void sig_btnRelease(int x, int y);

    /// A step of a drag; the point is the thumb's new top-left corner in the parent's coordinates.
    void sig_btnMove(int x, int y);

public Q_SLOTS:
    /// Does nothing; the owner places the thumb.
    void slot_moveThumb(int x, int y);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void Drag();
    void LetGo();

    QPoint m_ptOrigin;
    QPoint m_ptLast;
    QPoint m_ptPress;
    QPoint m_ptCursor;
    int m_nLeft = 0;
    int m_nRight = 0;
    QString m_strPixmap;
    bool m_bPressed = false;
    HeldButton m_heldButton;
};
