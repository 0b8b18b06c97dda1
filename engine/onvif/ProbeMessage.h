#pragma once

#include <QHostAddress>
#include <QUrl>

#include <optional>

/// A device that has answered a search.
struct FoundDevice
{
    QString endpoint; ///< what it is known by, however often and from wherever it answers
    QString name;     ///< of its own telling; the host's where it tells none
    QString model;
    QUrl address; ///< of its device service
};

/// A probe of WS-Discovery for devices of this type: "NetworkVideoTransmitter" or "Device".
QByteArray probeMessage(const QString& type);

/// The device that a datagram from `sender` tells of; nothing for any other datagram.
std::optional<FoundDevice> readProbeMatch(const QByteArray& datagram, const QHostAddress& sender);
