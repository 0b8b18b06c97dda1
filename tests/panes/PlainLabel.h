#pragma once

#include <QLabel>
#include <QPainter>

/// The frame label painted the plain way, everything at every paint: what the label must look like.
class PlainLabel : public QLabel
{
public:
    using QLabel::QLabel;

    QImage frame;
    QImage background;
    QString text;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        {
            QPainter painter(this);
            if (!text.isEmpty() && height() >= 8)
                DrawText(painter);
            const QImage& picture = frame.isNull() && text.isEmpty() ? background : frame;
            if (!picture.isNull())
                painter.drawImage(0, 0,
                                  picture.scaled(size(), Qt::IgnoreAspectRatio, Qt::FastTransformation));
        }
        QLabel::paintEvent(event);
    }

private:
    void DrawText(QPainter& painter) const
    {
        QFont font = painter.font();
        font.setPixelSize(height() / 8);
        painter.setFont(font);
        painter.setPen(Qt::red);
        painter.drawText(0, 0, width(), height(), 4228, text);
    }
};
