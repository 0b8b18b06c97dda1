#pragma once

#include <QRect>
#include <QSize>

/// The ratio, width to height, of a WndScase: `video` for the video's own size, (0, 0) for fill, and
/// `current` for a number that is no scale mode.
QSize RatioOfScale(int nScale, const QSize& video, const QSize& current);

/// Where the label lies on a surface: as large as the ratio allows, centred, with a rim of one pixel. A ratio
/// with a term below 1 fills the surface. A surface smaller than the rim gives sizes at or below zero.
QRect PlaceOfLabel(const QSize& surface, const QSize& ratio);
