#pragma once

#include "panes/PictureCover.h"

#include <QRectF>
#include <QVector>

/// Shows zones over a pane's picture.
class ZoneOverlay : public PictureCover
{
    Q_OBJECT

public:
    explicit ZoneOverlay(QWidget* picture);

    /// In parts of the picture, 0 to 1; hidden for none.
    void setZones(const QVector<QRectF>& zones);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVector<QRectF> m_zones;
};
