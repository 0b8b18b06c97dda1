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
                DrawPicture(painter, picture);
        }
        QLabel::paintEvent(event);
    }

private:
    /// In the device's pixels from one rounded edge to the other.
    void DrawPicture(QPainter& painter, const QImage& picture) const
    {
        QPoint offset;
        const QPaintDevice* device = redirected(&offset);
        const double ratio = device ? device->devicePixelRatioF() : 1;
        const QRectF place(QPointF(-offset) * ratio, QSizeF(size()) * ratio);
        const QSize pixels(qRound(place.right()) - qRound(place.left()),
                           qRound(place.bottom()) - qRound(place.top()));
        painter.scale(1 / ratio, 1 / ratio);
        painter.drawImage(QPointF(qRound(place.left()), qRound(place.top())) - place.topLeft(),
                          picture.scaled(pixels, Qt::IgnoreAspectRatio, Qt::FastTransformation));
        painter.resetTransform();
    }

    void DrawText(QPainter& painter) const
    {
        QFont font = painter.font();
        font.setPixelSize(height() / 8);
        painter.setFont(font);
        painter.setPen(Qt::red);
        painter.drawText(0, 0, width(), height(), 4228, text);
    }
};
