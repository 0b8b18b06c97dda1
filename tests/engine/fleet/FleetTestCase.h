#pragma once

#include "PgCluster.h"
#include "fleet/FleetDatabase.h"
#include "fleet/FleetRecorder.h"
#include "support/DeckTestCase.h"

#include <memory>

/// A test case on a throw-away server, each of whose functions finds tables of its own. One with an init() of
/// its own calls the one here from it.
class FleetTestCase : public DeckTestCase
{
    Q_OBJECT

protected Q_SLOTS:
    void initTestCase();
    void init();

protected:
    static QString newId();
    /// One that nobody knows yet.
    static FleetRecorder recorder(const QString& name) { return {newId(), name, "", "/archive/" + name}; }
    /// With the ids c00, c01 and so on.
    void addCameras(int count);

    /// Of a connection that its server has ended.
    const ExpectedWarning m_lost{"QSocketNotifier: Invalid socket"};
    std::unique_ptr<PgCluster> m_cluster;
    std::unique_ptr<FleetDatabase> m_database;
};
