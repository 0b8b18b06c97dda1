#pragma once

#include "fleet/FleetAddress.h"

#include <QProcess>
#include <QTemporaryDir>

#include <memory>

/// A PostgreSQL of its own in a temporary directory, reached by a socket there, and gone with the object.
/// Never one that happens to be there. It refuses to run as root, and is then run as `nobody`.
class PgCluster
{
public:
    PgCluster();
    ~PgCluster();

    /// Why there is none; empty if it runs.
    const QString& trouble() const { return m_trouble; }
    FleetAddress address(const QString& user = "owner", const QString& database = "postgres") const;
    /// Stops the server at once, and starts it again.
    void stop();
    void start();

private:
    bool run(const QString& program, const QStringList& arguments);

    QTemporaryDir m_directory;
    QString m_programs;
    QString m_trouble;
};
