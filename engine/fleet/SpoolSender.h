#pragma once

#include "fleet/FleetDatabase.h"
#include "fleet/FleetRecorder.h"
#include "fleet/LeaseTable.h"
#include "fleet/SpoolReader.h"

#include <QBasicTimer>
#include <QDeadlineTimer>
#include <QObject>

/// Delivers what an archive's index knows to the shared one, in order and each row once. While that one is
/// away everything waits in the archive's own. Lives in a thread of its own, as the server may keep it
/// waiting.
class SpoolSender : public QObject
{
    Q_OBJECT

public:
    /// `indexPath` is that of the archive's index.
    SpoolSender(const FleetAddress& address, const FleetRecorder& recorder, const QString& indexPath);

    /// In its own thread.
    void start();
    /// Delivers what waits if the server answers, and ends.
    void end();

Q_SIGNALS:
    /// One line, once for each trouble; empty when all goes well again.
    void troubled(const QString& reason);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    bool isReady();
    bool tellsAll();
    std::optional<bool> isAllKnown(const SpoolReader::Batch& batch);
    bool renew();
    bool sendSome();
    bool prune();
    bool deliver(const QJsonArray& rows, const QString& spool);
    void tell(const QString& reason);

    FleetDatabase m_database;
    FleetRecorder m_recorder;
    LeaseTable m_leases;
    SpoolReader m_spool;
    QString m_lastSpool; ///< the one that is delivered
    qint64 m_last = 0;   ///< the number up to which the server knows it
    QString m_told;
    QDeadlineTimer m_keepsMonths;
    QBasicTimer m_timer;
};
