#include "archive/ArchiveRecovery.h"

#include "archive/Archive.h"

#include <cerrno>

namespace {

constexpr int RowsAtOnce = 200;
constexpr int FilesAtOnce = 50;

} // namespace

ArchiveRecovery::ArchiveRecovery(Archive& archive) : m_archive(archive), m_lastRow(archive.index().lastRow())
{
}

bool ArchiveRecovery::step()
{
    // What the index has not taken yet it doesn't know.
    if (m_archive.flush() != ArchiveIndex::Result::Done)
        return true;
    return m_files ? checkFiles() : checkRows();
}

bool ArchiveRecovery::checkRows()
{
    const QVector<Segment> rows = m_archive.m_index.after(m_row, RowsAtOnce);
    if (m_archive.m_index.result() != ArchiveIndex::Result::Done)
        return true;
    for (const Segment& segment : rows) {
        m_row = segment.row;
        const bool isTrue = segment.isPlausible() && m_archive.m_paths->isOwnFile(segment.path);
        if (m_row <= m_lastRow && !isTrue && !m_archive.m_paths->isHidden(segment.path))
            m_archive.forget(segment);
    }
    if (rows.isEmpty() || m_row >= m_lastRow)
        m_files = std::make_unique<QDirIterator>(m_archive.m_paths->directory(),
                                                 QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden |
                                                     QDir::NoSymLinks,
                                                 QDirIterator::Subdirectories);
    return true;
}

bool ArchiveRecovery::checkFiles()
{
    for (int i = 0; i < FilesAtOnce; ++i) {
        if (m_path.isEmpty() && !m_files->hasNext())
            return m_archive.flush() != ArchiveIndex::Result::Done;
        if (m_path.isEmpty())
            m_path = m_files->next();
        if (!checkFile(m_path))
            break;
        m_path.clear();
    }
    return true;
}

/// False if the index could not tell.
bool ArchiveRecovery::checkFile(const QString& path)
{
    const QFileInfo about(path);
    if (about.isDir()) {
        if (!about.isReadable() || !about.isExecutable())
            m_archive.trouble(QString("cannot read %1: %2").arg(path, qt_error_string(EACCES)));
        return true;
    }
    const std::optional<RecordedName> name = ArchivePaths::read(path);
    if (!name || m_archive.m_paths->isOpenPart(path))
        return true;
    const bool isKnown = m_archive.m_index.knows(m_archive.m_paths->relative(path));
    if (m_archive.m_index.result() != ArchiveIndex::Result::Done)
        return false;
    if (!isKnown)
        m_archive.takeFile(path, *name);
    return true;
}
