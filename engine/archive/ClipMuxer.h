#pragma once

#include "packets/EncodedPacket.h"

/// A file of one camera's packets as they are, with one line of time in microseconds. Pictures before 0 are
/// not shown where the container can say so.
class ClipMuxer
{
public:
    enum class Container
    {
        Matroska,
        Mp4
    };

    static QString suffix(Container container);
    /// True if such a file can hold packets of a format.
    static bool holds(Container container, const StreamFormat& format);

    ClipMuxer() = default;
    ~ClipMuxer() { end(); }
    ClipMuxer(const ClipMuxer&) = delete;
    ClipMuxer& operator=(const ClipMuxer&) = delete;

    /// Writes over a file; false with the reason in error(). Sound that it can't hold is left out.
    bool open(const QString& path, Container container, const StreamFormat& format);
    bool isOpen() const { return m_output; }
    bool hasSound() const { return m_output && m_output->nb_streams > 1; }
    /// Takes a packet whose times, on a time base, lie `offsetUs` earlier than on the file's line.
    bool write(const AVPacket& packet, AVRational timeBase, bool isSound, qint64 offsetUs);
    /// Ends the file; false if not all of it could be written.
    bool close();
    const QString& error() const { return m_error; }

private:
    bool addStream(const StreamFormat& format, AVRational timeBase, Container container);
    bool fail(int error);
    void end();

    AVFormatContext* m_output = nullptr;
    QString m_error;
    int64_t m_lastDts[2] = {};
};
