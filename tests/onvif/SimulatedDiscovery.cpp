#include "SimulatedDevice.h"

#include <QNetworkDatagram>
#include <QNetworkInterface>
#include <QUuid>

namespace {

const QHostAddress Group("239.255.255.250");
const QHostAddress Group6("ff02::c");

} // namespace

void SimulatedDevice::discover(quint16 port)
{
    const auto listen = [this, port](QUdpSocket& socket, QHostAddress::SpecialAddress any,
                                     const QHostAddress& group) {
        socket.bind(any, port, QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint);
        for (const QNetworkInterface& network : QNetworkInterface::allInterfaces())
            socket.joinMulticastGroup(group, network);
        connect(&socket, &QUdpSocket::readyRead, this, [this, &socket] { answerProbe(&socket); });
    };
    if (habits.isFoundByV4)
        listen(m_discovery, QHostAddress::AnyIPv4, Group);
    listen(m_discovery6, QHostAddress::AnyIPv6, Group6);
}

void SimulatedDevice::answerProbe(QUdpSocket* socket)
{
    while (socket->hasPendingDatagrams()) {
        const QNetworkDatagram datagram = socket->receiveDatagram();
        const auto probe = SoapNode::parse(datagram.data());
        if (!probe || probe->at("Body/Probe").name.isEmpty())
            continue;
        const QString path = ':' + QString::number(m_server.serverPort()) + "/onvif/device_service";
        QStringList addresses;
        if (!habits.foreignHost.isEmpty())
            addresses.append("http://" + habits.foreignHost + path);
        for (const QHostAddress& host : QNetworkInterface::allAddresses()) {
            const QString plain = host.toString().section('%', 0, 0);
            addresses.append("http://" + (plain.contains(':') ? '[' + plain + ']' : plain) + path);
        }
        const QString answer =
            fill("ProbeMatches", {{"id", QUuid::createUuid().toString(QUuid::WithoutBraces)},
                                  {"relates", probe->at("Header/MessageID").text},
                                  {"endpoint", QString::number(m_server.serverPort())},
                                  {"scope", QString(QUrl::toPercentEncoding(habits.name))},
                                  {"xaddrs", addresses.join(' ')}});
        socket->writeDatagram(datagram.makeReply(answer.toUtf8()));
    }
}
