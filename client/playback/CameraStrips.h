#pragma once

#include <QWidget>

class DayRows;
class ScalePlace;

/// A strip for each camera shown, below the deck's scale and in line with it, zoomed and panned as it is. The
/// wheel and a drag turn and pan them all; a click makes a camera's pane the active one, a double click seeks
/// too.
class CameraStrips : public QWidget
{
    Q_OBJECT

public:
    CameraStrips(const DayRows* rows, ScalePlace* place);

    /// A stretch of the day between two handles, seconds; none if both are the same. It may reach beyond the
    /// day.
    void showStretch(int from, int to);
    /// A line through all strips: the second of the day that is shown; below 0 for none.
    void showSecond(int second);
    QSize sizeHint() const override;
    /// Where a row's strip lies.
    QRect rowRect(int row) const;

Q_SIGNALS:
    void rowChosen(int row);
    void secondChosen(int second);
    /// The user drags one of the handles.
    void stretchDragged(int from, int to);

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void takeRows();
    void paintRow(QPainter& painter, int row, const QRect& day) const;
    void paintName(QPainter& painter, int row) const;
    void paintStretch(QPainter& painter, const QRect& day) const;
    int rowAt(int y) const;
    int* handleAt(int globalX);

    const DayRows* m_rows;
    ScalePlace* m_place;
    int m_second = -1;
    QPoint m_press;
    bool m_isDragging = false;
    int m_from = 0; ///< the handles, see showStretch()
    int m_to = 0;
    int* m_handle = nullptr; ///< the one that is held
};
