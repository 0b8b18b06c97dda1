#pragma once

#include "deck/PaneDeckTypes.h"
#include "layouts/SplitLayout.h"

#include <QList>
#include <QRect>

/// Where the toolbar and the panes of a deck may lie, in the deck's coordinates.
struct DeckGeometry
{
    QRect toolBar; ///< of no use in a deck without a toolbar
    QRect display; ///< all pane geometry is worked out from it
};

/// The state of a deck that its geometry follows from.
struct DeckState
{
    int kind = WND_TYPE_MONITOR;
    bool fullScreen = false;
    int showMode = WND_SHOW_SPLIT;
    int playbackBarHeight = 0;
};

/// Toolbar and display rectangle of a deck of that size. In full screen the toolbar's rectangle is (0, 0, 0,
/// 0).
DeckGeometry GeometryOfDeck(const DeckState& state, const QSize& size);

/// The rectangle of a place on the page, one pixel inside its cell. Only the display's size counts: the
/// origin is always (0, 0). A place that the layout has no cell for gets an empty rectangle.
QRect PlaceRect(const SplitLayout& layout, int place, const QSize& display);

/// The first of the rectangles that holds the point, edges included; -1 if none does.
int PlaceUnder(const QList<QRect>& places, const QPoint& point);

/// Whole pages that a number of panes gives; panes left over lie on no page. 0 while a page has no panes.
int PageCount(int panes, int panesOnPage);
