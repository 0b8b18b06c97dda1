#pragma once

class FleetDatabase;

/// Brings the tables of the shared index from their first version to the second. The path of its functions is
/// that of the moment.
bool makeSecond(FleetDatabase& database);
