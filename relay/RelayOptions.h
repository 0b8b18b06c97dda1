#pragma once

#include "fleet/FleetAddress.h"

#include <QStringList>

/// What the command line asks for. What is wrong with it is told in `complaints`, a line each.
struct RelayOptions
{
    QString camerasPath;               ///< the file of the cameras, where no index is named
    std::optional<FleetAddress> index; ///< the shared one, whose cameras are all handed on
    QString passwordsPath;             ///< the file of the cameras' passwords
    bool hasPasswordsFile = false;
    QString desksPath; ///< the file of who may look
    QString listenAt = "0.0.0.0";
    int port = 8554;
    bool help = false;
    bool version = false;
    QStringList complaints;
};

/// Reads the arguments behind the program's name.
RelayOptions parseRelayOptions(const QStringList& arguments);

/// The text that --help prints.
QString relayHelp();
