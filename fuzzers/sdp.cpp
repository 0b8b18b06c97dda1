#include "cameras/SourceAddress.h"
#include "source/MediaInput.h"
#include "support/LocalPort.h"

#include <QByteArray>

#include <atomic>
#include <thread>

#include <unistd.h>

namespace {

/// A camera of the network: it describes its streams as it is told, sends some bytes and goes.
class Camera
{
public:
    Camera() : m_socket(::socket(AF_INET, SOCK_STREAM, 0))
    {
        m_port = bindLocalPort(m_socket);
        ::listen(m_socket, 8);
    }
    QString url() const { return QString("rtsp://127.0.0.1:%1/a").arg(m_port); }
    int accept() const { return ::accept(m_socket, nullptr, nullptr); }
    void close() { ::shutdown(m_socket, SHUT_RDWR); }
    ~Camera() { ::close(m_socket); }

private:
    int m_socket;
    int m_port = 0;
};

QByteArray headerOf(const QByteArray& request, const char* name)
{
    const int start = request.indexOf(name);
    return start < 0 ? QByteArray() : request.mid(start, request.indexOf('\r', start) - start) + "\r\n";
}

void say(int client, const QByteArray& bytes)
{
    ::send(client, bytes.constData(), size_t(bytes.size()), MSG_NOSIGNAL);
}

/// Answers until the stream was asked for.
void talk(int client, const QByteArray& described, const QByteArray& sent)
{
    char bytes[4096];
    ssize_t count = 0;
    while ((count = ::recv(client, bytes, sizeof bytes, 0)) > 0) {
        const QByteArray request(bytes, int(count));
        const QByteArray body = request.startsWith("DESCRIBE") ? described : QByteArray();
        say(client, "RTSP/1.0 200 OK\r\n" + headerOf(request, "CSeq:") + headerOf(request, "Transport:") +
                        "Session: 1\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" +
                        body);
        if (!request.startsWith("PLAY"))
            continue;
        say(client, sent);
        ::shutdown(client, SHUT_WR);
    }
    ::close(client);
}

} // namespace

// What describes a stream, and what comes then behind a zero byte, may be anything.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    constexpr int Packets = 50;
    const QByteArray input(reinterpret_cast<const char*>(data), int(size));
    const int end = input.indexOf('\0');
    Camera camera;
    std::thread server([&] {
        for (int client = 0; (client = camera.accept()) >= 0;)
            talk(client, input.left(end), end < 0 ? QByteArray() : input.mid(end + 1));
    });
    {
        MediaInput reader(*SourceAddress::parse("Any=" + camera.url()), [] { return false; });
        bool isWell = reader.open();
        for (int i = 0; isWell && i < Packets; ++i)
            isWell = reader.read() >= 0;
        if (reader.error().contains('\n'))
            abort();
    }
    camera.close();
    server.join();
    return 0;
}
