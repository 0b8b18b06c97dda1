#pragma once

#include "fleet/LeaseKeeper.h"
#include "fleet/SpoolSender.h"

class QThread;

/// A recorder's part in a fleet: what it is to record comes from the shared index, and what its archive's
/// index knows goes there, each in a thread of its own, whatever the server does.
class FleetLink : public QObject
{
    Q_OBJECT

public:
    FleetLink(const FleetAddress& address, const FleetRecorder& recorder, const QString& indexPath,
              QObject* parent = nullptr);
    /// Gives its cameras back and delivers what waits, if the server answers within a few seconds.
    ~FleetLink() override;

    /// This camera is recorded here now.
    void setReady(const QString& camera);
    /// These can't be recorded here now, all of them; the disk is in doubt if packets of any come all the
    /// same.
    void setStalled(const QStringList& cameras, bool isDiskInDoubt);

Q_SIGNALS:
    /// What is to be recorded from now on, all of it.
    void camerasChanged(const QVector<LeasedCamera>& cameras);
    /// One line, once for each trouble; empty when all goes well again.
    void troubled(const QString& reason);
    /// One line for people.
    void told(const QString& line);

private:
    QThread* m_sending;
    QThread* m_leasing;
    SpoolSender* m_sender;
    LeaseKeeper* m_keeper;
};

/// The number of an archive among those of a fleet, for good; made at the first call. Empty if it can't be
/// kept.
QString archiveId(const QString& directory);
