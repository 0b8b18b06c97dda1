#pragma once

class FleetDatabase;

/// Brings the tables of the shared index from their fourth version to the fifth. The path of its functions is
/// that of the moment.
bool makeFifth(FleetDatabase& database);
