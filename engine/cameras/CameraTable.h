#pragma once

#include "cameras/CameraDescription.h"

#include <QHash>
#include <QStringList>

/// Cameras as rows of text for spreadsheets and other programs: comma separated values in UTF-8, the names of
/// the columns first.
namespace CameraTable {

/// What was read, and which lines were left out, each with its reason.
struct Content
{
    QVector<CameraDescription> cameras; ///< with ids of their own
    QHash<QString, QString> passwords;  ///< by id
    QStringList faults;
};

/// Reads a table whose first line names the columns, in any order, or, without such a line, one camera a line
/// as "name, address, user, password" or an address alone, whose device then is its name. Commas, semicolons
/// and tabs part columns. A name that is taken, there or in `taken`, gets a number.
Content read(const QString& text, const QStringList& taken);

/// A table that read() understands; with passwords for those that are given.
QString write(const QVector<CameraDescription>& cameras, const QHash<QString, QString>& passwords = {});

} // namespace CameraTable
