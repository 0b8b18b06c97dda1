#pragma once

#include <QRectF>
#include <QVector>
#include <QWidget>

/// Shows zones over a pane's picture. The pointer goes through it.
class ZoneOverlay : public QWidget
{
    Q_OBJECT

public:
    explicit ZoneOverlay(QWidget* picture);

    /// In parts of the picture, 0 to 1; hidden for none.
    void setZones(const QVector<QRectF>& zones);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* m_picture;
    QVector<QRectF> m_zones;
};
