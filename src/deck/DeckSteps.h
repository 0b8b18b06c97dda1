#pragma once

#include <QList>

class CPaneDeck;
class CVideoWidget;
class QEvent;
class QRect;

/// What several of a deck's operations do in common, kept out of the exported class.
struct DeckSteps
{
    /// The panes of the current page, in index order; none before the first layout is selected.
    static QList<CVideoWidget*> Page(const CPaneDeck& deck);

    static void HidePage(const CPaneDeck& deck);

    /// Puts a layout of `panes` cells in force and shows its first page. The active pane stays if its index
    /// is below `activeBelow`. The deck may be gone when the call returns.
    static void SelectLayout(CPaneDeck* deck, int type, int no, int panes, int activeBelow);

    /// Goes to a page that must exist. The deck may be gone when the call returns.
    static void GoToPage(CPaneDeck* deck, int page);

    /// Hides the page and lets the pane fill the display rectangle.
    static void Enlarge(CPaneDeck* deck, CVideoWidget* pane);

    /// Shows every pane of the page in its cell.
    static void Split(CPaneDeck* deck);

    /// Makes the deck a frameless window of that geometry. The deck may be gone when the call returns.
    static void EnterFullScreen(CPaneDeck* deck, const QRect& screen);

    /// Puts the deck back into its parent and ends mouse message mode. The deck may be gone when the call
    /// returns.
    static void LeaveFullScreen(CPaneDeck* deck);

    /// Follows a drag of one pane onto another through a mouse event of a pane. The deck may be gone when the
    /// call returns.
    static void FollowDrag(CPaneDeck* deck, QEvent* event);

private:
    static int PaneUnderCursor(CPaneDeck* deck, QEvent* event);
    static void Arm(CPaneDeck* deck, int index);
    static void Drop(CPaneDeck* deck, int index);
    static void SetCursorZone(CPaneDeck* deck, int index, int zone);
};
