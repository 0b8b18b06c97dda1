#include "RelayReader.h"

RelayReader::RelayReader(const SourceAddress& address, std::function<bool()> isStopped)
    : m_input(address, std::move(isStopped))
{
}

RelayReader::~RelayReader()
{
    stop();
}

void RelayReader::stop()
{
    m_input.breakOff();
    if (m_thread.joinable())
        m_thread.join();
}

bool RelayReader::open()
{
    if (!m_input.open())
        return false;
    m_stamper = std::make_unique<PacketStamper>(format());
    return true;
}

void RelayReader::start(Taker take, std::function<void()> end)
{
    m_thread = std::thread([this, take = std::move(take), end = std::move(end)] {
        while (readOne(take)) {
        }
        m_input.close();
        end();
    });
}

bool RelayReader::readOne(const Taker& take)
{
    const int error = m_input.read();
    if (error == AVERROR(EAGAIN))
        return true;
    if (error < 0)
        return m_input.fail("cannot read: %1", error);
    if (const PacketPtr packet = stamp(m_input.packet()))
        take(packet);
    return true;
}

PacketPtr RelayReader::stamp(const AVPacket& packet)
{
    const InputStreams& streams = m_input.streams();
    if (packet.stream_index == streams.pictures())
        return m_stamper->stamp(packet, PacketArrival::now());
    return streams.format()->sound ? m_stamper->stampSound(packet, streams.format()->sound) : nullptr;
}
