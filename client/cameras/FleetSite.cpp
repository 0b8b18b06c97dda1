#include "cameras/FleetSite.h"

#include "common/Words.h"

#include <algorithm>

QStringList FleetSite::take(const QVector<LeasedCamera>& cameras)
{
    QStringList strange;
    m_cameras.clear();
    m_live.clear();
    for (const LeasedCamera& one : cameras) {
        m_live.insert(one.id, one.live);
        if (const std::optional<CameraDescription> camera = descriptionOf(one))
            m_cameras.append(*camera);
        else
            strange.append(one.name);
    }
    return strange;
}

QVector<CameraDescription> FleetSite::show(SiteNames::Taken* taken)
{
    m_shown.clear();
    for (const CameraDescription& camera : qAsConst(m_cameras))
        m_shown.append(m_names.shown(camera, *taken));
    for (const CameraDescription& camera : qAsConst(m_shown)) {
        taken->ids.insert(camera.id);
        taken->names.insert(camera.name);
    }
    return m_shown;
}

int FleetSite::indexOf(const QString& shownId) const
{
    const auto isIt = [&](const CameraDescription& camera) { return camera.id == shownId; };
    const auto found = std::find_if(m_shown.cbegin(), m_shown.cend(), isIt);
    return found == m_shown.cend() ? -1 : int(found - m_shown.cbegin());
}

QString FleetSite::keptId(const QString& shownId) const
{
    const int index = indexOf(shownId);
    return index < 0 ? shownId : m_cameras.at(index).id;
}

QString FleetSite::shownId(const QString& keptId) const
{
    for (int i = 0; i < m_shown.size(); ++i) {
        if (m_cameras.at(i).id == keptId)
            return m_shown.at(i).id;
    }
    return keptId;
}

bool FleetSite::keep(const QVector<CameraDescription>& changed, const QStringList& gone, QString* error)
{
    QVector<CameraDescription> kept;
    QStringList keptGone;
    for (const CameraDescription& camera : changed) {
        const int index = indexOf(camera.id);
        if (index >= 0 && !m_names.hasItsPlace(camera)) {
            *error = word("%1 stays at its site: its group begins with %2").arg(camera.name, m_names.site());
            return false;
        }
        kept.append(index < 0 ? m_names.kept(camera)
                              : m_names.kept(camera, m_shown.at(index), m_cameras.at(index)));
        if (index < 0)
            settleArchiveName(&kept.last());
    }
    for (const QString& id : gone)
        keptGone.append(keptId(id));
    return m_reader->changeCameras(kept, keptGone, error);
}

/// A new camera takes over no recordings of another one that had its name.
void FleetSite::settleArchiveName(CameraDescription* fresh) const
{
    const QString wanted = fresh->archiveName();
    const auto isTaken = [&](const QString& name) {
        return std::any_of(m_cameras.cbegin(), m_cameras.cend(),
                           [&](const CameraDescription& other) { return other.archiveName() == name; });
    };
    fresh->recordedAs = wanted;
    for (int i = 2; isTaken(fresh->recordedAs); ++i)
        fresh->recordedAs = QString("%1 (%2)").arg(wanted).arg(i);
}
