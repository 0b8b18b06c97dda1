#pragma once

#include "timeline/ScaleView.h"
#include "timeline/ThumbTrack.h"
#include "timeline/TimeScale.h"

#include <QFrame>

class CShapeWidget;
class CTimerLine;

/// The scale of a day with the colour strip and the thumb. It is zoomed by being made wider than its parent,
/// which clips it, and panned by its place in the parent; inside, x runs from 0 to the scale's own width at
/// every zoom. Values are seconds since midnight, 0 to 86400, when the total is 86400.
class CTimerSlider : public QFrame
{
    Q_OBJECT

public:
    explicit CTimerSlider(QWidget* parent);

    /// Makes the strip and sets the total. To be called once, before any other operation. In mode 0 values
    /// cover the whole total; in any other the slider works on one hour of 3600.
    void InitRange(int nTotal, int nMode);

    /// Passes a table with an entry for each unit of the total to the strip.
    void SetColors(const unsigned int* pColors);

    /// Sets the value without moving the thumb.
    void SetCurValue(int nNum) { m_nValue = nNum; }
    int GetCurValue() const { return m_nValue; }
    int GetTotal() const { return m_nTotal; }

    bool IsThumbPressed() const;

    /// Zooms and pans as the wheel and a drag would, which keep the parent covered and the zoom in its range.
    void SetView(int nX, int nWidth);

public Q_SLOTS:
    void slot_BtnMoved(int x, int y);
    void slot_BtnRelease(int x, int y);

    /// Sets the value and places the thumb for it; emits nothing. A value beyond the total lies beyond the
    /// scale.
    void slot_SetCurNum(int nNum);

    /// A double click on the strip; in spite of its name nNum is the x of the click.
    void slot_MouseDbClice(int nNum);

Q_SIGNALS:
    /// Each step of a drag, and a double click before sig_MouseDbCLick.
    void sig_SliderMoved(int nNum);
    void sig_SliderReleased(int nNum);
    void sig_MouseDbCLick(int nNum);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    TimeScale Scale() const;
    ThumbTrack Track() const { return {m_dRight, m_dThumbMinX, m_dThumbWidth, m_nTotal}; }
    void PaintTicks(QPainter& painter, const TimeScale& scale, const QRect& exposed) const;
    void PlaceParts();
    int ThumbPlace(double fMinX) const;
    void ValueFromPoint(int x, int y);
    void FollowParent();
    void SetZoom(double fBaseWidth, double fZoomWidth);
    void PanTo(int x, int y);
    void Show(const ScaleView& view);

    CTimerLine* m_pLine = nullptr;
    CShapeWidget* m_pThumb = nullptr;
    int m_nMode = 0;
    double m_dThumbMinX = 0;
    double m_dRight = 0;
    double m_dThumbY = 0;
    bool m_bRelayout = false;
    QPoint m_ptThumb;
    int m_nTotal = 0;
    int m_nValue = 0;
    double m_dThumbWidth = 0;
    double m_dBaseWidth = 0;
    double m_dZoomWidth = 0;
    double m_dScaleEnd = 0;
    bool m_bPanning = false;
    QPoint m_ptPanStart;
    QPoint m_ptPanGlobal;
    int m_nPan = 0;
};
