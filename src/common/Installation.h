#pragma once

#include <QString>

/// The directory that holds all others of the installation: the one above the program's.
QString InstallationRoot();

/// The absolute path of a directory below the root, such as "Organization" or "Resources/icons", without a
/// slash at its end; empty if there is no such directory. An empty name gives the root.
QString InstallationDirectory(const QString& name);

/// The directory of the buttons' pictures; the program's own if there is none.
QString ButtonDirectory();
