#pragma once

#include <QString>

/// The file of an index as one file among others, without SQLite. None of this opens it: who closes a file
/// that SQLite has open in the same process takes SQLite's locks away, and another program may then delete
/// the log that is in use.
namespace IndexFile {

/// Its number in the file system; 0 if there is none.
quint64 inode(const QString& path);

/// False if it is gone or shorter than any index is.
bool looksWhole(const QString& path);

/// The name of an index that was set aside.
QString asideName(const QString& path);

/// Puts a damaged index aside under another name, in place of one that lies there, so that a new one can be
/// made. False if it stays where it is.
bool setAside(const QString& path);

} // namespace IndexFile
