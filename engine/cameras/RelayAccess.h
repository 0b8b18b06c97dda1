#pragma once

#include "cameras/SourceAddress.h"

#include <QVector>

/// How live pictures are had through a relay.
namespace RelayAccess {

/// Where a relay has a camera, or its smaller stream, by the camera's id.
QString path(const QString& cameraId, bool isSmall);

/// True for `rtsp://host[:port]`, without a login, which all could read in a list, and without a path.
bool isRelay(const QString& url);

/// A camera as the relay at such a URL has it, for who logs in so; none for what is no relay.
std::optional<SourceAddress> address(const QString& relay, const QString& cameraId, bool isSmall,
                                     const Login& login);

/// The lines USER:PASSWORD of a file that its owner alone may read; what begins with # is none. Nothing, with
/// one line in `error`, for any other file, and for one without such a line.
std::optional<QVector<Login>> readLogins(const QString& file, QString* error);

} // namespace RelayAccess
