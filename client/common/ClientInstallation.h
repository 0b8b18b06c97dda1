#pragma once

#include <QStringList>

/// Where the files lie that the client and the library bring: in `../share/panedeck` from the program's own
/// directory, or, as the build tree has them, above it.
namespace ClientInstallation {

/// The path of a file or directory of the installation, such as "languages/German.ini", be it there or not.
QString path(const QString& name);

/// Where the user's layouts are kept if not in the installation, which the user may not write; empty if
/// there.
QString writableDirectory();

/// The names of the directories that should be there and aren't.
QStringList missing();

} // namespace ClientInstallation
