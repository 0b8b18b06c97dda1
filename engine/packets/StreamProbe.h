#pragma once

#include "packets/PacketSink.h"

#include <QString>
#include <QtGlobal>

#include <mutex>

/// Tells what comes of a stream: its codec, and how much of it.
class StreamProbe : public PacketSink
{
public:
    struct Finding
    {
        QString codec;    ///< such as "H.264"; empty before the first picture
        double rate = 0;  ///< pictures a second; 0 until that can be told
        int kilobits = 0; ///< a second; 0 until that can be told
    };

    void take(const PacketPtr& packet) override;
    Finding finding() const;

private:
    mutable std::mutex m_mutex;
    QString m_codec;
    int m_pictures = 0;
    qint64 m_bytes = 0; ///< of all but the first picture
    qint64 m_firstMs = 0;
    qint64 m_lastMs = 0;
};
