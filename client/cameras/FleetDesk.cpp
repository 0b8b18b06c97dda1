#include "cameras/FleetDesk.h"

#include "cameras/CameraList.h"
#include "cameras/RelayAccess.h"
#include "common/Words.h"

#include <algorithm>
#include <map>

namespace {

std::vector<std::unique_ptr<FleetSite>> sitesOf(const QVector<SiteAddress>& addresses)
{
    using Rank = SiteNames::Rank;
    std::vector<std::unique_ptr<FleetSite>> sites;
    for (const SiteAddress& one : addresses) {
        const Rank rank = addresses.size() == 1 ? Rank::Only : sites.empty() ? Rank::First : Rank::Other;
        sites.push_back(std::make_unique<FleetSite>(one.index, SiteNames(one.name, rank)));
    }
    return sites;
}

std::vector<SiteReader::Site> readersOf(const std::vector<std::unique_ptr<FleetSite>>& sites)
{
    std::vector<SiteReader::Site> readers;
    for (const auto& site : sites)
        readers.push_back({site->names(), site->reader()});
    return readers;
}

} // namespace

FleetDesk::FleetDesk(const QVector<SiteAddress>& sites, CameraList* cameras, const QString& camerasPath)
    : m_sites(sitesOf(sites)), m_reader(readersOf(m_sites)), m_leases(fleetSites()), m_cameras(cameras)
{
    cameras->keepBy(
        [this](const QVector<CameraDescription>& list, QString* error) { return keep(list, error); },
        camerasPath);
    cameras->setRights(
        [this](const QString& id) { return (id.isEmpty() ? rights() : rightsOf(id)).changesCameras; });
    connect(this, &FleetDesk::rightsChanged, cameras, &CameraList::rightsChanged);
    for (const auto& site : m_sites)
        follow(site.get());
}

void FleetDesk::follow(FleetSite* site)
{
    const FleetReader* reader = site->reader().get();
    connect(reader, &FleetReader::camerasRead, this,
            [this, site](const QVector<LeasedCamera>& cameras) { takeCameras(site, cameras); });
    connect(reader, &FleetReader::rightsRead, this, [this, site](const FleetRights& rights) {
        site->setRights(rights);
        Q_EMIT rightsChanged();
    });
    connect(reader, &FleetReader::awayChanged, this, [this, site] { tellAway(*site); });
    connect(reader, &FleetReader::changed, this, [this, site](const QString& camera) {
        Q_EMIT changed(camera.isEmpty() ? camera : site->names().keyOf(camera));
    });
    connect(reader, &FleetReader::marked, this,
            [this, site](const QString& camera, const QVector<FleetMark>& marks) {
                Q_EMIT marked(site->names().keyOf(camera), marks);
            });
}

ReaderMaker FleetDesk::readerMaker() const
{
    std::vector<std::pair<SiteNames, ReaderMaker>> makers;
    for (const auto& site : m_sites)
        makers.push_back({site->names(), site->reader()->readerMaker()});
    return [makers] {
        std::vector<SiteReader::Site> readers;
        for (const auto& [names, make] : makers)
            readers.push_back({names, make()});
        return std::make_unique<SiteReader>(std::move(readers));
    };
}

std::vector<FleetSite*> FleetDesk::fleetSites() const
{
    std::vector<FleetSite*> all;
    for (const auto& site : m_sites)
        all.push_back(site.get());
    return all;
}

std::optional<SourceAddress> FleetDesk::relayOf(const CameraDescription& camera, bool isSmall,
                                                const Login& login) const
{
    const FleetSite* site = siteFor(camera);
    const bool isStream = (isSmall ? camera.smallUrl : camera.mainUrl).startsWith("rtsp");
    return isStream ? RelayAccess::address(site->liveOf(camera.id), site->keptId(camera.id), isSmall, login)
                    : std::nullopt;
}

FleetRights FleetDesk::rightsOf(const QString& camera) const
{
    CameraDescription one;
    one.id = camera;
    return siteFor(one)->rights();
}

FleetRights FleetDesk::rights() const
{
    FleetRights all{false, false, false, false};
    for (const auto& site : m_sites) {
        const FleetRights& one = site->rights();
        all = {all.changesCameras || one.changesCameras, all.acknowledges || one.acknowledges,
               all.steers || one.steers, all.changesViews || one.changesViews};
    }
    return all;
}

QVector<SiteState> FleetDesk::sites() const
{
    QVector<SiteState> states;
    for (const auto& site : m_sites)
        states.append({site->names().site(), site->reader()->away()});
    return states.size() > 1 ? states : QVector<SiteState>();
}

QString FleetDesk::troubleOf(const FleetSite& site) const
{
    const QString& away = site.reader()->away();
    return m_sites.size() > 1 ? word("%1 gives no answer: %2").arg(site.names().site(), away)
                              : word("the shared index is away: %1").arg(away);
}

QString FleetDesk::trouble() const
{
    QStringList lines;
    for (const auto& site : m_sites) {
        if (!site->reader()->away().isEmpty())
            lines.append(troubleOf(*site));
    }
    return lines.join('\n');
}

void FleetDesk::acknowledge(const QString& key, qint64 startMs)
{
    for (const auto& site : m_sites) {
        const QString camera = site->names().archiveNameOf(key);
        if (!camera.isEmpty())
            site->reader()->acknowledge(camera, startMs);
    }
}

void FleetDesk::takeCameras(FleetSite* site, const QVector<LeasedCamera>& cameras)
{
    const QStringList strange = site->take(cameras);
    for (const QString& name : strange)
        Q_EMIT told(word("the description of %1 can't be understood").arg(name));
    QVector<CameraDescription> all;
    SiteNames::Taken taken;
    for (const auto& one : m_sites)
        all += one->show(&taken);
    m_cameras->takeKept(all);
}

/// The one that has the camera; of a new one that whose name its group begins with, or the first.
FleetSite* FleetDesk::siteFor(const CameraDescription& camera) const
{
    const auto has = [&](const auto& site) { return site->has(camera.id); };
    const auto isMeant = [&](const auto& site) { return site->names().hasItsPlace(camera); };
    auto found = std::find_if(m_sites.begin(), m_sites.end(), has);
    if (found == m_sites.end())
        found = std::find_if(m_sites.begin(), m_sites.end(), isMeant);
    return found == m_sites.end() ? m_sites.front().get() : found->get();
}

/// Only what was changed here is written: others may be at work on other cameras. Of several sites one may
/// refuse what another has taken, which then shows as it is.
bool FleetDesk::keep(const QVector<CameraDescription>& cameras, QString* error)
{
    const QVector<CameraDescription> before = m_cameras->descriptions();
    std::map<FleetSite*, QVector<CameraDescription>> changed;
    std::map<FleetSite*, QStringList> gone;
    QSet<QString> there;
    for (const CameraDescription& camera : cameras) {
        there.insert(camera.id);
        if (std::find(before.begin(), before.end(), camera) == before.end())
            changed[siteFor(camera)].append(camera);
    }
    for (const CameraDescription& camera : before) {
        if (!there.contains(camera.id))
            gone[siteFor(camera)].append(camera.id);
    }
    for (const auto& site : m_sites) {
        const auto& news = changed[site.get()];
        const auto& lost = gone[site.get()];
        if ((!news.isEmpty() || !lost.isEmpty()) && !site->keep(news, lost, error))
            return false;
    }
    return true;
}

void FleetDesk::tellAway(const FleetSite& site)
{
    const bool isAway = !site.reader()->away().isEmpty();
    const bool wasAway = m_wereAway.contains(&site);
    if (isAway) {
        m_wereAway.insert(&site);
        Q_EMIT told(troubleOf(site));
    } else if (wasAway) {
        m_wereAway.remove(&site);
        Q_EMIT told(m_sites.size() > 1 ? word("%1 answers again").arg(site.names().site())
                                       : word("the shared index is back"));
    }
    Q_EMIT sitesChanged();
}
