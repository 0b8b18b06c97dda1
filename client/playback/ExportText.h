#pragma once

#include "archive/ClipCopy.h"

/// What the export dialog says, in the words of this start's language.
namespace ExportText {

/// The rows of the field for the format.
enum Format
{
    Mp4,
    Matroska,
    OnePicture,
};

QString size(qint64 bytes);
QString format(int format);
/// What was not taken as it was recorded, a line each.
QString remarks(const ExportRemarks& remarks);

} // namespace ExportText
