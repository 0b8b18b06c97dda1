#pragma once

#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

/// A directory in memory for the files that a target writes, one for the process.
class Scratch
{
public:
    Scratch();

    QString Path(const QString& name) const { return m_dir.filePath(name); }

    /// Writes a file below the directory and gives its path. Each writing bears a later time than the one
    /// before, so that nothing that Qt has kept of the file passes for it.
    QString Write(const QString& name, const uint8_t* data, size_t size);

private:
    QTemporaryDir m_dir;
    qint64 m_nWritten = 0;
};

/// Keeps Qt's warnings about bad input off the screen.
void SilenceQt();
