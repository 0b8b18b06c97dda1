#pragma once

#include <QMetaType>
#include <QString>
#include <QVector>

/// A camera that somebody turns, or may turn before anybody else.
struct PtzLease
{
    QString camera; ///< its id
    QString holder; ///< who has it, for people
    QString asking; ///< who asks for it; empty for nobody
    bool isMine = false;
    bool isAskedByMe = false;
    qint64 leftMs = 0; ///< as the server has it
};

/// What came of wanting a camera's lease.
struct PtzAnswer
{
    QString camera;
    bool isMine = false;
    qint64 leftMs = 0;
    QString holder;  ///< who has it
    QString refusal; ///< why the server can't say, one line
};

/// What the role may do with which somebody has logged in.
struct FleetRights
{
    bool changesCameras = true;
    bool acknowledges = true;
    bool steers = true;
    bool changesViews = true;
};

/// A view that all desks have.
struct SharedView
{
    QString name;
    QString description; ///< JSON
};

Q_DECLARE_METATYPE(QVector<PtzLease>)
Q_DECLARE_METATYPE(PtzAnswer)
Q_DECLARE_METATYPE(FleetRights)
Q_DECLARE_METATYPE(QVector<SharedView>)
