#include "tabs/TourPlan.h"

#include <QSettings>

TourPlan TourPlan::load()
{
    const QSettings kept;
    TourPlan plan;
    plan.showsViews = kept.value("tour/showsViews", plan.showsViews).toBool();
    plan.cameras = kept.value("tour/cameras").toStringList();
    plan.views = kept.value("tour/views").toStringList();
    plan.panes = qBound(1, kept.value("tour/panes", plan.panes).toInt(), 64);
    plan.seconds = qBound(LeastSeconds, kept.value("tour/seconds", plan.seconds).toInt(), MostSeconds);
    plan.pauses = kept.value("tour/pauses", plan.pauses).toBool();
    return plan;
}

void TourPlan::save() const
{
    QSettings kept;
    kept.setValue("tour/showsViews", showsViews);
    kept.setValue("tour/cameras", cameras);
    kept.setValue("tour/views", views);
    kept.setValue("tour/panes", panes);
    kept.setValue("tour/seconds", seconds);
    kept.setValue("tour/pauses", pauses);
}
