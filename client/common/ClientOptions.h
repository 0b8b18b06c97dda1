#pragma once

#include "cameras/SourceAddress.h"
#include "common/SiteAddress.h"

#include <QStringList>
#include <QVector>

#include <optional>

/// What the command line asks for. Words that mean nothing are told in `complaints`, a line each, and left
/// out.
struct ClientOptions
{
    QVector<SourceAddress> sources; ///< of each camera, no name twice, for a trial
    bool isSynthetic = false;       ///< the built-in cameras alone, which are kept nowhere
    QString camerasPath;            ///< the file of the cameras; empty for the user's own
    QVector<SiteAddress>
        sites; ///< indexes of several recorders, no name twice; none for cameras of one's own
    std::optional<Login> relayLogin;     ///< to relays that the indexes name; none leaves them alone
    QString language;                    ///< language of this start, empty for the one last chosen
    QString picturesDir;                 ///< write pictures there and end; empty to run
    QString logPath;                     ///< append the log of events to this file; empty for none
    QString placesPath;                  ///< keep a file of where widgets lie; empty for none
    QString archiveDir;                  ///< where recordings lie; empty for the user's data directory
    std::optional<int> archiveGigabytes; ///< how much they may hold; the oldest go
    std::optional<int> archiveDays;      ///< how old they may become
    std::optional<bool> usesDevices;     ///< decodes by devices where there are any
    QString view;                        ///< shown at the start; empty for the last one
    bool isFullScreen = false;           ///< the live deck fills the screen at the start
    bool isLocked = false;               ///< and is left by a password only
    bool help = false;
    bool version = false;
    QStringList complaints;
};

/// Reads the arguments behind the program's name.
ClientOptions parseClientOptions(const QStringList& arguments);

/// An index more, as --index takes it; a complaint where it is none.
void addSite(ClientOptions& options, const QString& text);

/// The text that --help prints.
QString clientHelp();
