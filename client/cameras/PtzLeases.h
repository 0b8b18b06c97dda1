#pragma once

#include "cameras/FleetSite.h"

#include <QBasicTimer>
#include <QDeadlineTimer>
#include <QHash>
#include <QSet>

/// Who turns which camera of the sites: only who has a camera's lease does. It ends by itself some seconds
/// after the last gesture, by the servers' clocks. Cameras go by the ids that they have here.
class PtzLeases : public QObject
{
    Q_OBJECT

public:
    /// The sites must outlive it.
    explicit PtzLeases(const std::vector<FleetSite*>& sites);

    /// True while nobody but this desk may turn the camera.
    bool isMine(const QString& camera) const;
    /// Who else has it, and who asks for what this desk has; empty for nobody.
    QString holderOf(const QString& camera) const;
    QString askerOf(const QString& camera) const;
    /// This desk has asked who has it.
    bool isAsked(const QString& camera) const;

    /// Wants the lease, or keeps it for longer: granted() or refused() comes, the latter at once while the
    /// camera's index is away.
    void take(const QString& camera);
    /// Keeps it while the camera is turned, however long that takes.
    void hold(const QString& camera);
    void letGo(const QString& camera) { m_held.remove(camera); }
    void ask(const QString& camera);
    /// To who asks for it, or to whoever comes.
    void give(const QString& camera);
    void keep(const QString& camera);

Q_SIGNALS:
    void granted(const QString& camera);
    /// Who had it gave it to this desk.
    void given(const QString& camera);
    /// `reason` is in the user's words.
    void refused(const QString& camera, const QString& reason);
    /// It was this desk's, and is no more: whoever turns it stops now.
    void lost(const QString& camera);
    /// Somebody asks for what this desk has.
    void asked(const QString& camera);
    /// Anything of one or several is new.
    void changed();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    struct Lease
    {
        const FleetSite* site = nullptr;
        QString holder;
        QString asking;
        bool isMine = false;
        bool isAskedByMe = false;
        QDeadlineTimer until{0};
    };

    FleetSite* siteOf(const QString& camera) const;
    const Lease* leaseOf(const QString& camera) const;
    void takeList(const FleetSite* site, const QVector<PtzLease>& leases);
    void takeAnswer(const FleetSite* site, const PtzAnswer& answer);
    void takeOther(const FleetSite* site, const QString& camera, const PtzAnswer& answer);
    void endOver();

    std::vector<FleetSite*> m_sites;
    QHash<QString, Lease> m_leases;
    QHash<QString, qint64> m_wanted; ///< when, by the clock that never goes back
    QSet<QString> m_held;
    QBasicTimer m_timer; ///< runs while there are leases
};
