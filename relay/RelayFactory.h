#pragma once

#include "cameras/SourceAddress.h"

#include <gst/rtsp-server/rtsp-server.h>

#include <functional>

/// Makes the pipeline of a camera whenever somebody looks and nobody did before.
namespace RelayFactory {

struct Camera
{
    SourceAddress address;
    GstRTSPServer* server;
    GMainContext* context;                         ///< the server's
    std::function<void(const QString& line)> tell; ///< in any thread
};

/// What those who may look are called.
constexpr const char* Role = "desk";

GstRTSPMediaFactory* make(const Camera& camera);
/// Its camera is read no more, whoever has asked for it, and who looks at it is cut off.
void end(GstRTSPMediaFactory* factory);

} // namespace RelayFactory
