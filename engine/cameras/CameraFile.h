#pragma once

#include "cameras/CameraDescription.h"

/// A list of cameras in a file, which its owner alone may read: JSON with a version. Each write leaves the
/// whole new list or the whole old one.
class CameraFile
{
public:
    static constexpr int Version = 1;

    explicit CameraFile(const QString& path) : m_path(path) {}

    /// Where the user's cameras lie.
    static QString userPath();

    const QString& path() const { return m_path; }
    /// Something is there, be it a list or not.
    bool exists() const;
    /// None if there is no list that can be understood as a whole; `error` tells why on one line. What is
    /// there stays as it is.
    std::optional<QVector<CameraDescription>> read(QString* error);
    /// False, with what is there left in place, where it is not what was last read or written here: something
    /// that could not be understood, for the same reason as then, or the list of another program.
    bool write(const QVector<CameraDescription>& cameras, QString* error);

private:
    QString m_path;
    QString m_fault;                   ///< why the last read failed; empty if it did not
    std::optional<QByteArray> m_known; ///< what was last read or written; nothing if there was no file
};
