#pragma once

#include <QString>

/// The absolute path of a directory of the installation, such as "Organization" or "Resources/icons", without
/// a slash at its end; empty if there is no such directory. An empty name gives the one that holds all
/// others, above the program's.
QString InstallationDirectory(const QString& name);

/// The directory of the buttons' pictures; the program's own if there is none.
QString ButtonDirectory();
