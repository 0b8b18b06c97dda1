#pragma once

#include <QPixmap>

/// Decks at work, as an operator sees them.
namespace DeckScenes {

QPixmap Live();
QPixmap Alarm();
QPixmap Playback();
QPixmap PlaybackFile();
QPixmap Tour();

/// The title bar over a playing pane, with what can be on it checked and not, and the mouse over a button.
QPixmap TitleBar();

/// The bar below a pane that plays back the recent past, playing and paused.
QPixmap InstantPlayback();

} // namespace DeckScenes
