#include "source/LoginQuestion.h"

#include <memory>

namespace {

constexpr int LongestHead = 16 * 1024;
/// FFmpeg goes no further over HTTP.
constexpr int MostMoves = 8;

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

/// Some end their lines as FFmpeg too takes them, without a return.
QByteArray readHead(AVIOContext* line)
{
    QByteArray head;
    unsigned char part[1024];
    while (head.size() < LongestHead && !head.contains("\n\n")) {
        const int count = avio_read_partial(line, part, sizeof part);
        if (count <= 0)
            break;
        head += QByteArray(reinterpret_cast<const char*>(part), count).replace('\r', "");
    }
    const int end = head.indexOf("\n\n");
    return end < 0 ? head : head.left(end);
}

/// The head of the answer; FFmpeg's error if there is nobody.
int askAt(const QUrl& place, const AVIOInterruptCB& interrupt, QByteArray* head)
{
    const QString host = place.host();
    const QString peer = QString("tcp://%1:%2")
                             .arg(host.contains(':') ? '[' + host + ']' : host)
                             .arg(place.port(place.scheme() == "rtsp" ? 554 : 80));
    AVIOContext* opened = nullptr;
    const int error =
        avio_open2(&opened, peer.toUtf8().constData(), AVIO_FLAG_READ_WRITE, &interrupt, nullptr);
    if (error < 0)
        return error;
    const Line line(opened);
    QUrl asked = place.adjusted(QUrl::RemoveUserInfo);
    asked.setHost(host.section('%', 0, 0));
    const QByteArray question = questionFor(asked);
    avio_write(line.get(), reinterpret_cast<const unsigned char*>(question.constData()), question.size());
    avio_flush(line.get());
    *head = readHead(line.get());
    return 0;
}

int statusOf(const QByteArray& head)
{
    return head.left(head.indexOf('\n')).simplified().split(' ').value(1).toInt();
}

QList<QByteArray> fieldsOf(const QByteArray& head, const QByteArray& name)
{
    QList<QByteArray> fields;
    for (const QByteArray& line : head.split('\n')) {
        const int colon = line.indexOf(':');
        if (line.left(colon).trimmed().toLower() == name)
            fields.append(line.mid(colon + 1).trimmed());
    }
    return fields;
}

/// FFmpeg answers a line that begins with a digest, and before all others.
LoginQuestion::Way wayIn(const QByteArray& head)
{
    using Way = LoginQuestion::Way;
    Way way = Way::Unknown;
    if (statusOf(head) != 401)
        return way;
    for (const QByteArray& field : fieldsOf(head, "www-authenticate")) {
        const QByteArray question = field.toLower();
        if (question.startsWith("digest"))
            return Way::Digest;
        if (question.startsWith("basic"))
            way = Way::Plain;
    }
    return way;
}

bool isOpenLine(const QUrl& place)
{
    return place.scheme() == "rtsp" || place.scheme() == "http";
}

} // namespace

/// A camera may tell of another place, where FFmpeg would take the login along.
LoginQuestion LoginQuestion::ask(const QUrl& stream, const AVIOInterruptCB& interrupt)
{
    QUrl place = stream;
    for (int moves = 0; moves <= MostMoves; ++moves) {
        if (!isOpenLine(place))
            return {};
        if (!place.isValid())
            break;
        QByteArray head;
        const int error = askAt(place, interrupt, &head);
        if (error < 0)
            return {error, Way::Unknown, false};
        const QList<QByteArray> moved = fieldsOf(head, "location");
        if (statusOf(head) / 100 != 3 || moved.isEmpty())
            return {0, wayIn(head), !head.isEmpty()};
        place = place.resolved(QUrl::fromEncoded(moved.last()));
    }
    return {0, Way::Plain, true};
}
