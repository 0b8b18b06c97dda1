#pragma once

#include <QString>
#include <QUuid>

/// A recorder as the shared index knows it.
struct FleetRecorder
{
    QString id;   ///< of its archive, for good; a UUID
    QString name; ///< for people
    QString site;
    QString url;    ///< where others read its archive: a directory, or a URL of file, http or https
    QString live{}; ///< where a relay of its cameras is, as `rtsp://host:port`; empty without one
    QString instance = QUuid::createUuid().toString(QUuid::WithoutBraces); ///< of this run
};
