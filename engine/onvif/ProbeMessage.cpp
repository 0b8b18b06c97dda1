#include "onvif/ProbeMessage.h"

#include "onvif/DeviceAddress.h"
#include "onvif/SoapNode.h"

#include <QUuid>
#include <QXmlStreamWriter>

namespace {

const QString Envelope = "http://www.w3.org/2003/05/soap-envelope";
const QString Addressing = "http://schemas.xmlsoap.org/ws/2004/08/addressing";
const QString Discovery = "http://schemas.xmlsoap.org/ws/2005/04/discovery";
const QString NetworkWsdl = "http://www.onvif.org/ver10/network/wsdl";
const QString DeviceWsdl = "http://www.onvif.org/ver10/device/wsdl";

/// What stands behind a scope's prefix, such as the name in "onvif://www.onvif.org/name/Gate%20camera".
QString scope(const QString& scopes, const QString& kind)
{
    const QString prefix = "onvif://www.onvif.org/" + kind + '/';
    for (const QString& one : scopes.simplified().split(' ')) {
        if (one.startsWith(prefix, Qt::CaseInsensitive))
            return SoapNode(QString(), QUrl::fromPercentEncoding(one.mid(prefix.size()).toUtf8())).line();
    }
    return {};
}

/// Of the addresses that a device tells the one that it has answered from, else the first, at that host: a
/// link-local one is told without the network that it belongs to.
QUrl chosenAddress(const QString& told, const QString& host)
{
    QUrl first;
    for (const QString& one : told.simplified().split(' ')) {
        QUrl url = serviceAddress(QUrl(one), one);
        if (!url.isValid())
            continue;
        const bool isIt = url.host() == host.section('%', 0, 0) && url.scheme() == "http";
        url.setHost(host);
        if (isIt)
            return url;
        if (!first.isValid())
            first = url;
    }
    return first;
}

} // namespace

QByteArray probeMessage(const QString& type)
{
    QByteArray message;
    QXmlStreamWriter writer(&message);
    writer.writeStartDocument();
    writer.writeNamespace(Envelope, "s");
    writer.writeNamespace(Addressing, "a");
    writer.writeNamespace(Discovery, "d");
    writer.writeNamespace(type == "Device" ? DeviceWsdl : NetworkWsdl, "dn");
    writer.writeStartElement(Envelope, "Envelope");
    writer.writeStartElement(Envelope, "Header");
    writer.writeTextElement(Addressing, "Action", Discovery + "/Probe");
    writer.writeTextElement(Addressing, "MessageID",
                            "uuid:" + QUuid::createUuid().toString(QUuid::WithoutBraces));
    writer.writeTextElement(Addressing, "To", "urn:schemas-xmlsoap-org:ws:2005:04:discovery");
    writer.writeEndElement();
    writer.writeStartElement(Envelope, "Body");
    writer.writeStartElement(Discovery, "Probe");
    writer.writeTextElement(Discovery, "Types", "dn:" + type);
    writer.writeEndDocument();
    return message;
}

std::optional<FoundDevice> readProbeMatch(const QByteArray& datagram, const QHostAddress& sender)
{
    const auto envelope = SoapNode::parse(datagram);
    if (!envelope)
        return {};
    const SoapNode& match = envelope->at("Body/ProbeMatches/ProbeMatch");
    bool isV4 = false;
    const QHostAddress plain(sender.toIPv4Address(&isV4));
    const QString host = (isV4 ? plain : sender).toString();
    FoundDevice device;
    device.address = chosenAddress(match.at("XAddrs").text, host);
    if (!device.address.isValid())
        return {};
    const QString scopes = match.at("Scopes").text;
    device.endpoint = match.at("EndpointReference/Address").line();
    if (device.endpoint.isEmpty())
        device.endpoint = device.address.toString();
    device.name = scope(scopes, "name");
    if (device.name.isEmpty())
        device.name = device.address.host();
    device.model = scope(scopes, "hardware");
    return device;
}
