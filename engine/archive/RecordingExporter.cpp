#include "archive/RecordingExporter.h"

#include "archive/FileNames.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr qint64 BlockBytes = 1 << 20;
/// Copying is the most of it, the rest are the sums.
constexpr int CopyPermille = 900;

/// Empty with one line in `error` if it can't be read, or without one if it was ended.
QByteArray sumOf(const QString& path, const std::atomic<bool>& isCancelled, QString* error)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    bool isRead = file.open(QIODevice::ReadOnly);
    while (isRead && !file.atEnd() && !isCancelled) {
        const QByteArray block = file.read(BlockBytes);
        isRead = !block.isEmpty();
        hash.addData(block);
    }
    if (!isRead)
        *error = QString("cannot read: %1").arg(file.errorString());
    return isRead && !isCancelled ? hash.result().toHex() : QByteArray();
}

} // namespace

RecordingExporter::RecordingExporter(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<ExportResult>();
}

RecordingExporter::~RecordingExporter()
{
    cancel();
    if (m_thread.joinable())
        m_thread.join();
}

QString RecordingExporter::stemOf(const QString& camera, qint64 fromMs, qint64 toMs)
{
    const QDateTime from = QDateTime::fromMSecsSinceEpoch(fromMs);
    const QDateTime to = QDateTime::fromMSecsSinceEpoch(toMs);
    const bool isOneDay = from.date() == to.date();
    return fileNameOf(camera) + "-" + from.toString("yyyyMMdd-HHmmss") + "-" +
           to.toString(isOneDay ? "HHmmss" : "yyyyMMdd-HHmmss");
}

void RecordingExporter::start(const ExportOrder& order)
{
    if (m_isRunning.exchange(true))
        return;
    if (m_thread.joinable())
        m_thread.join();
    m_isCancelled = false;
    m_toldPermille = -1;
    m_thread = std::thread([this, order] { run(order); });
}

void RecordingExporter::run(const ExportOrder& order)
{
    ExportResult result;
    const bool isWritten = order.painter ? encodeAll(order, result) : copyAll(order, result);
    const bool isDone = isWritten && sumAll(result) && !m_isCancelled && keepAll(order, result);
    m_written.clear();
    if (!isDone)
        result.files.clear();
    if (m_isCancelled && !isDone)
        result.error.clear();
    m_isRunning = false;
    Q_EMIT finished(result);
}

bool RecordingExporter::copyAll(const ExportOrder& order, ExportResult& result)
{
    qint64 all = 1, earlier = 0;
    for (const ExportTask& task : order.tasks)
        all += task.toMs - task.fromMs;
    for (const ExportTask& task : order.tasks) {
        ClipCopy copy(task, order.container, order.directory);
        const bool isCopied = copy.run([&](qint64 doneMs) {
            tellProgress((earlier + doneMs) * CopyPermille, all);
            return !m_isCancelled;
        });
        result.remarks.add(copy.remarks());
        if (!isCopied) {
            result.error = copy.error();
            return false;
        }
        const QString stem = stemOf(task.camera, task.fromMs, task.toMs);
        for (ExportFile& file : copy.files())
            m_written.push_back({std::move(file), stem, {}});
        earlier += task.toMs - task.fromMs;
    }
    return true;
}

bool RecordingExporter::encodeAll(const ExportOrder& order, ExportResult& result)
{
    PictureExport picture(order.tasks, order.painter, order.directory);
    QStringList names;
    for (const ExportTask& task : order.tasks)
        names.append(task.camera);
    const qint64 all = order.tasks.isEmpty() ? 1 : order.tasks.first().toMs - order.tasks.first().fromMs;
    const bool isMade = picture.run([&](qint64 doneMs) {
        tellProgress(doneMs * CopyPermille, qMax<qint64>(1, all));
        return !m_isCancelled;
    });
    result.remarks = picture.remarks();
    result.error = picture.error();
    if (isMade)
        m_written.push_back({std::move(picture.file()),
                             stemOf(names.join(" + "), order.tasks.first().fromMs, order.tasks.first().toMs),
                             {}});
    return isMade;
}

bool RecordingExporter::sumAll(ExportResult& result)
{
    qint64 done = 0;
    for (Written& written : m_written) {
        written.sum = sumOf(written.file.path(), m_isCancelled, &result.error);
        if (written.sum.isEmpty())
            return false;
        ++done;
        tellProgress(CopyPermille * qint64(m_written.size()) + done * (1000 - CopyPermille),
                     qint64(m_written.size()));
    }
    return !m_written.empty();
}

bool RecordingExporter::keepAll(const ExportOrder& order, ExportResult& result)
{
    QByteArray sums;
    const QString suffix = ClipMuxer::suffix(order.painter ? ClipMuxer::Container::Mp4 : order.container);
    bool isKept = true;
    for (Written& written : m_written) {
        const QString path = written.file.keepAs(written.stem, suffix, &result.error);
        isKept = isKept && !path.isEmpty();
        if (!isKept)
            break;
        result.files.append(path);
        sums += written.sum + "  " + QFileInfo(path).fileName().toUtf8() + "\n";
    }
    ExportFile list;
    if (isKept && list.open(order.directory, &result.error)) {
        QFile file(list.path());
        isKept = file.open(QIODevice::WriteOnly) && file.write(sums) == sums.size() && file.flush();
        file.close();
        if (isKept)
            result.checksums = list.keepAs(m_written.front().stem, ".sha256", &result.error);
    }
    if (!result.checksums.isEmpty())
        return true;
    for (const QString& path : qAsConst(result.files))
        QFile::remove(path);
    if (result.error.isEmpty())
        result.error = QString("cannot write %1").arg(order.directory);
    return false;
}

void RecordingExporter::tellProgress(qint64 done, qint64 all)
{
    const int permille = int(done / all);
    if (permille == m_toldPermille)
        return;
    m_toldPermille = permille;
    Q_EMIT progressed(permille);
}
