#include "PlaybackTab.h"

#include <CPaneDeck.h>

namespace {

constexpr int PaneCount = 64;
constexpr int FirstLayout = 4;

} // namespace

PlaybackTab::PlaybackTab(CameraHub* hub, EventLog* log)
    : DeckTab("playback", WND_TYPE_PLAYBACK, PaneCount, hub, log)
{
}

void PlaybackTab::FirstShown()
{
    Deck()->SetShowWndNo(FirstLayout);
}
