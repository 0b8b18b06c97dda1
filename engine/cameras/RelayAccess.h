#pragma once

#include "cameras/SourceAddress.h"

#include <QVector>

/// How live pictures are had through a relay.
namespace RelayAccess {

/// Where a relay has a camera, or its smaller stream, by the camera's id.
QString path(const QString& cameraId, bool isSmall);

/// The lines USER:PASSWORD of a file that its owner alone may read; what begins with # is none. Nothing, with
/// one line in `error`, for any other file, and for one without such a line.
std::optional<QVector<Login>> readLogins(const QString& file, QString* error);

} // namespace RelayAccess
