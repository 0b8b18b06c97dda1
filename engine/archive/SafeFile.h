#pragma once

#include <QString>

/// Brings a file to the disk and then gives it its name, so that a file of that name is whole after any
/// failure of the machine. Nothing is written over. False if it has not got the name; `error` is one line,
/// also where it is the disk's directory alone that could not be brought there.
bool renameSafely(const QString& from, const QString& to, QString* error);
