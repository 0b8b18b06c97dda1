#include "archive/PictureExport.h"

#include "archive/TilePlayer.h"

#include <cmath>
#include <cstring>
#include <memory>

namespace {

constexpr QSize PictureSize{1280, 720};
constexpr AVRational TimeBase{1, PictureExport::PicturesPerSecond};
constexpr qint64 StepMs = 1000 / PictureExport::PicturesPerSecond;

/// H.264 where there is an encoder for it, as every player knows it.
AvCodec openEncoder()
{
    const AVCodec* encoder = avcodec_find_encoder_by_name("libx264");
    if (!encoder)
        encoder = avcodec_find_encoder(AV_CODEC_ID_MPEG4);
    AvCodec codec(encoder ? avcodec_alloc_context3(encoder) : nullptr);
    if (!codec)
        return nullptr;
    codec->width = PictureSize.width();
    codec->height = PictureSize.height();
    codec->pix_fmt = AV_PIX_FMT_YUV420P;
    codec->time_base = TimeBase;
    codec->framerate = {PictureExport::PicturesPerSecond, 1};
    codec->gop_size = 2 * PictureExport::PicturesPerSecond;
    codec->bit_rate = PictureExport::BitsPerSecond;
    codec->thread_count = 1;
    codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    AVDictionary* options = nullptr;
    av_dict_set(&options, "preset", "veryfast", 0);
    const int error = avcodec_open2(codec.get(), encoder, &options);
    av_dict_free(&options);
    return error >= 0 ? std::move(codec) : nullptr;
}

/// Into the middle of a tile.
void copyPicture(const QImage& picture, QImage& canvas, const QRect& tile)
{
    constexpr int bytes = 3;
    QRect place(QPoint(), picture.size());
    place.moveCenter(tile.center());
    const QRect seen = place & tile;
    for (int y = seen.top(); y <= seen.bottom(); ++y)
        std::memcpy(canvas.scanLine(y) + bytes * seen.left(),
                    picture.constScanLine(y - place.top()) + bytes * (seen.left() - place.left()),
                    size_t(bytes) * size_t(seen.width()));
}

} // namespace

PictureExport::PictureExport(const QVector<ExportTask>& tasks, TilePainter painter, const QString& directory)
    : m_tasks(tasks), m_painter(std::move(painter)), m_directory(directory)
{
}

QVector<QRect> PictureExport::tiles(int count, QSize picture)
{
    const int columns = qMax(1, int(std::ceil(std::sqrt(double(count)))));
    const int rows = qMax(1, (count + columns - 1) / columns);
    QVector<QRect> tiles;
    for (int i = 0; i < count; ++i) {
        const QPoint corner(i % columns * picture.width() / columns, i / columns * picture.height() / rows);
        tiles.append(QRect(corner, QSize(picture.width() / columns, picture.height() / rows)));
    }
    return tiles;
}

bool PictureExport::run(const ClipCopy::GoOn& goOn)
{
    if (m_tasks.isEmpty() || !begin())
        return false;
    const QVector<QRect> places = tiles(m_tasks.size(), PictureSize);
    std::vector<std::unique_ptr<TilePlayer>> players;
    for (int i = 0; i < m_tasks.size(); ++i)
        players.push_back(
            std::make_unique<TilePlayer>(m_tasks[i].pieces, m_tasks[i].fromMs, places[i].size()));
    QImage canvas(PictureSize, QImage::Format_RGB888);
    const qint64 fromMs = m_tasks.first().fromMs;
    for (qint64 ms = stepOverGap(fromMs); ms < m_tasks.first().toMs; ms = stepOverGap(ms + StepMs)) {
        canvas.fill(Qt::black);
        for (int i = 0; i < m_tasks.size(); ++i) {
            if (const FramePtr frame = players[size_t(i)]->at(ms))
                copyPicture(frame->image(), canvas, places[i]);
            m_painter(canvas, places[i], m_tasks[i].camera, ms);
        }
        if (!show(canvas) || !goOn(ms - fromMs))
            return false;
    }
    for (const auto& player : players)
        m_remarks.unread += player->unread();
    if (m_picture->pts < 0)
        m_error = "nothing is recorded there";
    return m_picture->pts >= 0 && encode(nullptr) && (m_muxer.close() || fail(0));
}

bool PictureExport::begin()
{
    prepareFFmpeg();
    m_codec = openEncoder();
    m_picture.reset(av_frame_alloc());
    m_packet.reset(av_packet_alloc());
    m_scaler.reset(sws_getContext(PictureSize.width(), PictureSize.height(), AV_PIX_FMT_RGB24,
                                  PictureSize.width(), PictureSize.height(), AV_PIX_FMT_YUV420P, SWS_BILINEAR,
                                  nullptr, nullptr, nullptr));
    if (!m_codec || !m_picture || !m_packet || !m_scaler)
        return fail(AVERROR_ENCODER_NOT_FOUND);
    m_picture->format = m_codec->pix_fmt;
    m_picture->width = m_codec->width;
    m_picture->height = m_codec->height;
    m_picture->pts = -1;
    const auto format = StreamFormat::of(*m_codec);
    if (!format || av_frame_get_buffer(m_picture.get(), 0) < 0)
        return fail(AVERROR(ENOMEM));
    if (!m_file.open(m_directory, &m_error))
        return false;
    return m_muxer.open(m_file.path(), ClipMuxer::Container::Mp4, *format) || fail(0);
}

/// The moment itself if any camera has something then, or else when the first one goes on.
qint64 PictureExport::stepOverGap(qint64 ms)
{
    qint64 next = m_tasks.first().toMs;
    for (const ExportTask& task : qAsConst(m_tasks)) {
        for (const TrackPiece& piece : task.pieces) {
            if (ms < piece.endMs)
                next = qMin(next, qMax(ms, piece.startMs));
        }
    }
    if (next - ms > SegmentTrack::SeamMs && next < m_tasks.first().toMs) {
        ++m_remarks.gaps;
        m_remarks.gapMs += next - ms;
    }
    return next;
}

bool PictureExport::show(const QImage& canvas)
{
    if (const int error = av_frame_make_writable(m_picture.get()); error < 0)
        return fail(error);
    const uint8_t* const rows[] = {canvas.constBits()};
    const int rowBytes[] = {int(canvas.bytesPerLine())};
    sws_scale(m_scaler.get(), rows, rowBytes, 0, canvas.height(), m_picture->data, m_picture->linesize);
    ++m_picture->pts;
    return encode(m_picture.get());
}

/// Null gets out what the encoder still has.
bool PictureExport::encode(AVFrame* picture)
{
    if (const int error = avcodec_send_frame(m_codec.get(), picture); error < 0)
        return fail(error);
    while (avcodec_receive_packet(m_codec.get(), m_packet.get()) >= 0) {
        const bool isWritten = m_muxer.write(*m_packet, m_codec->time_base, false, 0);
        av_packet_unref(m_packet.get());
        if (!isWritten)
            return fail(0);
    }
    return true;
}

/// An error of 0 is the file's.
bool PictureExport::fail(int error)
{
    m_error = QString("cannot write %1: %2").arg(m_directory, error < 0 ? errorText(error) : m_muxer.error());
    return false;
}
