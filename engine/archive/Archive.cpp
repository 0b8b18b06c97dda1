#include "archive/Archive.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSet>
#include <QUrl>

namespace {

const QLatin1String PartSuffix(".part");
const QLatin1String MediaSuffix(".mkv");
const QLatin1String SampleMark("-sample");
const char* const TimeFormat = "yyyyMMdd-HHmmsszzz";

/// A camera's name as a directory's: reversible, and safe on any file system.
QString DirectoryName(const QString& camera)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(camera, " ", "."));
}

QString CameraName(const QString& directory)
{
    return QUrl::fromPercentEncoding(directory.toLatin1());
}

qint64 StartOf(const QString& fileName)
{
    QDateTime time = QDateTime::fromString(fileName.left(18), TimeFormat);
    time.setTimeSpec(Qt::UTC);
    return time.isValid() ? time.toMSecsSinceEpoch() : -1;
}

} // namespace

bool Archive::Open(const QString& directory, QString* error)
{
    if (!m_index.Open(directory, error))
        return false;
    RecoverAll();
    return true;
}

QString Archive::PartPath(const QString& camera, qint64 startMs, bool sample) const
{
    const QDateTime start = QDateTime::fromMSecsSinceEpoch(startMs, Qt::UTC);
    const QString directory =
        m_index.Directory() + "/" + DirectoryName(camera) + "/" + start.date().toString("yyyy-MM-dd");
    QDir().mkpath(directory);
    return directory + "/" + start.toString(TimeFormat) + (sample ? SampleMark : QLatin1String()) +
           MediaSuffix + PartSuffix;
}

bool Archive::Finish(const QString& partPath, const QString& camera, qint64 startMs, qint64 endMs,
                     bool sample)
{
    const qint64 bytes = QFileInfo(partPath).size();
    if (bytes == 0 || endMs <= startMs) {
        QFile::remove(partPath);
        return false;
    }
    const QString path = partPath.left(partPath.size() - PartSuffix.size());
    if (!QFile::rename(partPath, path))
        return false;
    return m_index.Add(
        {QDir(m_index.Directory()).relativeFilePath(path), camera, startMs, endMs, bytes, sample});
}

QString Archive::FullPath(const Segment& segment) const
{
    return m_index.Directory() + "/" + segment.path;
}

void Archive::Limit(qint64 bytes)
{
    while (m_index.TotalBytes() > bytes) {
        const std::optional<Segment> oldest = m_index.Oldest();
        if (!oldest)
            return;
        Delete(*oldest);
    }
}

int Archive::RemoveSample()
{
    const QVector<Segment> samples = m_index.Samples();
    for (const Segment& segment : samples)
        Delete(segment);
    m_index.RemoveSampleSpans();
    return samples.size();
}

void Archive::RecoverAll()
{
    QSet<QString> known;
    for (const Segment& segment : m_index.All()) {
        if (QFile::exists(FullPath(segment)))
            known.insert(FullPath(segment));
        else
            m_index.Remove(segment);
    }
    QDirIterator it(m_index.Directory(), QDir::Files, QDirIterator::Subdirectories);
    QStringList paths;
    while (it.hasNext())
        paths.append(it.next());
    for (const QString& path : paths) {
        if (!known.contains(path))
            Recover(path);
    }
}

void Archive::Recover(const QString& path)
{
    const QFileInfo info(path);
    const QString camera = CameraName(QFileInfo(info.path()).dir().dirName());
    const qint64 start = StartOf(info.fileName());
    if (start < 0)
        return;
    const bool part = path.endsWith(PartSuffix);
    const qint64 duration = m_probe(path);
    if (duration <= 0) {
        if (part)
            QFile::remove(path);
        return;
    }
    const bool sample = info.fileName().contains(SampleMark);
    if (part)
        Finish(path, camera, start, start + duration, sample);
    else
        m_index.Add({QDir(m_index.Directory()).relativeFilePath(path), camera, start, start + duration,
                     info.size(), sample});
}

void Archive::Delete(const Segment& segment)
{
    QFile::remove(FullPath(segment));
    m_index.Remove(segment);
}
