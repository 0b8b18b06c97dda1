#pragma once

#include <QString>

/// What there is to play in a recorded file.
struct SegmentContent
{
    enum Kind
    {
        Plays,
        Empty,     ///< all of it was read, and there is no picture in it
        Unreadable ///< so that nobody knows
    };

    Kind kind = Unreadable;
    qint64 durationMs = 0; ///< above 0 if it plays
    QString reason;        ///< why it can't be read, one line
};

/// Looks into a file, also into one that was not ended.
SegmentContent contentOf(const QString& path);
