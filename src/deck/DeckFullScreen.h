#pragma once

class CPaneDeck;
class QRect;

/// A deck's way out of the application's window onto a whole screen, and back. The deck may be gone when one
/// of the calls returns.
struct DeckFullScreen
{
    /// Makes the deck a frameless window of that geometry.
    static void Enter(CPaneDeck* deck, const QRect& screen);

    /// Puts the deck back into its parent and ends mouse message mode.
    static void Leave(CPaneDeck* deck);

    /// Tells the application from the event loop, when all that belongs to it has been done.
    static void TellLater(CPaneDeck* deck, bool full);
};
