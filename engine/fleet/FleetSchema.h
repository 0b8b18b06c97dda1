#pragma once

class FleetDatabase;

/// The tables of the shared index, and how those of earlier versions become them.
///
/// Recordings and marks lie in a partition for each month, made when its first row comes, so that what is too
/// old goes by dropping tables: drop_old_months(), for recorders, drops those before the first recording that
/// any archive still has, drop_months() of the database's owner any. `change` has the last change of each
/// kind of each camera, numbered in the order of the commits, and notified; who has been away goes on from
/// the last number it saw. Three roles without a login carry the rights: panedeck_viewer, panedeck_operator
/// and panedeck_recorder.
namespace FleetSchema {

constexpr int Version = 7;

enum class State
{
    Current,
    Older, ///< or none at all; migrate() makes it current
    Newer, ///< made by a later version of the program
    Failed ///< the database tells why
};

State check(FleetDatabase& database);

/// Brings the tables to this version, each version whole or not at all. Wants a role that may make roles and
/// owns the database.
State migrate(FleetDatabase& database);

} // namespace FleetSchema
