#pragma once

#include "cameras/CameraDescription.h"

#include <QSet>

/// How the cameras of one index are called in a client that shows those of several. Each lies below its
/// site's name. The first site's keep all else, so that views and passwords of before go on; of other sites
/// what others may have too is told apart. Where there is but one index all stays as it is.
class SiteNames
{
public:
    enum class Rank
    {
        Only,
        First,
        Other,
    };

    /// What is taken by the sites before this one.
    struct Taken
    {
        QSet<QString> ids;
        QSet<QString> names;
    };

    SiteNames(const QString& site, Rank rank) : m_site(site), m_rank(rank) {}

    const QString& site() const { return m_site; }

    CameraDescription shown(CameraDescription kept, const Taken& taken) const;
    /// The way back, of a camera that is new here.
    CameraDescription kept(CameraDescription fresh) const;
    /// The same of one that was `before` in the index and shown as `shownBefore`.
    CameraDescription kept(CameraDescription changed, const CameraDescription& shownBefore,
                           const CameraDescription& before) const;
    /// A camera that was shown stays below its site, and a new one comes below the one it names.
    bool hasItsPlace(const CameraDescription& camera) const;

    /// A camera's name in the archive, which no other site's has.
    QString keyOf(const QString& archiveName) const;
    /// The way back; empty for a key of another site.
    QString archiveNameOf(const QString& key) const;

private:
    QString m_site;
    Rank m_rank;
};
