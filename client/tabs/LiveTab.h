#pragma once

#include "tabs/DeckTab.h"

class InstantPlayback;

/// The live wall. A view, which camera lies in which pane, is kept for the next start; panes are exchanged by
/// dragging one onto another.
class LiveTab : public DeckTab
{
    Q_OBJECT

public:
    LiveTab(const CameraList& cameras, CameraHub* hub, EventLog* log);

protected:
    /// Brings back the view that was last saved; without one, lays the cameras into the panes in order.
    void firstShown() override;
    void buttonClicked(int pane, Btn_type_EX button) override;

private Q_SLOTS:
    /// A camera that is new comes into the first free pane.
    void takeNewCamera(const CameraRecord* camera);
    void exchangePanes(int source, int target);
    void keepLayout(int count);

private:
    void saveView();
    void replay(int pane);

    const CameraList& m_cameras;
    InstantPlayback* m_instant;
    int m_layout = 0;
};
