#pragma once

#include "archive/ClipCopy.h"
#include "decode/Frame.h"

#include <QImage>

/// Paints what is burnt into a picture: a camera's name and the time, into its part. The engine has no fonts:
/// whoever has them paints. Called in the exporter's thread.
using TilePainter = std::function<void(QImage& picture, const QRect& tile, const QString& name, qint64 ms)>;

/// Stretches of several cameras side by side in one picture, encoded, with names and times burnt in and
/// without sound. Where none of them has anything the time is left out.
class PictureExport
{
public:
    static constexpr int PicturesPerSecond = 25;
    /// What the encoder aims at, whatever there is to see.
    static constexpr int BitsPerSecond = 4'000'000;

    PictureExport(const QVector<ExportTask>& tasks, TilePainter painter, const QString& directory);

    /// False if it was ended, or failed: then error() is one line.
    bool run(const ClipCopy::GoOn& goOn);
    ExportFile& file() { return m_file; }
    const ExportRemarks& remarks() const { return m_remarks; }
    const QString& error() const { return m_error; }

    /// The parts of a picture for so many cameras, row by row.
    static QVector<QRect> tiles(int count, QSize picture);

private:
    bool begin();
    bool encode(AVFrame* picture);
    bool show(const QImage& canvas);
    qint64 stepOverGap(qint64 ms);
    bool fail(int error);

    QVector<ExportTask> m_tasks;
    TilePainter m_painter;
    QString m_directory;
    ExportFile m_file;
    ClipMuxer m_muxer;
    AvCodec m_codec;
    AvFrame m_picture;
    AvPacket m_packet;
    AvScaler m_scaler;
    ExportRemarks m_remarks;
    QString m_error;
};
