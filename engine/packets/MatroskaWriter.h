#pragma once

#include "packets/EncodedPacket.h"

#include <QString>

/// Writes one source's packets as they are into a Matroska file, from the first key frame on, with the sound
/// that its format names. One thread at a time.
class MatroskaWriter
{
public:
    /// True if such a file can hold packets of a format.
    static bool holds(const StreamFormat& format);

    MatroskaWriter() = default;
    ~MatroskaWriter() { close(); }
    MatroskaWriter(const MatroskaWriter&) = delete;
    MatroskaWriter& operator=(const MatroskaWriter&) = delete;

    /// False if the file can't be made; error() tells why. A file of that name is written over.
    bool open(const QString& path);
    /// False after a failure, which ends the file and keeps what was written until then. A packet before the
    /// first key frame is left out, and so is sound that does not go on from what came before.
    bool write(const EncodedPacket& packet);
    /// Ends the file; one without a picture is removed.
    void close();

    bool isOpen() const { return m_output; }
    const QString& path() const { return m_path; }
    /// One line, empty while all is well.
    const QString& error() const { return m_error; }
    /// Packets of pictures written so far.
    qint64 count() const { return m_count; }
    /// When the first and the last of them came, milliseconds since 1970.
    qint64 firstMs() const { return m_firstMs; }
    qint64 lastMs() const { return m_lastMs; }
    /// How long they play by their own times, milliseconds.
    qint64 lengthMs() const;
    qint64 bytes() const { return m_bytes; }

private:
    int prepare(const EncodedPacket& packet);
    int begin(const EncodedPacket& packet);
    int addStream(const StreamFormat& format);
    int goOn(const EncodedPacket& packet);
    int append(const EncodedPacket& packet);
    int appendSound(const EncodedPacket& packet);
    int store(const EncodedPacket& packet, int64_t offset, int stream);
    void end();
    bool fail(const QString& reason);

    QString m_path;
    AVFormatContext* m_output = nullptr;
    std::shared_ptr<const StreamFormat> m_format;
    int64_t m_offset = 0; ///< from a packet's times to the file's, on the stream's time base
    int64_t m_lastDts = 0;
    int64_t m_firstPts = 0;  ///< on the file's line of time, and so is
    int64_t m_endPts = 0;    ///< the end of the last picture shown
    int64_t m_lastSound = 0; ///< on the time base of the sound
    qint64 m_firstMs = 0;
    qint64 m_lastMs = 0;
    qint64 m_count = 0;
    qint64 m_bytes = 0;
    QString m_error;
};
