#pragma once

#include "tabs/TourPlan.h"

#include <QDialog>

class CameraList;
class QCheckBox;
class QComboBox;
class QListWidget;
class QRadioButton;
class QSpinBox;
class ViewList;

/// Asks what a tour shows and for how long.
class TourDialog : public QDialog
{
    Q_OBJECT

public:
    TourDialog(const TourPlan& plan, const CameraList& cameras, const ViewList& views, QWidget* parent);

    TourPlan plan() const;

private:
    void fillCameras(const CameraList& cameras, const QStringList& chosen);
    void fillViews(const ViewList& views, const QStringList& chosen);
    void layOut();

    QRadioButton* m_byCamera;
    QRadioButton* m_byView;
    QListWidget* m_cameras;
    QListWidget* m_views;
    QComboBox* m_panes;
    QSpinBox* m_seconds;
    QCheckBox* m_pauses;
};
