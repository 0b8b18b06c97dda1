#include "Stage.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
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

QImage Stage::CameraPicture(int camera)
{
    QImage image(640, 360, QImage::Format_RGB888);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const int light = 235 - camera * 53 % 180;
    const int horizon = 190 + camera * 37 % 60;
    QLinearGradient sky(0, 0, 0, horizon);
    sky.setColorAt(0, QColor::fromHsv(210, 20, light));
    sky.setColorAt(1, QColor::fromHsv(30 + camera * 11 % 30, 60, light * 4 / 5));
    painter.fillRect(0, 0, 640, horizon, sky);
    painter.fillRect(0, horizon, 640, 360, QColor::fromHsv(100, 20, light / 3));
    for (int x = -camera * 31 % 90; x < 640; x += 92) {
        const int height = 60 + (x + camera * 91 + 900) * 7 % 110;
        painter.fillRect(x, horizon - height, 88, height,
                         QColor::fromHsv(215, 35, light / 4 + (x + 900) % 50));
    }
    const int vanishing = 200 + camera * 67 % 240;
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromHsv(220, 10, light * 2 / 5));
    painter.drawPolygon(
        QPolygon({{vanishing - 30, horizon}, {vanishing + 30, horizon}, {640, 400}, {0, 400}}));
    painter.setPen(QPen(QColor::fromHsv(45, 25, light), 4, Qt::DashLine));
    painter.drawLine(vanishing, horizon + 4, 320, 360);
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
