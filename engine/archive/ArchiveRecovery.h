#pragma once

#include <QDirIterator>

#include <memory>

class Archive;

/// Brings the files of an archive and its index together, a few steps at a time: forgets what is gone, and
/// indexes what is not known.
class ArchiveRecovery
{
public:
    explicit ArchiveRecovery(Archive& archive);

    /// False when all is done.
    bool step();

private:
    bool checkRows();
    bool checkFiles();
    bool checkFile(const QString& path);

    Archive& m_archive;
    qint64 m_row = 0;
    qint64 m_lastRow; ///< of those that were there at the start
    std::unique_ptr<QDirIterator> m_files;
    QString m_path; ///< the file to look at
};
