#pragma once

#include "cameras/CameraDescription.h"

#include <QMetaType>
#include <QStringList>

class FleetDatabase;

/// A camera as the shared index has it.
struct LeasedCamera
{
    QString id;
    QString name;
    QString description;  ///< JSON, as the file of cameras has it
    bool isReady = false; ///< of a recorder: it is known to be recorded here
    QString live{};       ///< of a desk: where a relay has it, as `rtsp://host:port`; may be empty
};

Q_DECLARE_METATYPE(QVector<LeasedCamera>)

/// What stands in it; none where it can't be understood.
std::optional<CameraDescription> descriptionOf(const LeasedCamera& camera);

/// The list of cameras in the shared index, without passwords.
namespace FleetCameras {

std::optional<QVector<LeasedCamera>> read(FleetDatabase& database);
/// Puts in these and takes those out, as a whole or not at all. What others did to other cameras stays.
bool change(FleetDatabase& database, const QVector<CameraDescription>& cameras, const QStringList& gone);

} // namespace FleetCameras
