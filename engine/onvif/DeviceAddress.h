#pragma once

#include <QUrl>

/// Addresses of devices, and those that devices tell. A device behind a router tells its inner address, and
/// one that means ill somebody else's: the host that answered is kept.

/// What an operator types for a device: a host, host:port or the whole address of its device service; invalid
/// if it is none of these.
QUrl deviceAddress(const QString& typed);

/// A service that the device at `device` tells of: with another host, its path at the device's own host and
/// port. Invalid for what is not HTTP.
QUrl serviceAddress(const QUrl& device, const QString& told);

/// A stream that the device tells of, at the device's own host and the told port, without a user or password;
/// empty for what is neither RTSP nor HTTP.
QUrl streamAddress(const QUrl& device, const QString& told);
