#include "archive/KeyPictures.h"

#include "archive/SegmentReader.h"
#include "decode/FrameConverter.h"

#include <algorithm>

namespace {

QImage decoded(const SegmentReader& reader, const AVPacket& key, QSize most)
{
    QString error;
    const AvCodec codec = reader.format()->openDecoder(&error);
    const AvFrame frame(av_frame_alloc());
    if (!codec || !frame || avcodec_send_packet(codec.get(), &key) < 0 ||
        avcodec_send_packet(codec.get(), nullptr) < 0 || avcodec_receive_frame(codec.get(), frame.get()) < 0)
        return QImage();
    FrameConverter converter;
    const FramePtr small = converter.convert(*frame, FrameConverter::fitted(*frame, most));
    return small ? small->image().copy() : QImage();
}

QImage pictureAt(const TrackPiece& piece, qint64 ms, QSize most)
{
    SegmentReader reader;
    QString error;
    if (!reader.open(piece, &error, SegmentReader::Expect::Recording))
        return QImage();
    reader.seek(ms);
    while (const AVPacket* packet = reader.read()) {
        if (!reader.isSound(*packet) && packet->flags & AV_PKT_FLAG_KEY)
            return decoded(reader, *packet, most);
    }
    return QImage();
}

} // namespace

KeyPictures::KeyPictures(ReaderMaker makeReader, QSize size, int most, QObject* parent)
    : QObject(parent), m_makeReader(std::move(makeReader)), m_size(size), m_most(size_t(qMax(1, most))),
      m_thread([this] { run(); })
{
}

KeyPictures::~KeyPictures()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_asked.notify_one();
    m_thread.join();
}

void KeyPictures::ask(const QString& camera, qint64 ms)
{
    {
        const std::lock_guard lock(m_mutex);
        const Request request{camera, ms};
        m_requests.erase(std::remove(m_requests.begin(), m_requests.end(), request), m_requests.end());
        m_requests.push_back(request);
        if (m_requests.size() > m_most)
            m_requests.pop_front();
    }
    m_asked.notify_one();
}

void KeyPictures::run()
{
    const std::unique_ptr<RecordingReader> archive = m_makeReader();
    std::unique_lock lock(m_mutex);
    while (true) {
        m_asked.wait(lock, [this] { return m_isEnding || !m_requests.empty(); });
        if (m_isEnding)
            return;
        const Request request = m_requests.back();
        m_requests.pop_back();
        lock.unlock();
        const auto found = archive->stretch(request.camera, request.ms, request.ms + 1);
        const QImage picture = found && !found->pieces.isEmpty()
                                   ? pictureAt(found->pieces.last(), request.ms, m_size)
                                   : QImage();
        Q_EMIT made(request.camera, request.ms, picture);
        lock.lock();
    }
}
