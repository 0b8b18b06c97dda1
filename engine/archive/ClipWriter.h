#pragma once

#include "archive/SegmentTrack.h"

/// Writes what pieces hold from one moment to another into one Matroska file, as it is: it begins with the
/// key frame at or before the first moment, and leaves gaps out. False with one line in `error`; what could
/// be written by then is kept. May run in any thread.
bool writeClip(const QVector<TrackPiece>& pieces, qint64 fromMs, qint64 toMs, const QString& path,
               QString* error);
