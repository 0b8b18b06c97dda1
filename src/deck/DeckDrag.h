#pragma once

class CPaneDeck;
class QEvent;

/// The drag of one pane of a deck onto another.
struct DeckDrag
{
    /// Follows it through a mouse event of a pane. The deck may be gone when the call returns.
    static void Follow(CPaneDeck* deck, QEvent* event);

private:
    static int PaneUnderCursor(CPaneDeck* deck, QEvent* event);
    static void Arm(CPaneDeck* deck, int index);
    static void Drop(CPaneDeck* deck, int index);
    static void SetCursorZone(CPaneDeck* deck, int index, int zone);
};
