#pragma once

#include <QString>

#include <optional>

/// Who may see a camera.
struct Login
{
    QString user;
    QString password;
};

/// Takes the login out of a URL; empty for a text without one.
Login takeLogin(QString* url);

/// What a source is and under which name it goes.
class SourceAddress
{
public:
    enum class Kind
    {
        Synthetic, ///< a built-in camera; number() says which
        File,
        Url,
        Device, ///< a capture device of Video4Linux
        Graph,  ///< a filter graph of libavfilter
    };

    /// How the packets of an RTSP stream travel.
    enum class Transport
    {
        Auto, ///< by TCP, or else by UDP
        Tcp,
        Udp,
    };

    /// Built-in camera `number`, from 1; without a name it goes by "Camera 01".
    static SourceAddress synthetic(int number, const QString& name = {});

    /// Reads "NAME=URL", where URL is a path, a file:, rtsp:, http: or other stream URL, "v4l2:/dev/video0"
    /// or a bare "/dev/video0", "lavfi:GRAPH", or "synthetic:N", and "NAME=URL|URL", where the second is a
    /// stream or file: URL of the same pictures in a smaller size. On a fault the answer is empty and `error`
    /// is one line. Nothing is opened: a file that isn't there is found out when it plays.
    static std::optional<SourceAddress> parse(const QString& text, QString* error = nullptr);

    /// The camera of a name, by the URL of its stream, and by that of its smaller one, which may be empty.
    /// `error` is the reason alone.
    static std::optional<SourceAddress> of(const QString& name, const QString& url, const QString& smallUrl,
                                           QString* error = nullptr);

    /// The URLs, as of() takes them; the second is empty without a smaller stream.
    QString url() const;
    const QString& smallUrl() const { return m_smallUrl; }

    /// What its URLs log in with, in place of what they named; of no meaning to what is no URL.
    /// The password goes as it is only where `isPlainAllowed`, or the line is closed to others.
    void setLogin(const QString& user, const QString& password, bool isPlainAllowed);
    /// True as long as nothing else was set: who puts a password into a URL lets it go as it is.
    bool isPlainAllowed() const { return m_isPlainAllowed; }
    void setTransport(Transport transport) { m_transport = transport; }

    Kind kind() const { return m_kind; }
    const QString& name() const { return m_name; }
    /// What FFmpeg opens; empty for a synthetic camera.
    const QString& location() const { return m_location; }
    /// The same camera's pictures in a smaller size, if there is a stream of them.
    std::optional<SourceAddress> small() const;
    /// From 1 for a synthetic camera, 0 for all others.
    int number() const { return m_number; }

    Transport transport() const { return m_transport; }
    /// True if the other one gives the very same pictures, whatever its name, which synthetic ones show.
    bool isSameStream(const SourceAddress& other) const;

    /// True if pictures come at their own pace and can't wait, so that a pause drops them.
    bool isLive() const;

private:
    static std::optional<SourceAddress> read(const QString& name, const QString& url, QString* why);
    static std::optional<SourceAddress> readNumber(const QString& name, const QString& text, QString* why);
    SourceAddress(Kind kind, const QString& name, const QString& location, int number = 0);

    Kind m_kind;
    QString m_name;
    QString m_location;
    int m_number;
    QString m_smallUrl;
    Transport m_transport = Transport::Auto;
    bool m_isPlainAllowed = true;
};
