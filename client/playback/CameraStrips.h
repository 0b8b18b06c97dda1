#pragma once

#include <QWidget>

class DayRows;
class ScalePlace;
struct DayRow;

/// A strip for each camera shown, below the deck's scale and in line with it, zoomed and panned as it is. The
/// wheel and a drag turn and pan them all; a click makes a camera's pane the active one, a double click seeks
/// too.
class CameraStrips : public QWidget
{
    Q_OBJECT

public:
    CameraStrips(const DayRows* rows, ScalePlace* place);

    /// A line through all strips: the second of the day that is shown; below 0 for none.
    void showSecond(int second);
    QSize sizeHint() const override;
    /// Where a row's strip lies.
    QRect rowRect(int row) const;

Q_SIGNALS:
    void rowChosen(int row);
    void secondChosen(int second);

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
    int rowAt(int y) const;

    const DayRows* m_rows;
    ScalePlace* m_place;
    int m_second = -1;
    QPoint m_press;
    bool m_isDragging = false;
};
