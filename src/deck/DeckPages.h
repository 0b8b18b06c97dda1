#pragma once

#include <QList>

class CPaneDeck;
class CVideoWidget;

/// A deck's way from layout to layout and page to page, and what its page shows.
struct DeckPages
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
};
