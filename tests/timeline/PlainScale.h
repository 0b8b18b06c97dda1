#pragma once

#include <QPainter>

/// The scale of a day drawn the plain way, every tick and label of it, row by row as an operator reads them.
namespace PlainScale {

inline int Row(double ratio)
{
    int row = 0;
    for (double from : {1.7, 3.4, 5.3, 8.0, 16.0, 192.0})
        row += ratio >= from ? 1 : 0;
    return row;
}

inline int Intervals(int row)
{
    const int intervals[] = {48, 120, 144, 288, 1440, 1440, 2880};
    return intervals[row];
}

inline bool IsMajor(int row, int i)
{
    const int every[] = {4, 5, 3, 3, 5, 5, 2};
    return i % every[row] == 0;
}

/// The label of a tick; empty if it has none.
inline QString Label(int row, int i)
{
    if (!IsMajor(row, i) || (row == 4 && i % 10 != 0))
        return QString();
    const int minute = i * 1440 / Intervals(row);
    return QString("%1:%2").arg(minute / 60).arg(minute % 60, 2, 10, QChar('0'));
}

inline void Draw(QPainter& painter, int width, double ratio)
{
    QFont font;
    font.setFamily(QString::fromUtf8("微软雅黑"));
    painter.setFont(font);
    const int row = Row(ratio);
    const double step = double(width) / Intervals(row);
    for (int i = 0; i <= Intervals(row); ++i) {
        const double x = i * step;
        const int top = IsMajor(row, i) ? (row == 5 ? 16 : 14) : (row == 5 ? 19 : 17);
        painter.drawLine(int(x), top, int(x), 33);
        const QString label = Label(row, i);
        if (!label.isEmpty())
            painter.drawText(QRect(int(x - 18), 0, 35, 20), 132, label);
    }
}

} // namespace PlainScale
