#include "archive/Archive.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSet>
#include <QUrl>

namespace {

constexpr QLatin1String PartSuffix(".part");
constexpr QLatin1String MediaSuffix(".mkv");
constexpr QLatin1String SampleMark("-sample");
constexpr const char* TimeFormat = "yyyyMMdd-HHmmsszzz";

/// A camera's name as a directory's: reversible, and safe on any file system.
QString directoryName(const QString& camera)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(camera, " ", "."));
}

QString cameraName(const QString& directory)
{
    return QUrl::fromPercentEncoding(directory.toLatin1());
}

qint64 startOf(const QString& fileName)
{
    QDateTime time = QDateTime::fromString(fileName.left(18), TimeFormat);
    time.setTimeSpec(Qt::UTC);
    return time.isValid() ? time.toMSecsSinceEpoch() : -1;
}

/// True for a path that neither begins at the root nor climbs out.
bool staysBelow(const QString& path)
{
    const QString clean = QDir::cleanPath(path);
    return !clean.isEmpty() && QDir::isRelativePath(clean) && clean != ".." && !clean.startsWith("../");
}

} // namespace

bool Archive::open(const QString& directory, QString* error)
{
    if (!m_index.open(directory, error))
        return false;
    recoverAll();
    return true;
}

QString Archive::partPath(const QString& camera, qint64 startMs, bool sample) const
{
    const QDateTime start = QDateTime::fromMSecsSinceEpoch(startMs, Qt::UTC);
    const QString directory =
        m_index.directory() + "/" + directoryName(camera) + "/" + start.date().toString("yyyy-MM-dd");
    QDir().mkpath(directory);
    return directory + "/" + start.toString(TimeFormat) + (sample ? SampleMark : QLatin1String()) +
           MediaSuffix + PartSuffix;
}

bool Archive::finish(const QString& partPath, const QString& camera, qint64 startMs, qint64 endMs,
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
    return m_index.add(
        {QDir(m_index.directory()).relativeFilePath(path), camera, startMs, endMs, bytes, sample});
}

QString Archive::fullPath(const Segment& segment) const
{
    return staysBelow(segment.path) ? m_index.directory() + "/" + segment.path : QString();
}

void Archive::limit(qint64 bytes)
{
    while (m_index.totalBytes() > bytes) {
        const std::optional<Segment> oldest = m_index.oldest();
        if (!oldest)
            return;
        erase(*oldest);
    }
}

int Archive::removeSample()
{
    const QVector<Segment> samples = m_index.samples();
    for (const Segment& segment : samples)
        erase(segment);
    m_index.removeSampleSpans();
    return samples.size();
}

void Archive::recoverAll()
{
    QSet<QString> known;
    for (const Segment& segment : m_index.all()) {
        if (isOwnFile(segment))
            known.insert(fullPath(segment));
        else
            m_index.remove(segment);
    }
    QDirIterator it(m_index.directory(), QDir::Files, QDirIterator::Subdirectories);
    QStringList paths;
    while (it.hasNext())
        paths.append(it.next());
    for (const QString& path : paths) {
        if (!known.contains(path))
            recover(path);
    }
}

void Archive::recover(const QString& path)
{
    const QFileInfo info(path);
    const QString camera = cameraName(QFileInfo(info.path()).dir().dirName());
    const qint64 start = startOf(info.fileName());
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
        finish(path, camera, start, start + duration, sample);
    else
        m_index.add({QDir(m_index.directory()).relativeFilePath(path), camera, start, start + duration,
                     info.size(), sample});
}

/// The index is a file that anybody may have written: what it names is the archive's only if no link on the
/// way leads out of it.
bool Archive::isOwnFile(const Segment& segment) const
{
    const QFileInfo file(fullPath(segment));
    const QString root = QFileInfo(m_index.directory()).canonicalFilePath();
    return file.isFile() && !file.isSymLink() && file.canonicalPath().startsWith(root + "/");
}

void Archive::erase(const Segment& segment)
{
    if (isOwnFile(segment))
        QFile::remove(fullPath(segment));
    m_index.remove(segment);
}
