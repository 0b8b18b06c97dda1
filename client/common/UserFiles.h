#pragma once

#include <QString>

/// Where the client puts what the user asks it to keep.
namespace UserFiles {

enum class Kind
{
    Snapshot,  ///< a PNG picture
    Recording, ///< a Matroska file
};

/// Where files of a kind go while the user has chosen no other place.
QString usualDirectory(Kind kind);

/// Where files of a kind go; it exists if it can be made.
QString directory(Kind kind);

/// A path that no file has yet, named after the camera and the time of its first picture, milliseconds since
/// 1970, in the directory of its kind. A time that no clock has told, as that of a file that is played,
/// counts as now.
QString newPath(Kind kind, const QString& cameraName, qint64 wallMs = 0);

} // namespace UserFiles
