#include "source/LoginQuestion.h"

#include <memory>

namespace {

constexpr int LongestHead = 16 * 1024;

struct CloseLine
{
    void operator()(AVIOContext* line) const { avio_closep(&line); }
};
using Line = std::unique_ptr<AVIOContext, CloseLine>;

QByteArray questionFor(const QUrl& stream)
{
    if (stream.scheme() == "rtsp")
        return "DESCRIBE " + stream.toEncoded() + " RTSP/1.0\r\nCSeq: 1\r\nAccept: application/sdp\r\n\r\n";
    const QByteArray path =
        stream.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::RemoveFragment);
    return "GET " + (path.isEmpty() ? "/" : path) +
           " HTTP/1.1\r\nHost: " + stream.authority(QUrl::FullyEncoded).toLatin1() +
           "\r\nConnection: close\r\n\r\n";
}

QByteArray readHead(AVIOContext* line)
{
    QByteArray head;
    unsigned char part[1024];
    while (head.size() < LongestHead && !head.contains("\r\n\r\n")) {
        const int count = avio_read_partial(line, part, sizeof part);
        if (count <= 0)
            break;
        head.append(reinterpret_cast<const char*>(part), count);
    }
    return head.left(head.indexOf("\r\n\r\n"));
}

} // namespace

LoginQuestion LoginQuestion::ask(const QUrl& stream, const AVIOInterruptCB& interrupt)
{
    const QString host = stream.host();
    const QString place = QString("tcp://%1:%2")
                              .arg(host.contains(':') ? '[' + host + ']' : host)
                              .arg(stream.port(stream.scheme() == "rtsp" ? 554 : 80));
    AVIOContext* opened = nullptr;
    const int error =
        avio_open2(&opened, place.toUtf8().constData(), AVIO_FLAG_READ_WRITE, &interrupt, nullptr);
    if (error < 0)
        return {error, Way::Unknown};
    const Line line(opened);
    QUrl asked = stream.adjusted(QUrl::RemoveUserInfo);
    asked.setHost(host.section('%', 0, 0));
    const QByteArray question = questionFor(asked);
    avio_write(line.get(), reinterpret_cast<const unsigned char*>(question.constData()), question.size());
    avio_flush(line.get());
    return {0, read(readHead(line.get()))};
}

/// FFmpeg answers a line that begins with a digest, and before all others.
LoginQuestion::Way LoginQuestion::read(const QByteArray& head)
{
    const QList<QByteArray> lines = head.split('\n');
    Way way = Way::Unknown;
    if (!lines.first().contains(" 401"))
        return way;
    for (const QByteArray& line : lines) {
        const int colon = line.indexOf(':');
        if (line.left(colon).trimmed().toLower() != "www-authenticate")
            continue;
        const QByteArray question = line.mid(colon + 1).trimmed().toLower();
        if (question.startsWith("digest"))
            return Way::Digest;
        if (question.startsWith("basic"))
            way = Way::Plain;
    }
    return way;
}
