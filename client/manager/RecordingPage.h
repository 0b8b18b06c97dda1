#pragma once

#include "cameras/CameraDescription.h"

#include <QWidget>

class CPaneDeck;
class QComboBox;
class QLabel;
class QPushButton;
class QSlider;
class ZoneOverlay;

/// When a camera is recorded and what of its picture counts as motion: its zones are drawn on the picture of
/// a deck's one pane.
class RecordingPage : public QWidget
{
    Q_OBJECT

public:
    RecordingPage(const CameraDescription& about, CPaneDeck* picture, QWidget* parent = nullptr);

    void fill(CameraDescription* about) const;

    static QString nameOf(CameraDescription::Recording recording);

protected:
    /// The pointer draws while the page shows.
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void addZone(int pane, QPoint from, QPoint to);
    void setZones(const QVector<QRectF>& zones);

    CPaneDeck* m_picture;
    ZoneOverlay* m_overlay;
    QComboBox* m_recording;
    QSlider* m_sensitivity;
    QLabel* m_count;
    QPushButton* m_clear;
    QVector<QRectF> m_zones;
};
