#pragma once

#include <QStringList>

/// Where the files lie that the client and the library bring: beside the program's own directory.
namespace ClientInstallation {

/// The path of a file or directory of the installation, such as "languages/German.ini", be it there or not.
QString path(const QString& name);

/// The names of the directories that should be there and aren't.
QStringList missing();

} // namespace ClientInstallation
