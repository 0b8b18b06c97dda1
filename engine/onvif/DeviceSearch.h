#pragma once

#include "onvif/ProbeMessage.h"

#include <QObject>
#include <QSet>
#include <QTimer>

class QNetworkInterface;
class QUdpSocket;

/// Asks all networks of this machine for devices, by WS-Discovery over IPv4 and IPv6, and listens for some
/// seconds. A device that answers over both is found at its IPv4 address, which lasts longer than a
/// link-local one.
class DeviceSearch : public QObject
{
    Q_OBJECT

public:
    static constexpr quint16 DiscoveryPort = 3702;
    static constexpr int ListenMs = 4000;
    static constexpr int MostDevices = 256;

    explicit DeviceSearch(QObject* parent = nullptr, quint16 port = DiscoveryPort);

    /// Begins, or begins anew.
    void start();
    bool isRunning() const { return m_end.isActive(); }

Q_SIGNALS:
    /// A device has answered, each once in a search.
    void found(const FoundDevice& device);
    void finished();

private:
    void listen(const QNetworkInterface& network, const QHostAddress& address);
    void probe();
    void read(QUdpSocket* socket);
    void take(const FoundDevice& device);
    void takeLater();
    void end();

    quint16 m_port;
    QVector<QUdpSocket*> m_sockets;
    QSet<QString> m_known;
    QVector<FoundDevice> m_later; ///< found over IPv6, until the next probe
    QTimer m_again;
    QTimer m_end;
};
