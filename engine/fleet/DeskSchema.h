#pragma once

class FleetDatabase;

/// What desks share besides the cameras and their recordings: who turns which camera, and the views that are
/// meant for all. New in version 3 of FleetSchema.
namespace DeskSchema {

/// Adds its tables to those of version 2.
bool make(FleetDatabase& database);

} // namespace DeskSchema
