#pragma once

#include "fleet/FleetAddress.h"

/// One of the places whose cameras a client shows: what it is called, and where its index lies.
struct SiteAddress
{
    /// From `[NAME=]postgresql://…`; without a name it is the server's, or the database's. Nothing for what
    /// is no such address, with one line in `error`.
    static std::optional<SiteAddress> parse(const QString& text, QString* error);

    QString name; ///< without slash, as it begins the groups of its cameras
    FleetAddress index;
};
