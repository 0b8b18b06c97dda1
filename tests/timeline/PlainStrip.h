#pragma once

#include <QPainter>
#include <QVector>

/// The strip drawn the plain way, a rectangle for each run of the table: what the strip must look like.
inline void DrawPlainStrip(QPainter& painter, const QVector<unsigned int>& table, int width, int height)
{
    const int count = table.size();
    QColor color(table.first());
    int start = 0;
    int left = 0;
    int right = 0;
    for (int i = 0; i < count; ++i) {
        const QColor next(table.at(i));
        if (next == color && i != count - 1)
            continue;
        const int end = i + 1;
        const int runLeft = int(qint64(width) * start / count);
        const int runRight = int(qint64(width) * end / count);
        if (left == 0 || runRight > right) {
            left = qMax(right, runLeft);
            right = runRight == left ? runRight + 1 : runRight;
            painter.setPen(color);
            painter.setBrush(color);
            painter.drawRect(left, 0, right - left, height);
        }
        color = next;
        start = end;
    }
}
