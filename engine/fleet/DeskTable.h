#pragma once

#include "fleet/DeskNews.h"

#include <optional>

class FleetDatabase;

/// What desks share, in the shared index. `desk` is a UUID of who asks.
namespace DeskTable {

std::optional<QVector<PtzLease>> leases(FleetDatabase& database, const QString& desk);
/// Takes or prolongs the lease of a camera for this desk.
PtzAnswer take(FleetDatabase& database, const QString& desk, const QString& camera);
/// Lets the holder know that this desk wants it, gives it away or back, refuses to.
bool ask(FleetDatabase& database, const QString& desk, const QString& camera);
bool give(FleetDatabase& database, const QString& desk, const QString& camera);
bool keep(FleetDatabase& database, const QString& desk, const QString& camera);

std::optional<FleetRights> rights(FleetDatabase& database);

std::optional<QVector<SharedView>> views(FleetDatabase& database);
/// In place of the one of its name, or of `before`.
bool putView(FleetDatabase& database, const SharedView& view, const QString& before);
bool removeView(FleetDatabase& database, const QString& name);

} // namespace DeskTable
