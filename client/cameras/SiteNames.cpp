#include "cameras/SiteNames.h"

#include <QUuid>

namespace {

/// What nobody has typed, between a site and what is its own.
const QChar Between(0x1f);

QString below(const QString& site, const QString& group)
{
    return group.isEmpty() ? site : site + '/' + group;
}

} // namespace

CameraDescription SiteNames::shown(CameraDescription kept, const Taken& taken) const
{
    if (m_rank == Rank::Only)
        return kept;
    kept.recordedAs = keyOf(kept.archiveName());
    kept.group = below(m_site, kept.group);
    // An id that somebody made by hand may come again anywhere.
    if (m_rank == Rank::Other && (QUuid(kept.id).isNull() || taken.ids.contains(kept.id)))
        kept.id = m_site + Between + kept.id;
    if (taken.names.contains(kept.name))
        kept.name = QString("%1 (%2)").arg(kept.name, m_site);
    return kept;
}

CameraDescription SiteNames::kept(CameraDescription fresh) const
{
    if (m_rank != Rank::Only && hasItsPlace(fresh))
        fresh.group = fresh.group.section('/', 1).trimmed();
    return fresh;
}

CameraDescription SiteNames::kept(CameraDescription changed, const CameraDescription& shownBefore,
                                  const CameraDescription& before) const
{
    changed = kept(changed);
    changed.id = before.id;
    changed.recordedAs = before.archiveName();
    if (changed.name == shownBefore.name)
        changed.name = before.name;
    return changed;
}

bool SiteNames::hasItsPlace(const CameraDescription& camera) const
{
    return m_rank == Rank::Only || camera.group.section('/', 0, 0).trimmed() == m_site;
}

QString SiteNames::keyOf(const QString& archiveName) const
{
    return m_rank == Rank::Other ? m_site + Between + archiveName : archiveName;
}

QString SiteNames::archiveNameOf(const QString& key) const
{
    if (m_rank != Rank::Other)
        return key.contains(Between) ? QString() : key;
    return key.startsWith(m_site + Between) ? key.mid(m_site.size() + 1) : QString();
}
