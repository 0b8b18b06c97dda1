#pragma once

#include "fleet/DeskNews.h"

#include <QHash>
#include <QObject>

#include <map>
#include <vector>

class FleetDesk;
class FleetSite;
class CameraList;
class ViewList;
struct DeckView;

/// Brings the views that all desks of a site share into the client's list, and back what is changed there.
/// Custom layouts stay with each desk: a view of one is shown in the usual layout elsewhere.
class SharedViews : public QObject
{
    Q_OBJECT

public:
    /// All must outlive it.
    SharedViews(FleetDesk* desk, const CameraList& cameras, ViewList* views, QObject* parent);

private:
    /// Where a view of the list lies.
    struct Place
    {
        FleetSite* site = nullptr;
        QString name;
    };

    void publish();
    void showRights();
    bool change(const QString& before, const DeckView* view, QString* error);
    FleetSite* siteFor(const DeckView& view) const;

    std::vector<FleetSite*> m_sites;
    std::map<FleetSite*, QVector<SharedView>> m_kept;
    QHash<QString, Place> m_places; ///< by the names that the list has
    ViewList* m_views;
};
