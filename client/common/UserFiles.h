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

/// A path that no file has yet, named after the camera and the time, in the directory of its kind.
QString newPath(Kind kind, const QString& cameraName);

} // namespace UserFiles
