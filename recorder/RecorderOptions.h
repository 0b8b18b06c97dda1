#pragma once

#include "archive/Archive.h"
#include "cameras/CameraPasswords.h"
#include "cameras/SourceAddress.h"
#include "fleet/FleetAddress.h"

#include <QStringList>
#include <QVector>

/// What the command line asks for. What is wrong with it is told in `complaints`, a line each.
struct RecorderOptions
{
    QVector<SourceAddress> sources; ///< no name twice
    QString camerasPath;            ///< the file of the cameras; the user's own where no source is named
    QString passwordsPath;          ///< the file of their passwords
    bool hasPasswordsFile = false;
    QString passwordOf; ///< keep the password of this camera, and end
    QString archiveDir; ///< where recordings lie; at first where the user's client has them
    ArchiveLimits limits;
    bool usesDevices = true;           ///< decodes by devices where there are any
    std::optional<FleetAddress> index; ///< the shared one, which says what to record; none for the sources
    QString name;                      ///< of this recorder in the shared index; at first the machine's
    QString site;                      ///< which cameras it may record besides those of no site
    QString url;                       ///< where others read the archive; at first its directory
    QString live;                      ///< where a relay of its cameras is; empty without one
    bool migrate = false;              ///< make the shared index one of this version and end
    bool rebuild = false;              ///< make the index anew and end
    bool help = false;
    bool version = false;
    QStringList complaints;

    /// Where passwords are named a file no keyring is asked.
    CameraPasswords::Where wherePasswordsAre() const
    {
        return hasPasswordsFile ? CameraPasswords::Where::File : CameraPasswords::Where::Keyring;
    }
};

/// Reads the arguments behind the program's name.
RecorderOptions parseRecorderOptions(const QStringList& arguments);

/// The text that --help prints.
QString recorderHelp();
