#include "onvif/DeviceSearch.h"

#include <QNetworkDatagram>
#include <QNetworkInterface>
#include <QUdpSocket>
#include <QVariant>

namespace {

/// Datagrams get lost, and some devices answer but one of the two types.
constexpr int AgainMs = 700;
const QHostAddress Group("239.255.255.250");
const QHostAddress Group6("ff02::c");

bool isV6(const QHostAddress& address)
{
    return address.protocol() == QAbstractSocket::IPv6Protocol;
}

} // namespace

DeviceSearch::DeviceSearch(QObject* parent, quint16 port) : QObject(parent), m_port(port)
{
    m_again.setInterval(AgainMs);
    m_end.setSingleShot(true);
    connect(&m_again, &QTimer::timeout, this, &DeviceSearch::probe);
    connect(&m_end, &QTimer::timeout, this, &DeviceSearch::end);
}

void DeviceSearch::start()
{
    qDeleteAll(m_sockets);
    m_sockets.clear();
    m_known.clear();
    m_later.clear();
    for (const QNetworkInterface& network : QNetworkInterface::allInterfaces()) {
        if (!network.flags().testFlag(QNetworkInterface::IsUp))
            continue;
        for (const QNetworkAddressEntry& entry : network.addressEntries()) {
            if (!isV6(entry.ip()) || entry.ip().isLinkLocal())
                listen(network, entry.ip());
        }
    }
    m_end.start(ListenMs);
    m_again.start();
    probe();
}

void DeviceSearch::listen(const QNetworkInterface& network, const QHostAddress& address)
{
    auto* socket = new QUdpSocket(this);
    connect(socket, &QUdpSocket::readyRead, this, [this, socket] { read(socket); });
    if (!socket->bind(address)) {
        delete socket;
        return;
    }
    socket->setMulticastInterface(network);
    socket->setSocketOption(QAbstractSocket::MulticastTtlOption, 1);
    m_sockets.append(socket);
}

void DeviceSearch::probe()
{
    takeLater();
    for (QUdpSocket* socket : qAsConst(m_sockets)) {
        QHostAddress group = isV6(socket->localAddress()) ? Group6 : Group;
        group.setScopeId(socket->localAddress().scopeId());
        for (const char* type : {"NetworkVideoTransmitter", "Device"})
            socket->writeDatagram(probeMessage(type), group, m_port);
    }
}

void DeviceSearch::read(QUdpSocket* socket)
{
    while (socket->hasPendingDatagrams()) {
        const QNetworkDatagram datagram = socket->receiveDatagram();
        const auto device = readProbeMatch(datagram.data(), datagram.senderAddress());
        if (device && isV6(socket->localAddress()) && m_later.size() < MostDevices)
            m_later.append(*device);
        else if (device)
            take(*device);
    }
}

void DeviceSearch::take(const FoundDevice& device)
{
    if (m_known.size() >= MostDevices || m_known.contains(device.endpoint))
        return;
    m_known.insert(device.endpoint);
    Q_EMIT found(device);
}

void DeviceSearch::takeLater()
{
    for (const FoundDevice& device : std::exchange(m_later, {}))
        take(device);
}

void DeviceSearch::end()
{
    m_again.stop();
    takeLater();
    for (QUdpSocket* socket : qAsConst(m_sockets))
        socket->deleteLater();
    m_sockets.clear();
    Q_EMIT finished();
}
