#include "views/OldView.h"

#include "cameras/CameraList.h"
#include "views/ViewList.h"

#include <QSettings>

#include <algorithm>

namespace {

constexpr char CamerasKey[] = "view/cameras";
constexpr char LayoutKey[] = "view/layout";
constexpr int LayoutCounts[] = {1, 4, 6, 8, 9, 16, 25, 36, 49, 64};
constexpr int UsualLayout = 4;

int layoutOf(int count)
{
    const auto* found = std::find(std::begin(LayoutCounts), std::end(LayoutCounts), count);
    return found == std::end(LayoutCounts) ? UsualLayout : int(found - LayoutCounts);
}

} // namespace

void takeOldView(ViewList* views, const CameraList& cameras)
{
    QSettings settings;
    if (views->wasKept() || !settings.contains(CamerasKey))
        return;
    DeckView view;
    view.name = views->newName();
    view.layout = layoutOf(settings.value(LayoutKey).toInt());
    for (const QString& name : settings.value(CamerasKey).toStringList().mid(0, DeckView::MostPanes)) {
        const CameraRecord* camera = cameras.find(name);
        PaneView pane;
        pane.camera = camera ? camera->about.id : name;
        pane.name = name;
        view.panes.append(name.isEmpty() ? PaneView() : pane);
    }
    QString error;
    if (views->keep(view, &error) && views->setLast(view.name, &error))
        settings.remove("view");
}
