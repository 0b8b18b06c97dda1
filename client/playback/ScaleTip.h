#pragma once

#include <QFrame>

class QLabel;
class ScalePlace;

/// The time under the pointer, or that of the dragged thumb, above the scale.
class ScaleTip : public QFrame
{
    Q_OBJECT

public:
    /// It lies over `tab`, which holds the scale.
    ScaleTip(ScalePlace* place, QWidget* tab);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showTime(int second, const QPoint& global);
    void place(int globalX);

    ScalePlace* m_place;
    QLabel* m_time;
};
