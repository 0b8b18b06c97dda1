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
/// Cuts off those for whom `isMeant` is true of what they look at.
void cutOff(GstRTSPServer* server, const std::function<bool(GstRTSPMedia*)>& isMeant);
/// True if it came from that factory.
bool isFrom(GstRTSPMedia* media, GstRTSPMediaFactory* factory);

} // namespace RelayFactory
