#include "panes/FrameShuffle.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "panes/FrameShuffle.cpp"
#include <hwy/foreach_target.h>

#include <hwy/cache_control.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace frameshuffle {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

template <int Loads>
void Shuffle(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to)
{
    for (int pixel = from * 4; pixel < to * 4; ++pixel) {
        const int load = pixel * Loads / 4;
        const uint8_t* bytes = source + shuffle.starts[load];
        const uint8_t* lookup = shuffle.lookup.data() + load * 16 + pixel % 4 * 4;
        *target++ = 0xff000000u | bytes[lookup[2]] << 16 | bytes[lookup[1]] << 8 | bytes[lookup[0]];
    }
}

#else

template <int Loads>
void Shuffle(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to)
{
    const hn::FixedTag<uint8_t, 16> bytes;
    const hn::FixedTag<uint32_t, 4> pixels;
    const auto opaque = hn::BitCast(bytes, hn::Set(pixels, 0xff000000u));
    const int32_t* starts = shuffle.starts.data() + from * Loads;
    const uint8_t* lookup = shuffle.lookup.data() + from * Loads * 16;
    for (int group = from; group < to; ++group, target += 4) {
        auto four = opaque;
        for (int i = 0; i < Loads; ++i, ++starts, lookup += 16) {
            const auto load = hn::LoadU(bytes, source + *starts);
            four = hn::Or(four, hn::TableLookupBytesOr0(load, hn::LoadU(bytes, lookup)));
        }
        hn::StoreU(hn::BitCast(pixels, four), pixels, target);
    }
}

#endif

#if HWY_CAP_GE256

void ShufflePairs(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to)
{
    const hn::FixedTag<uint8_t, 16> half;
    const hn::FixedTag<uint8_t, 32> bytes;
    const hn::FixedTag<uint32_t, 8> pixels;
    const auto opaque = hn::BitCast(bytes, hn::Set(pixels, 0xff000000u));
    const int32_t* starts = shuffle.starts.data() + from;
    const uint8_t* lookup = shuffle.lookup.data() + from * 16;
    for (int group = from; group < to; group += 2, starts += 2, lookup += 32, target += 8) {
        const auto lower = hn::LoadU(half, source + starts[0]);
        const auto load = hn::Combine(bytes, hn::LoadU(half, source + starts[1]), lower);
        const auto eight = hn::Or(opaque, hn::TableLookupBytesOr0(load, hn::LoadU(bytes, lookup)));
        hn::StoreU(hn::BitCast(pixels, eight), pixels, target);
    }
}

/// Most groups of an enlarged frame go in pairs, which halves the stores.
void ShuffleSingles(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to)
{
    const int paired = (to - from) / 2 * 2;
    ShufflePairs(shuffle, source, target, from, from + paired);
    Shuffle<1>(shuffle, source, target + paired * 4, from + paired, to);
}

#else

void ShuffleSingles(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to)
{
    Shuffle<1>(shuffle, source, target, from, to);
}

#endif

void ShuffleAll(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to)
{
    if (shuffle.loads == 1)
        ShuffleSingles(shuffle, source, target, from, to);
    else if (shuffle.loads == 2)
        Shuffle<2>(shuffle, source, target, from, to);
    else
        Shuffle<4>(shuffle, source, target, from, to);
}

} // namespace HWY_NAMESPACE
} // namespace frameshuffle
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace frameshuffle {
HWY_EXPORT(ShuffleAll);
}

void ShuffleGroups(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to)
{
    using namespace frameshuffle;
    HWY_DYNAMIC_DISPATCH(ShuffleAll)(shuffle, source, target, from, to);
}

void PrefetchBytes(const uint8_t* bytes, int count)
{
    constexpr int LINE = 64;
    for (int i = 0; i < count; i += LINE)
        hwy::Prefetch(bytes + i);
}

#endif
