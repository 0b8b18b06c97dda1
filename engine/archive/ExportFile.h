#pragma once

#include <QString>

/// A file that nobody sees until it is whole. Where the file system can, it has no name at all until then, so
/// that not even a program that is killed leaves anything behind; else it has a hidden one, and the next
/// export into the same directory removes what a killed one has left.
class ExportFile
{
public:
    ExportFile() = default;
    ~ExportFile();
    ExportFile(ExportFile&& other) noexcept;
    ExportFile(const ExportFile&) = delete;
    ExportFile& operator=(const ExportFile&) = delete;

    /// An empty file that will lie in a directory; false with one line in `error`.
    bool open(const QString& directory, QString* error);
    /// What to open for writing or reading as long as it has no name.
    QString path() const;
    /// Brings it to the disk and gives it a name, or, where there is such a file, that with "-2" and so on
    /// before `suffix`. Empty with one line in `error` if that fails.
    QString keepAs(const QString& stem, const QString& suffix, QString* error);

private:
    bool give(const QString& name);

    int m_file = -1;
    QString m_directory;
    QString m_hiddenName; ///< empty for one without a name
};
