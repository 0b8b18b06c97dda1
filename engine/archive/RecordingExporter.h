#pragma once

#include "archive/PictureExport.h"

#include <QObject>

#include <atomic>
#include <thread>

/// All that goes out together.
struct ExportOrder
{
    QVector<ExportTask> tasks;
    ClipMuxer::Container container = ClipMuxer::Container::Matroska;
    QString directory;
    TilePainter painter; ///< if there is one, all goes into one picture, encoded, and a file of MP4
};

struct ExportResult
{
    QStringList files; ///< full paths; empty after a failure, or if it was cancelled
    QString checksums; ///< the file that `sha256sum -c` takes, in the same directory
    QString error;     ///< one line; empty if it was cancelled
    ExportRemarks remarks;
};
Q_DECLARE_METATYPE(ExportResult)

/// Takes stretches of recordings out of the archive, in a thread of its own. All of it comes out, or nothing:
/// no file has a name before all are whole, and none before it is on the disk.
class RecordingExporter : public QObject
{
    Q_OBJECT

public:
    explicit RecordingExporter(QObject* parent = nullptr);
    /// Cancels what runs.
    ~RecordingExporter() override;

    /// Nothing if one runs.
    void start(const ExportOrder& order);
    /// finished() comes all the same.
    void cancel() { m_isCancelled = true; }

    /// What a file of a stretch is called, without its suffix: camera, day and times.
    static QString stemOf(const QString& camera, qint64 fromMs, qint64 toMs);

Q_SIGNALS:
    void progressed(int permille);
    void finished(const ExportResult& result);

private:
    struct Written
    {
        ExportFile file;
        QString stem;
        QByteArray sum;
    };

    void run(const ExportOrder& order);
    bool copyAll(const ExportOrder& order, ExportResult& result);
    bool encodeAll(const ExportOrder& order, ExportResult& result);
    bool sumAll(ExportResult& result);
    bool keepAll(const ExportOrder& order, ExportResult& result);
    void tellProgress(qint64 done, qint64 all);

    std::thread m_thread;
    std::atomic<bool> m_isRunning{false};
    std::atomic<bool> m_isCancelled{false};
    std::vector<Written> m_written;
    int m_toldPermille = -1;
};
