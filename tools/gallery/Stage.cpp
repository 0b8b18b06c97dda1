#include "Stage.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

QPixmap Stage::Shot(QWidget* widget)
{
    widget->setAttribute(Qt::WA_DontShowOnScreen);
    widget->show();
    // Two rounds: the scale places its thumb in its first paint.
    for (int i = 0; i < 2; ++i) {
        QApplication::processEvents();
        widget->grab();
    }
    return widget->grab();
}

void Stage::Hover(QWidget* button)
{
    button->setAttribute(Qt::WA_UnderMouse);
    const QPointF middle = button->rect().center();
    QMouseEvent move(QEvent::MouseMove, middle, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(button, &move);
    button->update();
}

QPixmap Stage::Column(const QVector<QPixmap>& pictures, int spacing)
{
    const double ratio = qApp->devicePixelRatio();
    int width = 0;
    int height = spacing;
    for (const QPixmap& picture : pictures) {
        width = qMax(width, qRound(picture.width() / ratio));
        height += qRound(picture.height() / ratio) + spacing;
    }
    QPixmap column(QSize(width + 2 * spacing, height) * ratio);
    column.setDevicePixelRatio(ratio);
    column.fill(qApp->palette().color(QPalette::Window));
    QPainter painter(&column);
    int y = spacing;
    for (const QPixmap& picture : pictures) {
        painter.drawPixmap(spacing, y, picture);
        y += qRound(picture.height() / ratio) + spacing;
    }
    return column;
}

QImage Stage::CameraPicture(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB888);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(width / 320.0, height / 180.0);
    QLinearGradient sky(0, 0, 0, 110);
    sky.setColorAt(0, "#e9eef4");
    sky.setColorAt(1, "#b9a58f");
    painter.fillRect(0, 0, 320, 180, sky);
    for (int x = 0; x < 320; x += 46)
        painter.fillRect(x, 50 + (x * 7) % 40, 44, 130, QColor::fromHsv(215, 40, 70 + (x * 3) % 60));
    QPainterPath road;
    road.moveTo(130, 110);
    road.lineTo(190, 110);
    road.lineTo(330, 190);
    road.lineTo(-10, 190);
    painter.fillPath(road, QColor("#55585c"));
    painter.setPen(QPen(QColor("#d8d4c8"), 2, Qt::DashLine));
    painter.drawLine(160, 112, 160, 180);
    return image;
}

QVector<unsigned int> Stage::Recordings()
{
    QVector<unsigned int> day(86400, qRgb(128, 128, 128));
    const auto fill = [&day](int from, int to, QRgb color) {
        for (int second = from * 60; second < to * 60; ++second)
            day[second] = color;
    };
    fill(0, 1080, qRgb(76, 135, 200));
    for (int hour = 6; hour < 18; ++hour)
        fill(hour * 60 + hour * 2, hour * 60 + hour * 2 + 9, qRgb(235, 170, 60));
    fill(702, 717, qRgb(216, 30, 30));
    fill(840, 872, qRgb(128, 128, 128));
    return day;
}
