#pragma once

#include "cameras/SiteNames.h"
#include "fleet/FleetReader.h"

/// One site of a client's: its cameras, how they are called here, and its index.
class FleetSite
{
public:
    FleetSite(const FleetAddress& index, const SiteNames& names)
        : m_names(names), m_reader(std::make_shared<FleetReader>(index))
    {
    }

    const SiteNames& names() const { return m_names; }
    const std::shared_ptr<FleetReader>& reader() const { return m_reader; }

    /// The site's cameras as its index has them now. Gives the names of those that can't be understood.
    QStringList take(const QVector<LeasedCamera>& cameras);
    /// The cameras as they are shown, which are taken then.
    QVector<CameraDescription> show(SiteNames::Taken* taken);
    bool has(const QString& shownId) const { return indexOf(shownId) >= 0; }
    /// The id of a camera in the index, and the one it has here; the same for one that is not known.
    QString keptId(const QString& shownId) const;
    QString shownId(const QString& keptId) const;

    /// Where a relay has a camera that is shown; empty where none does.
    QString liveOf(const QString& shownId) const { return m_live.value(keptId(shownId)); }

    const FleetRights& rights() const { return m_rights; }
    void setRights(const FleetRights& rights) { m_rights = rights; }

    /// Brings into the index what was done to the cameras that are shown: those that are other than they were
    /// shown, and those that are gone. False with the reason in one line; then nothing is changed.
    bool keep(const QVector<CameraDescription>& changed, const QStringList& gone, QString* error);

private:
    int indexOf(const QString& shownId) const;
    void settleArchiveName(CameraDescription* fresh) const;

    SiteNames m_names;
    std::shared_ptr<FleetReader> m_reader;
    FleetRights m_rights;
    QHash<QString, QString> m_live; ///< by the cameras' ids in the index
    QVector<CameraDescription> m_cameras;
    QVector<CameraDescription> m_shown; ///< the same, as they were shown last
};
