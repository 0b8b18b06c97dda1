#include "cameras/PtzLeases.h"

#include "common/EngineText.h"
#include "common/Words.h"

#include <QTimerEvent>

#include <algorithm>

namespace {

constexpr int LookMs = 500;
/// A key that repeats itself asks the server no more than once a second.
constexpr int FreshMs = 14'000;
/// A lease that is held is prolonged when it has less than this left.
constexpr int LeastLeftMs = 10'000;
/// Of what the server has told how long ago nobody knows.
constexpr int OnTheWayMs = 1000;

qint64 nowMs()
{
    return QDeadlineTimer::current().deadline();
}

} // namespace

PtzLeases::PtzLeases(const std::vector<FleetSite*>& sites) : m_sites(sites)
{
    for (FleetSite* site : m_sites) {
        const FleetReader* reader = site->reader().get();
        connect(reader, &FleetReader::leasesRead, this,
                [this, site](const QVector<PtzLease>& leases) { takeList(site, leases); });
        connect(reader, &FleetReader::leaseAnswered, this,
                [this, site](const PtzAnswer& answer) { takeAnswer(site, answer); });
    }
}

FleetSite* PtzLeases::siteOf(const QString& camera) const
{
    const auto has = [&](const FleetSite* site) { return site->has(camera); };
    const auto found = std::find_if(m_sites.begin(), m_sites.end(), has);
    return found == m_sites.end() ? nullptr : *found;
}

const PtzLeases::Lease* PtzLeases::leaseOf(const QString& camera) const
{
    const auto found = m_leases.constFind(camera);
    return found == m_leases.cend() || found->until.hasExpired() ? nullptr : &*found;
}

bool PtzLeases::isMine(const QString& camera) const
{
    const Lease* lease = leaseOf(camera);
    return lease && lease->isMine;
}

QString PtzLeases::holderOf(const QString& camera) const
{
    const Lease* lease = leaseOf(camera);
    return lease && !lease->isMine ? lease->holder : QString();
}

QString PtzLeases::askerOf(const QString& camera) const
{
    const Lease* lease = leaseOf(camera);
    return lease && lease->isMine ? lease->asking : QString();
}

bool PtzLeases::isAsked(const QString& camera) const
{
    const Lease* lease = leaseOf(camera);
    return lease && lease->isAskedByMe;
}

void PtzLeases::take(const QString& camera)
{
    FleetSite* site = siteOf(camera);
    if (!site)
        return;
    const QString& away = site->reader()->away();
    if (!away.isEmpty()) {
        Q_EMIT refused(camera, word("the shared index is away: %1").arg(engineText(away)));
        return;
    }
    if (!site->rights().steers) {
        Q_EMIT refused(camera, word("your role may not turn cameras"));
        return;
    }
    const Lease* lease = leaseOf(camera);
    const bool isFresh = lease && lease->isMine && lease->until.remainingTime() > FreshMs;
    if (m_wanted.contains(camera) || isFresh)
        return;
    // How long the lease is left is reckoned from before the question.
    m_wanted.insert(camera, nowMs());
    site->reader()->takePtz(site->keptId(camera));
}

void PtzLeases::hold(const QString& camera)
{
    m_held.insert(camera);
}

void PtzLeases::ask(const QString& camera)
{
    if (FleetSite* site = siteOf(camera))
        site->reader()->askPtz(site->keptId(camera));
}

/// It stands still before another one has it.
void PtzLeases::give(const QString& camera)
{
    FleetSite* site = siteOf(camera);
    if (!site)
        return;
    if (isMine(camera)) {
        m_leases.remove(camera);
        Q_EMIT lost(camera);
    }
    site->reader()->givePtz(site->keptId(camera));
    Q_EMIT changed();
}

void PtzLeases::keep(const QString& camera)
{
    if (FleetSite* site = siteOf(camera))
        site->reader()->keepPtz(site->keptId(camera));
}

void PtzLeases::takeList(const FleetSite* site, const QVector<PtzLease>& leases)
{
    const QHash<QString, Lease> before = m_leases;
    for (auto one = m_leases.begin(); one != m_leases.end();)
        one = one->site == site ? m_leases.erase(one) : std::next(one);
    for (const PtzLease& one : leases) {
        const QString camera = site->shownId(one.camera);
        const Lease old = before.value(camera);
        QDeadlineTimer until(qMax<qint64>(0, one.leftMs - (one.isMine ? OnTheWayMs : 0)));
        // What came of this desk's own question is known better.
        if (one.isMine && old.isMine)
            until = qMax(until, old.until);
        m_leases.insert(camera, {site, one.holder, one.asking, one.isMine, one.isAskedByMe, until});
    }
    for (auto one = before.cbegin(); one != before.cend(); ++one) {
        if (one->isMine && !isMine(one.key()))
            Q_EMIT lost(one.key());
    }
    const QHash<QString, Lease> now = m_leases;
    for (auto one = now.cbegin(); one != now.cend(); ++one) {
        const Lease old = before.value(one.key());
        if (one->isMine && !one->asking.isEmpty() && old.asking != one->asking)
            Q_EMIT asked(one.key());
        if (one->isMine && old.isAskedByMe && !old.isMine)
            Q_EMIT given(one.key());
    }
    if (!m_leases.isEmpty() && !m_timer.isActive())
        m_timer.start(LookMs, this);
    Q_EMIT changed();
}

void PtzLeases::takeAnswer(const FleetSite* site, const PtzAnswer& answer)
{
    const QString camera = site->shownId(answer.camera);
    const qint64 wanted = m_wanted.take(camera);
    if (answer.isMine) {
        Lease& lease = m_leases[camera];
        lease.site = site;
        lease.isMine = true;
        lease.until = QDeadlineTimer(qMax<qint64>(0, wanted + answer.leftMs - nowMs()));
        if (!m_timer.isActive())
            m_timer.start(LookMs, this);
        Q_EMIT granted(camera);
        return;
    }
    if (answer.refusal.isEmpty())
        takeOther(site, camera, answer);
    Q_EMIT refused(camera, engineText(answer.refusal));
}

void PtzLeases::takeOther(const FleetSite* site, const QString& camera, const PtzAnswer& answer)
{
    const Lease before = m_leases.value(camera);
    m_leases.insert(camera, {site, answer.holder, QString(), false, before.isAskedByMe && !before.isMine,
                             QDeadlineTimer(answer.leftMs)});
    if (before.isMine)
        Q_EMIT lost(camera);
    Q_EMIT changed();
}

void PtzLeases::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    endOver();
    const QSet<QString> held = m_held;
    for (const QString& camera : held) {
        const Lease* lease = leaseOf(camera);
        if (lease && lease->isMine && lease->until.remainingTime() < LeastLeftMs &&
            !m_wanted.contains(camera))
            take(camera);
    }
    if (m_leases.isEmpty())
        m_timer.stop();
}

void PtzLeases::endOver()
{
    QStringList mine;
    bool isNew = false;
    for (auto one = m_leases.begin(); one != m_leases.end();) {
        if (!one->until.hasExpired()) {
            ++one;
            continue;
        }
        isNew = true;
        if (one->isMine)
            mine.append(one.key());
        one = m_leases.erase(one);
    }
    for (const QString& camera : qAsConst(mine))
        Q_EMIT lost(camera);
    if (isNew)
        Q_EMIT changed();
}
