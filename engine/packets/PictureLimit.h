#pragma once

#include <cstdint>

/// How large a picture may be. A small file can name sides that take gigabytes before a pixel of it is read.
namespace PictureLimit {

constexpr int LongestSide = 16384;
constexpr int64_t MostPixels = 64'000'000;

constexpr bool allows(int width, int height)
{
    return width <= LongestSide && height <= LongestSide && int64_t(width) * height <= MostPixels;
}

} // namespace PictureLimit
