#pragma once

#include <QFrame>
#include <QSize>

class QLabel;
class ScalePlace;

/// The time under the pointer, or that of the dragged thumb, above the scale.
class ScaleTip : public QFrame
{
    Q_OBJECT

public:
    static constexpr QSize PictureSize{176, 99};

    /// It lies over `tab`, which holds the scale.
    ScaleTip(ScalePlace* place, QWidget* tab);

    /// A picture of the time at which the thumb is; null where nothing was recorded. It goes with the drag.
    void showPicture(const QImage& picture);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showTime(int second);
    void showDrag(int second);
    void placeAt(int second);

    ScalePlace* m_place;
    QLabel* m_picture;
    QLabel* m_time;
};
