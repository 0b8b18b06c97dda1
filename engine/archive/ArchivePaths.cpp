#include "archive/ArchivePaths.h"

#include "archive/FileNames.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QUrl>

namespace {

const QLatin1String PartSuffix(".part");
const QLatin1String MediaSuffix(".mkv");
const QLatin1String SampleMark("-sample");
const QLatin1String NameFile("/camera.txt");
constexpr const char* TimeFormat = "yyyyMMdd-HHmmsszzz";
constexpr int TimeLength = 18;
constexpr qint64 LongestName = 4096;
constexpr qint64 SmallestPart = 256 << 10;
constexpr int PartsInRoom = 8;

qint64 startOf(const QString& fileName)
{
    QDateTime time = QDateTime::fromString(fileName.left(TimeLength), TimeFormat);
    time.setTimeSpec(Qt::UTC);
    return time.isValid() ? time.toMSecsSinceEpoch() : -1;
}

/// Directories of before had no file with the name; theirs was the name itself, percent-encoded.
QString cameraOf(const QString& directory)
{
    QFile file(directory + NameFile);
    if (file.open(QIODevice::ReadOnly))
        return QString::fromUtf8(file.read(LongestName));
    return QUrl::fromPercentEncoding(QFileInfo(directory).fileName().toUtf8());
}

void noteName(const QString& directory, const QString& camera)
{
    QFile file(directory + NameFile);
    if (!file.exists() && file.open(QIODevice::WriteOnly))
        file.write(camera.toUtf8());
}

/// True for a path that neither begins at the root nor climbs out.
bool staysBelow(const QString& path)
{
    const QString clean = QDir::cleanPath(path);
    return !clean.isEmpty() && QDir::isRelativePath(clean) && clean != ".." && !clean.startsWith("../");
}

} // namespace

QString ArchivePaths::beginPart(const QString& camera, qint64 startMs, bool sample)
{
    const QDateTime start = QDateTime::fromMSecsSinceEpoch(startMs, Qt::UTC);
    const QString home = m_directory + "/" + fileNameOf(camera);
    const QString day = home + "/" + start.date().toString("yyyy-MM-dd");
    if (QDir().mkpath(day))
        noteName(home, camera);
    const QString stem = day + "/" + start.toString(TimeFormat) + (sample ? SampleMark : QLatin1String());
    const std::lock_guard lock(m_mutex);
    QString path = stem + MediaSuffix + PartSuffix;
    for (int i = 2; m_openParts.contains(path) || QFile::exists(path) || QFile::exists(wholePath(path)); ++i)
        path = QString("%1-%2%3%4").arg(stem).arg(i).arg(MediaSuffix, PartSuffix);
    m_openParts.insert(path);
    return path;
}

void ArchivePaths::endPart(const QString& path)
{
    const std::lock_guard lock(m_mutex);
    m_openParts.remove(path);
}

bool ArchivePaths::isOpenPart(const QString& path) const
{
    const std::lock_guard lock(m_mutex);
    return m_openParts.contains(path);
}

qint64 ArchivePaths::mostPartBytes() const
{
    const std::lock_guard lock(m_mutex);
    return qMax(SmallestPart, m_room / (PartsInRoom * qMax(1, int(m_openParts.size()))));
}

std::optional<RecordedName> ArchivePaths::read(const QString& path)
{
    const QFileInfo info(path);
    const QString name = info.fileName();
    const bool isPart = name.endsWith(PartSuffix);
    const qint64 start = startOf(name);
    if (start < 0 || !(isPart ? wholePath(name) : name).endsWith(MediaSuffix))
        return std::nullopt;
    return RecordedName{cameraOf(QFileInfo(info.path()).path()), start, name.contains(SampleMark), isPart};
}

QString ArchivePaths::wholePath(const QString& partPath)
{
    return partPath.left(partPath.size() - PartSuffix.size());
}

QString ArchivePaths::relative(const QString& path) const
{
    return QDir(m_directory).relativeFilePath(path);
}

QString ArchivePaths::full(const QString& relative) const
{
    return staysBelow(relative) ? m_directory + "/" + relative : QString();
}

bool ArchivePaths::isOwnFile(const QString& relative) const
{
    const QFileInfo file(full(relative));
    const QString root = QFileInfo(m_directory).canonicalFilePath();
    return file.isFile() && !file.isSymLink() && file.canonicalPath().startsWith(root + "/");
}

bool ArchivePaths::isHidden(const QString& relative) const
{
    for (QFileInfo place(full(relative)); place.filePath().size() >= m_directory.size();
         place.setFile(place.path())) {
        if (place.isDir())
            return !place.isExecutable();
    }
    return false;
}
