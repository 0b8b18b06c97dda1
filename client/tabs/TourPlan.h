#pragma once

#include <QStringList>

/// What a tour shows, in what order and for how long: cameras, dealt out to the panes of a layout, or whole
/// views, one after the other.
struct TourPlan
{
    static constexpr int LeastSeconds = 1;
    static constexpr int MostSeconds = 3600;

    bool showsViews = false;
    QStringList cameras; ///< ids; none for all there are
    QStringList views;   ///< names
    int panes = 4;       ///< of the layout for cameras
    int seconds = 5;     ///< how long each is shown
    bool pauses = true;  ///< what is under the pointer stays

    /// The one that was last kept.
    static TourPlan load();
    void save() const;
};
