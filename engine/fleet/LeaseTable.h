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
    bool isElsewhere() const { return m_otherSigns >= LivingSigns; }
    /// The last join() found a program with this number of which nobody knows yet whether it lives: most
    /// likely this recorder's own run before.
    bool isAwaited() const { return m_other > 0 && !isElsewhere(); }
    /// No other program has joined with this recorder's number since this one did.
    bool isHere();
    /// How it goes with a recorder.
    struct State
    {
        bool isWell = true;    ///< who is not takes only what nobody else can record
        QStringList stalled{}; ///< can't be recorded here, and goes to others that can
        QStringList playing{}; ///< is recorded here now, and no longer where it was
    };
    struct News
    {
        QStringList given;                            ///< what went to others
        std::optional<QVector<LeasedCamera>> cameras; ///< what is to be recorded, if that is news
    };
    /// Goes on living, takes what is free or offered up to a fair share, and offers what is more, in one
    /// round trip. Nothing if the server did not do all of it, or another program has this recorder's number.
    std::optional<News> step(const State& state);
    /// What is to be recorded; nothing while the server does not tell.
    std::optional<QVector<LeasedCamera>> cameras();
    /// The server could not be asked: nobody knows how another one with this recorder's number went
    /// meanwhile.
    void noteAway() { m_otherSince.start(); }
    /// Gives everything back.
    bool leave();

private:
    /// What one that was killed had asked for may be done still.
    static constexpr int LivingSigns = 2;

    bool tellLive();
    void noteOther(qint64 aliveUntil);

    FleetDatabase& m_database;
    const FleetRecorder& m_recorder;
    qint64 m_other = 0; ///< until when another one lives, microseconds by the server's clock; 0 for none
    QElapsedTimer m_otherSince;
    int m_otherSigns = 0; ///< how often that one was seen to go on
    QString m_digest;     ///< of the cameras that were told last
};
