#pragma once

#include "DeckTab.h"

/// Recorded video.
class PlaybackTab : public DeckTab
{
    Q_OBJECT

public:
    PlaybackTab(CameraHub* hub, EventLog* log);

protected:
    void FirstShown() override;
};
