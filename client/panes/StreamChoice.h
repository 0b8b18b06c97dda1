#pragma once

#include "cameras/CameraHub.h"

#include <QSize>

/// Which stream a pane of that many pixels takes: the small one as long as it has them. A pane that takes the
/// large one goes back only when the small one has room to spare, so that a size in between does not change
/// it to and fro. An unknown size of the small stream is taken as enough.
inline StreamKind chooseStream(QSize pane, QSize small, StreamKind now)
{
    constexpr double Spare = 0.9;
    const double most = now == StreamKind::Small ? 1.0 : Spare;
    const bool isEnough = pane.width() <= small.width() * most && pane.height() <= small.height() * most;
    return small.isEmpty() || isEnough ? StreamKind::Small : StreamKind::Main;
}
