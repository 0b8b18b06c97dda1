#pragma once

#include "panes/ZoomView.h"

#include <QRect>
#include <QString>
#include <QVector>

class QJsonObject;

/// What lies in a pane of a view.
struct PaneView
{
    QString camera; ///< its id; empty for none
    QString name;   ///< what it was called, for when it is gone
    int scale = 1;  ///< a WndScase
    ZoomView zoom;

    bool operator==(const PaneView& other) const;
};

/// How a live deck is laid out and which cameras it shows: what the user keeps under a name.
struct DeckView
{
    static constexpr int MostPanes = 64;
    /// The panes of the normal layouts, in the order of their numbers.
    static constexpr int NormalLayouts[] = {1, 4, 6, 8, 9, 16, 25, 36, 49, 64};
    static constexpr int MostLetters = 60; ///< of a name

    QString name;
    bool isCustom = false; ///< the layout, as CPaneDeck::GetLayout() tells it
    int layout = 0;
    int page = 0;
    QVector<PaneView> panes; ///< those behind the last are empty

    bool operator==(const DeckView& other) const;

    QJsonObject toJson() const;
    /// False for anything that toJson() doesn't give.
    bool fromJson(const QJsonObject& json);
};

/// A second window with a deck.
struct WindowView
{
    QRect place;
    QString screen; ///< its name
    bool isFull = false;
    DeckView view;

    QJsonObject toJson() const;
    bool fromJson(const QJsonObject& json);
};
