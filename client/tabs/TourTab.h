#pragma once

#include "tabs/DeckTab.h"
#include "tabs/TourPlan.h"

#include <QVector>

class ViewList;
class VisibleTimer;
struct DeckView;

/// Tours: each pane steps through its channels, or the deck through views, each shown for the time that the
/// plan says. A camera dropped on a pane joins its tour. Tours stand still while the tab is hidden.
class TourTab : public DeckTab
{
    Q_OBJECT

public:
    TourTab(const CameraList& cameras, CameraHub* hub, EventLog* log, const ViewList* views);

    void showCamera(const CameraRecord& camera, int pane) override;

protected:
    /// Begins the tour of the plan that was last kept.
    void firstShown() override;
    void cameraGoes(const CameraRecord* camera) override;

private:
    struct Tour
    {
        QVector<const CameraRecord*> channels;
        int next = 0;
    };

    void askForPlan();
    void begin(const TourPlan& plan);
    void dealOut();
    void stepAll();
    void step(int pane);
    void stepView();
    void showView(const DeckView& view);
    bool isHeld(int pane) const;

    const CameraList& m_cameras;
    const ViewList* m_views;
    VisibleTimer* m_timer;
    TourPlan m_plan;
    QVector<Tour> m_tours;
    int m_nextView = 0;
};
