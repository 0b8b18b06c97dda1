#include "views/SharedViews.h"

#include "cameras/CameraList.h"
#include "cameras/FleetDesk.h"
#include "common/EngineText.h"
#include "common/Words.h"
#include "views/ViewList.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

SharedViews::SharedViews(FleetDesk* desk, const CameraList& cameras, ViewList* views, QObject* parent)
    : QObject(parent), m_sites(desk->fleetSites()), m_views(views)
{
    views->shareBy([this](const QString& before, const DeckView* view, QString* error) {
        return change(before, view, error);
    });
    for (FleetSite* site : m_sites)
        connect(site->reader().get(), &FleetReader::viewsRead, this,
                [this, site](const QVector<SharedView>& kept) {
                    m_kept[site] = kept;
                    publish();
                });
    // A view may tell of cameras that come later.
    connect(&cameras, &CameraList::sorted, this, &SharedViews::publish);
    connect(desk, &FleetDesk::rightsChanged, this, &SharedViews::showRights);
}

void SharedViews::showRights()
{
    m_views->setSharing(std::any_of(m_sites.begin(), m_sites.end(),
                                    [](const FleetSite* site) { return site->rights().changesViews; }));
}

void SharedViews::publish()
{
    m_places.clear();
    QVector<DeckView> all;
    for (FleetSite* site : m_sites) {
        for (const SharedView& one : qAsConst(m_kept[site])) {
            DeckView view;
            if (!view.fromJson(QJsonDocument::fromJson(one.description.toUtf8()).object()))
                continue;
            view.name = m_places.contains(one.name) ? one.name + " (" + site->names().site() + ')' : one.name;
            for (PaneView& pane : view.panes)
                pane.camera = site->shownId(pane.camera);
            m_places.insert(view.name, {site, one.name});
            all.append(view);
        }
    }
    m_views->setShared(all);
}

/// The one whose cameras it shows first.
FleetSite* SharedViews::siteFor(const DeckView& view) const
{
    for (const PaneView& pane : view.panes) {
        for (FleetSite* site : m_sites) {
            if (site->has(pane.camera))
                return site;
        }
    }
    return m_sites.front();
}

bool SharedViews::change(const QString& before, const DeckView* view, QString* error)
{
    const Place place = m_places.value(before);
    FleetSite* site = place.site ? place.site : view ? siteFor(*view) : nullptr;
    if (!site)
        return true;
    if (!site->rights().changesViews) {
        *error = word("your role may not change shared views");
        return false;
    }
    SharedView kept{place.name, QString()};
    if (view) {
        DeckView own = *view;
        for (PaneView& pane : own.panes)
            pane.camera = site->keptId(pane.camera);
        if (!place.site || view->name != before)
            kept.name = view->name;
        own.name = kept.name;
        kept.description = QString::fromUtf8(QJsonDocument(own.toJson()).toJson(QJsonDocument::Compact));
    }
    const bool isDone = site->reader()->changeView(kept, place.name, error);
    *error = engineText(*error);
    return isDone;
}
