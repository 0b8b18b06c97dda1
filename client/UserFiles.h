#pragma once

#include <QString>

/// Where the client puts what the user asks it to keep.
namespace UserFiles {

enum class Kind
{
    Snapshot,  ///< a PNG picture
    Recording, ///< a Matroska file
};

/// A path that no file has yet, named after the camera and the time, in a directory that exists if it can be
/// made.
QString NewPath(Kind kind, const QString& cameraName);

} // namespace UserFiles
