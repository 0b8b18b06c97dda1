#include "PgCluster.h"

#include <QDir>
#include <QUrl>

#include <unistd.h>

/// A socket's path must be short, and an address takes none with a space, as TMPDIR may have.
PgCluster::PgCluster() : m_directory("/tmp/pgXXXXXX")
{
    const QStringList versions = QDir("/usr/lib/postgresql").entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    if (versions.isEmpty()) {
        m_trouble = "PostgreSQL is not installed";
        return;
    }
    m_programs = "/usr/lib/postgresql/" + versions.last() + "/bin/";
    if (geteuid() == 0)
        QProcess::execute("chown", {"nobody", m_directory.path()});
    if (run("initdb", {"-D", "data", "-U", "owner", "-A", "trust", "-E", "UTF8", "--locale=C.UTF-8", "-N"}))
        start();
}

PgCluster::~PgCluster()
{
    stop();
    // What another user has made, that user removes.
    if (geteuid() == 0 && m_trouble.isEmpty())
        QProcess::execute("rm", {"-rf", m_directory.path()});
}

bool PgCluster::run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setWorkingDirectory(m_directory.path());
    process.setProcessChannelMode(QProcess::MergedChannels);
    // What the server inherits it holds open for ever.
    process.setStandardOutputFile(m_directory.path() + "/log", QIODevice::Append);
    const QStringList asUser{"--reuid=nobody", "--regid=nogroup", "--clear-groups", "--"};
    if (geteuid() == 0)
        process.start("setpriv", asUser + QStringList(m_programs + program) + arguments);
    else
        process.start(m_programs + program, arguments);
    const bool isDone = process.waitForFinished(60'000) && process.exitCode() == 0;
    if (!isDone) {
        m_trouble = program + " failed, see " + m_directory.path() + "/log";
        m_directory.setAutoRemove(false);
    }
    return isDone;
}

void PgCluster::start()
{
    run("pg_ctl", {"-D", "data", "-w", "-l", "server.log", "-o",
                   "-F -c listen_addresses= -c unix_socket_directories=" + m_directory.path(), "start"});
}

void PgCluster::stop()
{
    if (m_trouble.isEmpty())
        run("pg_ctl", {"-D", "data", "-m", "immediate", "-w", "stop"});
}

FleetAddress PgCluster::address(const QString& user, const QString& database) const
{
    QString error;
    return *FleetAddress::parse("postgresql://" + user + "@/" + database +
                                    "?host=" + QUrl::toPercentEncoding(m_directory.path()),
                                &error);
}
