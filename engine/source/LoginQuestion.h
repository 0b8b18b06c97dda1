#pragma once

#include "packets/InputStreams.h"

#include <QUrl>

/// How a camera wants to be told who asks for its stream.
struct LoginQuestion
{
    enum class Way
    {
        Unknown, ///< it asks for nothing, or in a way of its own
        Digest,  ///< which doesn't give the password away
        Plain,   ///< the password itself, or there is no telling
    };

    int error = 0; ///< FFmpeg's, if it could not be reached
    Way way = Way::Unknown;
    bool isAnswered = false; ///< somebody said something

    /// Asks for a stream of rtsp:// or http:// without a login, and once more wherever the camera sends who
    /// asks; nothing of other lines. FFmpeg answers whatever is asked, so this has to be known before it may
    /// have the password.
    static LoginQuestion ask(const QUrl& stream, const AVIOInterruptCB& interrupt);
};
