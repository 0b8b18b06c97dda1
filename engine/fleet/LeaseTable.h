#pragma once

#include "fleet/FleetCameras.h"
#include "fleet/FleetDatabase.h"

#include <QElapsedTimer>
#include <QStringList>
#include <QVector>

struct FleetRecorder;

/// Who of several recorders records which camera, by the server's clock. A recorder is alive for ten seconds
/// after each step(); a camera whose recorder is not goes to another one. Who has more than its share offers
/// the rest, and goes on recording each of it until its new recorder is ready. Who can't record a camera that
/// another one can gives it back, and rests from it for a minute or longer.
class LeaseTable
{
public:
    LeaseTable(FleetDatabase& database, const FleetRecorder& recorder)
        : m_database(database), m_recorder(recorder)
    {
    }

    /// Makes the recorder known, or what is new of it. False while another program with its number lives.
    bool join();
    /// Another program with this recorder's number was seen to live at the last join().
    bool isElsewhere() const { return m_isElsewhere; }
    /// The last join() found a program with this number of which nobody knows yet whether it lives: most
    /// likely this recorder's own run before.
    bool isAwaited() const { return m_other > 0 && !m_isElsewhere; }
    /// No other program has joined with this recorder's number since this one did.
    bool isHere();
    /// Goes on living, takes what is free or offered up to a fair share, and offers what is more; who is not
    /// well takes only what nobody else can record. False if the server did not do all of it.
    bool step(bool isWell = true);
    /// These can't be recorded here. Those that went to others; nothing if the server does not answer.
    std::optional<QStringList> giveBack(const QStringList& cameras);
    /// What is to be recorded; nothing while the server does not tell.
    std::optional<QVector<LeasedCamera>> cameras();
    /// This camera is recorded here from now on, and no longer where it was.
    bool setReady(const QString& camera);
    /// Gives everything back.
    bool leave();

private:
    struct Share
    {
        int held = 0;
        int fair = 0; ///< what each is to have, rounded up
    };

    bool tellLive();
    std::optional<Share> share();
    bool take(int count, bool offeredToo);
    bool offer(int count);
    bool letGo();
    void noteOther(qint64 aliveUntil);

    FleetDatabase& m_database;
    const FleetRecorder& m_recorder;
    qint64 m_other = 0; ///< until when another one lives, microseconds by the server's clock; 0 for none
    QElapsedTimer m_otherSince;
    bool m_isElsewhere = false;
};
