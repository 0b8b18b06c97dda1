#include "cameras/FleetDesk.h"

#include "cameras/CameraList.h"
#include "common/Words.h"

#include <algorithm>

FleetDesk::FleetDesk(const FleetAddress& address, CameraList* cameras, const QString& camerasPath)
    : m_reader(address), m_cameras(cameras)
{
    cameras->keepBy(
        [this](const QVector<CameraDescription>& list, QString* error) { return keep(list, error); },
        camerasPath);
    connect(&m_reader, &FleetReader::camerasRead, this, &FleetDesk::takeCameras);
    connect(&m_reader, &FleetReader::awayChanged, this, &FleetDesk::tellAway);
}

void FleetDesk::takeCameras(const QVector<LeasedCamera>& cameras)
{
    QVector<CameraDescription> list;
    for (const LeasedCamera& one : cameras) {
        if (const std::optional<CameraDescription> camera = descriptionOf(one))
            list.append(*camera);
        else
            Q_EMIT told(word("the description of %1 can't be understood").arg(one.name));
    }
    m_cameras->takeKept(list);
}

/// Only what was changed here is written: others may be at work on other cameras.
bool FleetDesk::keep(const QVector<CameraDescription>& cameras, QString* error)
{
    const QVector<CameraDescription> before = m_cameras->descriptions();
    QVector<CameraDescription> changed;
    QStringList gone;
    for (const CameraDescription& camera : before)
        gone.append(camera.id);
    for (const CameraDescription& camera : cameras) {
        gone.removeOne(camera.id);
        if (std::find(before.begin(), before.end(), camera) == before.end())
            changed.append(camera);
    }
    return m_reader.changeCameras(changed, gone, error);
}

void FleetDesk::tellAway()
{
    const bool isAway = !m_reader.away().isEmpty();
    if (isAway)
        Q_EMIT told(word("the shared index is away: %1").arg(m_reader.away()));
    else if (m_wasAway)
        Q_EMIT told(word("the shared index is back"));
    m_wasAway = isAway;
}
