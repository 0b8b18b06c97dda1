#pragma once

#include "cameras/CameraDescription.h"

#include <QJsonObject>

/// A camera as it stands in the file, and back; none where something is missing, of another type or beyond
/// its range. Names that nobody knows are passed over.
QJsonObject cameraToJson(const CameraDescription& camera);
std::optional<CameraDescription> cameraFromJson(const QJsonValue& value);
