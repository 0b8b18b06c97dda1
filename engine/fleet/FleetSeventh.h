#pragma once

class FleetDatabase;

/// Brings the tables of the shared index from their sixth version to the seventh. The path of its functions
/// is that of the moment.
bool makeSeventh(FleetDatabase& database);
