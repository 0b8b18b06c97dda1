#pragma once

#include "tabs/DeckTab.h"

#include <QVector>

/// Tours: each pane steps through its channels, each shown for the dwell time. A camera dropped on a pane
/// joins its tour. Tours stand still while the tab is hidden.
class TourTab : public DeckTab
{
    Q_OBJECT

public:
    TourTab(const CameraList& cameras, CameraHub* hub, EventLog* log);

    void showCamera(const CameraRecord& camera, int pane) override;

protected:
    /// Deals the cameras out to the panes of the first page.
    void firstShown() override;
    void cameraGoes(const CameraRecord* camera) override;

private:
    struct Tour
    {
        QVector<const CameraRecord*> channels;
        int next = 0;
    };

    void stepAll();
    void step(int pane);

    const CameraList& m_cameras;
    QVector<Tour> m_tours;
};
