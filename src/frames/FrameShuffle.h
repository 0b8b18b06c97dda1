#pragma once

#include <cstdint>
#include <vector>

/// Where the pixels of a row are in the row of bytes that they are taken from, four at a time: each group of
/// four takes `loads` loads of 16 bytes, and each byte of a load goes where the lookup says.
struct FrameShuffle
{
    /// Loads of a group: 1, 2 or 4; 0 if there are no groups.
    int loads = 0;

    /// One load of a group is one of 32 bytes, and its lookup four numbers of 32-bit pixels in it.
    bool wide = false;

    /// Of each load at its Place(), the byte of the source row that it starts at.
    std::vector<int32_t> starts;

    /// Of each load at its Place() 16 bytes, one for each byte of the group: the byte of the load that goes
    /// there, 0x80 for none.
    std::vector<uint8_t> lookup;

    /// The loads of two neighbours, the groups 0 and 1, 2 and 3 and so on, lie side by side, so that both
    /// groups can be looked up at once.
    static int Place(int group, int load, int loads) { return group / 2 * 2 * loads + load * 2 + group % 2; }
};

/// Writes the groups from `from` up to, not with, `to` as opaque 32-bit pixels. `target` is where the first
/// of them goes. It takes the best instructions that the processor has.
void ShuffleGroups(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to);

/// Whether this processor looks up pixels in 32 bytes at once, and a wide FrameShuffle is worth it.
bool LooksUpWide();

/// Has the bytes fetched into the cache.
void PrefetchBytes(const uint8_t* bytes, int count);
