#pragma once

#include "packets/FFmpeg.h"

#include <QString>

/// How recordings of other machines are read by http and https: what identifies this one, and whom it trusts.
namespace RecordingAccess {

/// Takes `recordings.crt` and `recordings.key`, a client's certificate, and `recordings-ca.crt`, the authority of the
/// servers, from a directory as far as they are there; without the last one the system's authorities are trusted. A
/// server that nobody vouches for is refused. Once, before the first recording is read.
void setDirectory(const QString& directory);

/// What FFmpeg opens for a full path or a URL of http or https, and with which options; free them.
QByteArray location(const QString& path);
AVDictionary* options(const QString& path);

} // namespace RecordingAccess
