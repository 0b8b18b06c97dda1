#pragma once

#include <QString>

/// A name as one of a file or a directory that people can read, at most `mostBytes` long in UTF-8: as it
/// stands if it can be one, or else cut and with the signs that make trouble replaced, ended by a sum that
/// keeps two names apart.
QString fileNameOf(const QString& name, int mostBytes = 120);
