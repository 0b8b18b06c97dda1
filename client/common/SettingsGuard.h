#pragma once

#include <QString>

/// True if QSettings can be given the file: there is none, or it is one, not a pipe or a directory, of a size
/// that settings have, and holds no serialised object, which may take any amount of memory when it is read.
bool isSafeSettings(const QString& path);

/// Puts a file of the user's settings that is not safe beside its place, so that the settings start anew.
/// Gives its new path; empty if all is well.
QString setUnsafeSettingsAside();
