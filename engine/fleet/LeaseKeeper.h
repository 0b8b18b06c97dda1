#pragma once

#include "fleet/FleetRecorder.h"
#include "fleet/LeaseTable.h"

#include <QBasicTimer>
#include <QObject>
#include <QSet>

/// Holds a recorder's leases of cameras, once a second. While the server is away the last ones hold: what is
/// recorded goes on. Lives in a thread of its own.
class LeaseKeeper : public QObject
{
    Q_OBJECT

public:
    LeaseKeeper(const FleetAddress& address, const FleetRecorder& recorder);

    /// In its own thread, as all of these.
    void start();
    void setReady(const QString& camera);
    /// Gives everything back if the server answers, and ends.
    void end();

Q_SIGNALS:
    /// What is to be recorded from now on, all of it.
    void camerasChanged(const QVector<LeasedCamera>& cameras);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void step();
    void tellPlaying(const QVector<LeasedCamera>& cameras);

    FleetDatabase m_database;
    FleetRecorder m_recorder;
    LeaseTable m_leases;
    std::optional<QString> m_known; ///< what was told last
    QSet<QString> m_playing;        ///< cameras of it that are recorded here
    QBasicTimer m_timer;
};
