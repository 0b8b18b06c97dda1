#pragma once

#include "cameras/SourceAddress.h"

#include <QRectF>
#include <QVector>

/// What is known of a camera, but for its password, which is kept elsewhere.
struct CameraDescription
{
    enum class Recording
    {
        Always,
        OnMotion, ///< from a few seconds before something moves until a while after
        Never,
    };

    enum class Ptz
    {
        None,
        Onvif,
    };

    static constexpr int LeastSensitivity = 1;
    static constexpr int UsualSensitivity = 50;
    static constexpr int MostSensitivity = 100;

    QString id;         ///< never changes, and no other camera ever has it: the key of all that is kept
    QString name;       ///< what people call it; no two cameras of a list share one
    QString group;      ///< what it is shown under, "Site" or "Site/Building"; may be empty
    QString recordedAs; ///< its name in the archive, the one it had first; empty for `name`
    QString mainUrl;    ///< as in SourceAddress, without user and password
    QString smallUrl;   ///< may be empty
    QString user;       ///< may be empty
    bool isPlainAllowed = false; ///< its password may go over a line that others can read
    SourceAddress::Transport transport = SourceAddress::Transport::Auto;
    Recording recording = Recording::Always;
    int sensitivity = UsualSensitivity; ///< the greater, the less has to move
    QVector<QRectF> zones; ///< where motion counts, in parts of the picture, 0 to 1; none for all of it
    Ptz ptz = Ptz::None;
    bool isEnabled = true;
    QString onvifAddress;     ///< of the device service; empty for a camera without ONVIF
    QString onvifCertificate; ///< SHA-256 of one that its user trusts, though nobody vouches for it
    QString onvifMainProfile;
    QString onvifSmallProfile;

    const QString& archiveName() const { return recordedAs.isEmpty() ? name : recordedAs; }
    /// Where its pictures come from; none for a disabled camera and for one without a usable address, of
    /// which `error` tells, on one line and without a password.
    std::optional<SourceAddress> address(const QString& password, QString* error = nullptr) const;
};

bool operator==(const CameraDescription& one, const CameraDescription& other);
inline bool operator!=(const CameraDescription& one, const CameraDescription& other)
{
    return !(one == other);
}

/// An id that no other camera has.
QString newCameraId();

/// Why these can't be the cameras of one list, such as two of one name, on one line; empty if they can.
QString faultOf(const QVector<CameraDescription>& cameras);
