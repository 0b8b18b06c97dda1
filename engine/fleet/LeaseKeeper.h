#pragma once

#include "fleet/FleetRecorder.h"
#include "fleet/LeaseTable.h"
#include "fleet/RecorderHealth.h"

#include <QBasicTimer>
#include <QObject>
#include <QSet>

/// Holds a recorder's leases of cameras, once a second. While the server is away the last ones hold: what is
/// recorded goes on. Lives in a thread of its own.
class LeaseKeeper : public QObject
{
    Q_OBJECT

public:
    /// `directory` is that of the archive.
    LeaseKeeper(const FleetAddress& address, const FleetRecorder& recorder, const QString& directory);

    /// In its own thread, as all of these.
    void start();
    void setReady(const QString& camera);
    /// See RecorderHealth: these go to other recorders if there are any that can take them.
    void setStalled(const QStringList& cameras, bool isDiskInDoubt);
    /// Gives everything back if the server answers, and ends.
    void end();

Q_SIGNALS:
    /// What is to be recorded from now on, all of it.
    void camerasChanged(const QVector<LeasedCamera>& cameras);
    /// One line for people.
    void told(const QString& line);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void step();
    bool join();
    void look();
    void takeCameras(const QVector<LeasedCamera>& cameras);
    void tellElsewhere();

    FleetDatabase m_database;
    FleetRecorder m_recorder;
    LeaseTable m_leases;
    RecorderHealth m_health;
    bool m_isElsewhere = false;     ///< what was told last of another program with this recorder's number
    QStringList m_held;             ///< cameras that it has to record
    QSet<QString> m_unready;        ///< those of them that nobody knows yet to be recorded here
    std::optional<QString> m_known; ///< what was told last
    QSet<QString> m_playing;        ///< cameras of it that are recorded here
    QBasicTimer m_timer;
    QBasicTimer m_soon; ///< runs while something waits to be told before the next step
};
