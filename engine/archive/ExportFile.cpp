#include "archive/ExportFile.h"

#include "archive/SafeFile.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr const char* HiddenName = ".panedeck-export-XXXXXX";

QString reason()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// Those that no living program holds.
void removeLeftovers(const QString& directory)
{
    const QStringList names =
        QDir(directory).entryList({".panedeck-export-??????"}, QDir::Files | QDir::Hidden);
    for (const QString& name : names) {
        const QByteArray path = QFile::encodeName(directory + "/" + name);
        const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
        if (file >= 0 && ::flock(file, LOCK_EX | LOCK_NB) == 0)
            ::unlink(path.constData());
        if (file >= 0)
            ::close(file);
    }
}

int makeHidden(const QString& directory, QString* name)
{
    removeLeftovers(directory);
    QByteArray path = QFile::encodeName(directory + "/" + HiddenName);
    const int file = ::mkostemp(path.data(), O_CLOEXEC);
    if (file < 0)
        return -1;
    ::fchmod(file, 0644);
    ::flock(file, LOCK_EX | LOCK_NB);
    *name = QFile::decodeName(path);
    return file;
}

} // namespace

ExportFile::~ExportFile()
{
    if (m_file < 0)
        return;
    if (!m_hiddenName.isEmpty())
        QFile::remove(m_hiddenName);
    ::close(m_file);
}

ExportFile::ExportFile(ExportFile&& other) noexcept
    : m_file(std::exchange(other.m_file, -1)), m_directory(std::move(other.m_directory)),
      m_hiddenName(std::move(other.m_hiddenName))
{
}

bool ExportFile::open(const QString& directory, QString* error)
{
    m_directory = directory;
    m_file = ::open(QFile::encodeName(directory).constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0644);
    if (m_file < 0)
        m_file = makeHidden(directory, &m_hiddenName);
    if (m_file < 0)
        *error = QString("cannot write %1: %2").arg(directory, reason());
    return m_file >= 0;
}

QString ExportFile::path() const
{
    return m_hiddenName.isEmpty() ? QString("/proc/self/fd/%1").arg(m_file) : m_hiddenName;
}

/// Nothing is written over.
bool ExportFile::give(const QString& name)
{
    if (!m_hiddenName.isEmpty()) {
        // Not each file system can refuse by itself, and tell why.
        if (QFile::exists(name)) {
            errno = EEXIST;
            return false;
        }
        QString error;
        return renameSafely(m_hiddenName, name, &error);
    }
    return ::linkat(AT_FDCWD, QFile::encodeName(path()).constData(), AT_FDCWD,
                    QFile::encodeName(name).constData(), AT_SYMLINK_FOLLOW) == 0;
}

QString ExportFile::keepAs(const QString& stem, const QString& suffix, QString* error)
{
    QString name = m_directory + "/" + stem + suffix;
    bool isKept = ::fsync(m_file) == 0;
    if (isKept) {
        for (int i = 2; !(isKept = give(name)) && errno == EEXIST; ++i)
            name = QString("%1/%2-%3%4").arg(m_directory, stem).arg(i).arg(suffix);
    }
    if (!isKept) {
        *error = QString("cannot write %1: %2").arg(name, reason());
        return QString();
    }
    const int directory = ::open(QFile::encodeName(m_directory).constData(), O_RDONLY | O_CLOEXEC);
    if (directory >= 0) {
        ::fsync(directory);
        ::close(directory);
    }
    ::close(std::exchange(m_file, -1));
    return name;
}
