#pragma once

#include <QString>

/// Takes `directory` for the one that holds all others, and `writableDirectory` for what the user draws.
/// Empty ones stand for the defaults: above the program's directory, and in the installation. What was read
/// before stays as it is.
void ChooseInstallation(const QString& directory, const QString& writableDirectory);

/// The absolute path of a directory of the installation, such as "Organization" or "Resources/icons", without
/// a slash at its end; empty if there is no such directory. An empty name gives the one that holds all
/// others.
QString InstallationDirectory(const QString& name);

/// The directory of the buttons' pictures; the program's own if there is none.
QString ButtonDirectory();

/// Where what the user draws is kept; empty for the installation itself.
QString WritableDirectory();
