#include "SimulatedDevice.h"

#include <QDateTime>
#include <QFile>
#include <QRegularExpression>
#include <QSslSocket>
#include <QTcpSocket>
#include <QTimer>

namespace {

/// Where the answer lies: Media2 has operations of the same names.
QString answerName(const SoapNode& operation)
{
    const bool isMedia2 = operation.nameSpace == "http://www.onvif.org/ver20/media/wsdl";
    return (isMedia2 ? "Media2" : "") + operation.name;
}

} // namespace

QByteArray SimulatedDevice::header(const QByteArray& head, const QByteArray& name)
{
    const QRegularExpression line("^" + name + ": *(.*?)\r?$", QRegularExpression::MultilineOption |
                                                                   QRegularExpression::CaseInsensitiveOption);
    return line.match(QString::fromLatin1(head)).captured(1).toLatin1();
}

QString DeviceServer::pathOf(const QString& certificate)
{
    return QString(ONVIF_ANSWERS) + "../" + certificate;
}

void DeviceServer::incomingConnection(qintptr handle)
{
    QTcpSocket* socket = m_isSecure ? new QSslSocket(this) : new QTcpSocket(this);
    socket->setSocketDescriptor(handle);
    if (auto* secure = qobject_cast<QSslSocket*>(socket)) {
        secure->setPrivateKey(m_certificate, QSsl::Ec);
        secure->setLocalCertificate(m_certificate);
        secure->startServerEncryption();
    }
    addPendingConnection(socket);
}

SimulatedDevice::SimulatedDevice(const Habits& habits, quint16 port) : habits(habits), m_server(habits)
{
    m_clock.start();
    connect(&m_server, &QTcpServer::newConnection, this, [this] {
        QTcpSocket* socket = m_server.nextPendingConnection();
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    });
    m_server.listen(QHostAddress::Any, port);
}

QString SimulatedDevice::address() const
{
    return QString("%1://127.0.0.1:%2/onvif/device_service")
        .arg(habits.isSecure ? "https" : "http")
        .arg(m_server.serverPort());
}

QString SimulatedDevice::base() const
{
    const QString host = habits.foreignHost.isEmpty() ? "127.0.0.1" : habits.foreignHost;
    return QString("http://%1:%2").arg(host).arg(m_server.serverPort());
}

void SimulatedDevice::serve(QTcpSocket* socket)
{
    const QByteArray bytes = socket->peek(1 << 20);
    const int end = bytes.indexOf("\r\n\r\n");
    const QByteArray head = bytes.left(end);
    const int length = header(head, "Content-Length").toInt();
    if (end < 0 || bytes.size() < end + 4 + length)
        return;
    socket->skip(end + 4 + length);
    QTimer::singleShot(habits.delayMs, socket, [=] { answer(socket, head, bytes.mid(end + 4, length)); });
}

void SimulatedDevice::answer(QTcpSocket* socket, const QByteArray& head, const QByteArray& content)
{
    if (head.startsWith("GET"))
        return answerVideo(socket);
    if (!habits.mood.isEmpty())
        return answerMood(socket);
    const auto envelope = SoapNode::parse(content);
    if (!envelope || envelope->at("Body").children.empty())
        return send(socket, 400, fault("Sender", "WellFormed", "this is no SOAP"));
    const SoapNode& operation = envelope->at("Body").children.front();
    m_asked.append(operation.name);
    if (operation.name != "GetSystemDateAndTime" && !isSigned(*envelope, head)) {
        if (habits.authentication == "token" || habits.authentication == "text")
            return send(socket, 400, fault("Sender", "NotAuthorized", "who are you?"));
        const QByteArray kind =
            habits.authentication == "basic"
                ? "Basic realm=\"onvif\""
                : QByteArray("Basic realm=\"onvif\", Digest realm=\"onvif\", qop=\"auth\", nonce=\"") +
                      Nonce + '"';
        return send(socket, 401, {}, "WWW-Authenticate: " + kind + "\r\n");
    }
    if (habits.silentOn.contains(operation.name))
        return note(operation);
    const QByteArray place = habits.asksForReference ? envelope->at("Header/id").text.toUtf8() : head;
    if (m_subscriptionEnds.hasExpired())
        m_subscription.clear();
    if (operation.name == "PullMessages" && !m_subscription.isEmpty() &&
        place.contains(m_subscription.toUtf8()))
        return answerPull(socket);
    const QByteArray body = answerTo(operation);
    send(socket, body.contains(":Fault") ? 500 : 200, body);
}

QByteArray SimulatedDevice::answerTo(const SoapNode& operation)
{
    const QString name = answerName(operation);
    const bool isKnown = QFile::exists(QString(ONVIF_ANSWERS) + name + ".xml");
    const bool isViewMove = operation.at("Translation/PanTilt").attribute("space").endsWith("Fov");
    if (!isKnown || habits.missing.contains(name) || operation.name == "PullMessages")
        return fault("Receiver", "ActionNotSupported", operation.name + " is not there");
    if (isViewMove && habits.missing.contains("Fov"))
        return fault("Sender", "InvalidArgVal", "no such space");
    if (const QByteArray refusal = subscribe(operation); !refusal.isEmpty())
        return refusal;
    note(operation);
    return fill("Envelope", {{"header", {}}, {"body", fill(name, marksFor(operation))}}).toUtf8();
}

SimulatedDevice::Marks SimulatedDevice::marksFor(const SoapNode& operation)
{
    const QDateTime time = now();
    QString sources;
    for (int source = 1; source <= habits.sources; ++source)
        sources += fill("VideoSource", {{"source", QString::number(source)}});
    QString presets;
    for (int i = 0; i < m_presets.size(); ++i)
        presets +=
            fill("Preset", {{"token", QString::number(i + 1)}, {"name", m_presets[i].toHtmlEscaped()}});
    const QString stream = habits.stream.isEmpty() ? base() + "/video.mkv" : habits.stream;
    Marks marks{
        {"base", base()},
        {"scope", QString(QUrl::toPercentEncoding(habits.name))},
        {"stream", stream + (stream.contains("?") ? QString() : "?" + operation.at("ProfileToken").text)},
        {"services", services()},
        {"profiles", profiles(answerName(operation).startsWith("Media2") ? "Media2Profile" : "Profile")},
        {"profile",
         profiles("Profile", operation.at("ProfileToken").text).replace("trt:Profiles", "trt:Profile")},
        {"videosources", sources},
        {"presets", presets},
        {"token", QString::number(m_presets.size())},
        {"path", habits.asksForReference ? QString() : '/' + m_subscription},
        {"reference", habits.asksForReference ? fill("Reference", {{"id", m_subscription}}) : QString()},
        {"now", time.toString(Qt::ISODate)},
        {"then", time.addSecs(habits.keepsSeconds).toString(Qt::ISODate)}};
    const QStringList parts = time.toString("yyyy M d h m s").split(' ');
    const char* const names[] = {"year", "month", "day", "hour", "minute", "second"};
    for (int i = 0; i < parts.size(); ++i)
        marks.append({names[i], parts[i]});
    return marks;
}

QString SimulatedDevice::services() const
{
    QString all;
    if (habits.media.contains('1'))
        all += fill("Service", {{"version", "10"}, {"place", "media"}});
    if (habits.media.contains('2'))
        all +=
            fill("Service", {{"version", "20"}, {"place", "media"}}).replace("onvif/media", "onvif/media2");
    return all.replace("{base}", base());
}

QString SimulatedDevice::profiles(const QString& kind, const QString& only) const
{
    QString all;
    for (int source = 1; source <= habits.sources; ++source) {
        const QString number = QString::number(source);
        const auto add = [&](const QString& token, const QString& encoding, int width, int height) {
            if (!only.isEmpty() && only != habits.tokens + token + number)
                return;
            all += fill(kind, {{"token", habits.tokens + token + number},
                               {"source", number},
                               {"encoding", encoding},
                               {"width", QString::number(width)},
                               {"height", QString::number(height)}});
        };
        if (habits.hasEmptyProfiles)
            all += fill("EmptyProfiles", {{"source", number}});
        add("stills", "JPEG", 3840, 2160);
        add("small", "H264", 640, 360);
        add("main", "H264", 1920, 1080);
        add("tiny", "H264", 320, 180);
        if (kind == "Media2Profile")
            add("fine", "H265", 2560, 1440);
    }
    return all;
}

void SimulatedDevice::note(const SoapNode& operation)
{
    if (operation.nameSpace != "http://www.onvif.org/ver20/ptz/wsdl" || operation.name == "GetPresets")
        return;
    QStringList words{operation.name};
    for (const char* field : {"Velocity", "Translation"}) {
        const SoapNode& vector = operation.at(field);
        if (!vector.name.isEmpty())
            words << vector.at("PanTilt").attribute("x") << vector.at("PanTilt").attribute("y")
                  << vector.at("Zoom").attribute("x");
    }
    for (const char* field : {"PresetToken", "PresetName"}) {
        if (!operation.at(field).text.isEmpty())
            words << operation.at(field).text;
    }
    if (operation.name == "SetPreset")
        m_presets.append(operation.at("PresetName").text);
    m_told.append(words.join(' '));
    Q_EMIT tellsLine(QString::number(m_clock.elapsed()) + ' ' + m_told.last());
}

void SimulatedDevice::answerMood(QTcpSocket* socket)
{
    const QByteArray start = "<s:Envelope xmlns:s=\"http://www.w3.org/2003/05/soap-envelope\"><s:Body>";
    if (habits.mood == "malformed")
        send(socket, 200, start + "<a><b></a>");
    else if (habits.mood == "deep")
        send(socket, 200, start + QByteArray("<a>").repeated(100'000));
    else if (habits.mood == "html")
        send(socket, 404, "<html><body>nothing here</body></html>");
    else if (habits.mood == "busy")
        send(socket, 500, fault("Receiver", "Action", "too many\nsessions"));
    if (habits.mood != "endless")
        return;
    socket->write("HTTP/1.1 200 OK\r\nContent-Type: application/soap+xml\r\n\r\n" + start);
    auto* timer = new QTimer(socket);
    connect(timer, &QTimer::timeout, socket, [socket] { socket->write(QByteArray(100'000, ' ')); });
    timer->start(1);
}

void SimulatedDevice::answerVideo(QTcpSocket* socket)
{
    QFile file(habits.video);
    const bool isThere = file.open(QIODevice::ReadOnly);
    send(socket, isThere ? 200 : 404, file.readAll());
}

void SimulatedDevice::send(QTcpSocket* socket, int status, const QByteArray& body, const QByteArray& headers)
{
    socket->write("HTTP/1.1 " + QByteArray::number(status) + " Answer\r\n" + headers +
                  "Content-Type: application/soap+xml; charset=utf-8\r\n");
    if (!habits.isChunked) {
        socket->write("Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
        return;
    }
    constexpr int Chunk = 100;
    socket->write("Transfer-Encoding: chunked\r\n\r\n");
    for (int at = 0; at < body.size(); at += Chunk) {
        const QByteArray part = body.mid(at, Chunk);
        socket->write(QByteArray::number(part.size(), 16) + "\r\n" + part + "\r\n");
    }
    socket->write("0\r\n\r\n");
}

QByteArray SimulatedDevice::fault(const QString& side, const QString& code, const QString& reason)
{
    const QString body = fill("Fault", {{"side", side}, {"code", code}, {"reason", reason.toHtmlEscaped()}});
    return fill("Envelope", {{"header", {}}, {"body", body}}).toUtf8();
}

QString SimulatedDevice::fill(const QString& name, const Marks& marks)
{
    QFile file(QString(ONVIF_ANSWERS) + name + ".xml");
    if (!file.open(QIODevice::ReadOnly))
        qFatal("there is no answer %s", qPrintable(name));
    QString text = QString::fromUtf8(file.readAll()).trimmed();
    for (const auto& [mark, value] : marks)
        text.replace('{' + mark + '}', value);
    return text;
}
