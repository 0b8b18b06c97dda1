#include "views/OldView.h"

#include "cameras/CameraList.h"
#include "views/ViewList.h"

#include <QSettings>

#include <algorithm>

namespace {

constexpr char CamerasKey[] = "view/cameras";
constexpr char LayoutKey[] = "view/layout";
constexpr int UsualLayout = 4;

int layoutOf(int count)
{
    const auto& counts = DeckView::NormalLayouts;
    const auto* found = std::find(std::begin(counts), std::end(counts), count);
    return found == std::end(counts) ? UsualLayout : int(found - counts);
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
