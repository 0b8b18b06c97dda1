#pragma once

#include <QSize>

/// In what size a source's pictures are shown, in pixels of the screen; empty where that is not known.
struct ShownSize
{
    QSize most;
    bool isEnlarged = false; ///< smaller pictures are brought up to it

    /// The size in which a picture is best given out.
    QSize of(QSize picture) const
    {
        if (most.isEmpty())
            return picture;
        return isEnlarged ? most : most.boundedTo(picture);
    }
};
