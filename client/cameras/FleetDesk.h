#pragma once

#include "cameras/PtzLeases.h"
#include "cameras/SiteReader.h"
#include "common/SiteAddress.h"

class CameraList;

/// What a client tells of a site.
struct SiteState
{
    QString name;
    QString away; ///< why its index is away, one line; empty when it is there

    bool operator==(const SiteState& other) const { return name == other.name && away == other.away; }
};

/// A client's part in fleets: its cameras are those of the shared indexes, where what is changed here goes,
/// and its recordings those that all their recorders have told. A site whose index is away keeps back no
/// other one. Cameras go by the keys of SiteNames.
class FleetDesk : public QObject
{
    Q_OBJECT

public:
    /// The list must outlive this. Passwords are kept beside the user's own list.
    FleetDesk(const QVector<SiteAddress>& sites, CameraList* cameras, const QString& camerasPath);

    RecordingReader* reader() { return &m_reader; }
    /// For a reader in another thread.
    ReaderMaker readerMaker() const;

    /// The sites in their order; none where there is but one index, which nobody has to tell from others.
    QVector<SiteState> sites() const;
    /// Which indexes are away and why, in the user's words, a line each; empty when all are there.
    QString trouble() const;

    std::vector<FleetSite*> fleetSites() const;
    PtzLeases* leases() { return &m_leases; }
    /// A camera, or its smaller stream, as the relay has it that its site names, for who logs in so; none for
    /// a camera that no relay has.
    std::optional<SourceAddress> relayOf(const CameraDescription& camera, bool isSmall,
                                         const Login& login) const;
    /// What this login may do with a camera, and with any of some site.
    FleetRights rightsOf(const QString& camera) const;
    FleetRights rights() const;

    /// As FleetReader's.
    void acknowledge(const QString& key, qint64 startMs);

Q_SIGNALS:
    /// As FleetReader's.
    void changed(const QString& key);
    void marked(const QString& key, const QVector<FleetMark>& marks);
    /// sites() or trouble() is new.
    void sitesChanged();
    void rightsChanged();
    /// For the log, one line.
    void told(const QString& line);

private:
    void follow(FleetSite* site);
    void takeCameras(FleetSite* site, const QVector<LeasedCamera>& cameras);
    void tellAway(const FleetSite& site);
    QString troubleOf(const FleetSite& site) const;
    bool keep(const QVector<CameraDescription>& cameras, QString* error);
    FleetSite* siteFor(const CameraDescription& camera) const;

    std::vector<std::unique_ptr<FleetSite>> m_sites;
    SiteReader m_reader;
    PtzLeases m_leases;
    CameraList* m_cameras;
    QSet<const FleetSite*> m_wereAway;
};
