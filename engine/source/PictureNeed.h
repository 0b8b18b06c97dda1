#pragma once

/// Which pictures of a live source are worth decoding now; each kind includes those before it.
enum class PictureNeed
{
    None,      ///< nobody sees it
    KeyFrames, ///< nobody sees it, but its motion is looked at
    All,
};
