#include "frames/FrameShuffle.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frames/FrameShuffle.cpp"
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
        const int place = FrameShuffle::Place(pixel / 4, pixel % 4 * Loads / 4, Loads);
        const uint8_t* bytes = source + shuffle.starts[place];
        const uint8_t* lookup = shuffle.lookup.data() + place * 16 + pixel % 4 * 4;
        *target++ = 0xff000000u | bytes[lookup[2]] << 16 | bytes[lookup[1]] << 8 | bytes[lookup[0]];
    }
}

#else

template <int Loads>
void ShuffleSingles(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to)
{
    const hn::FixedTag<uint8_t, 16> bytes;
    const hn::FixedTag<uint32_t, 4> pixels;
    const auto opaque = hn::BitCast(bytes, hn::Set(pixels, 0xff000000u));
    for (int group = from; group < to; ++group, target += 4) {
        auto four = opaque;
        for (int i = 0; i < Loads; ++i) {
            const int place = FrameShuffle::Place(group, i, Loads);
            const auto load = hn::LoadU(bytes, source + shuffle.starts[place]);
            const auto lookup = hn::LoadU(bytes, shuffle.lookup.data() + place * 16);
            four = hn::Or(four, hn::TableLookupBytesOr0(load, lookup));
        }
        hn::StoreU(hn::BitCast(pixels, four), pixels, target);
    }
}

#if HWY_CAP_GE256

/// From an even group to an even group, with both of a pair in one register.
template <int Loads>
void ShufflePairs(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to)
{
    const hn::FixedTag<uint8_t, 16> half;
    const hn::FixedTag<uint8_t, 32> bytes;
    const hn::FixedTag<uint32_t, 8> pixels;
    const auto opaque = hn::BitCast(bytes, hn::Set(pixels, 0xff000000u));
    const int first = FrameShuffle::Place(from, 0, Loads);
    const int32_t* starts = shuffle.starts.data() + first;
    const uint8_t* lookup = shuffle.lookup.data() + first * 16;
    for (int group = from; group < to; group += 2, target += 8) {
        auto eight = opaque;
        for (int i = 0; i < Loads; ++i, starts += 2, lookup += 32) {
            // The loads are what this loop takes its time for, so both starts come in one.
            uint64_t two;
            std::memcpy(&two, starts, sizeof two);
            const auto lower = hn::LoadU(half, source + uint32_t(two));
            const auto load = hn::Combine(bytes, hn::LoadU(half, source + (two >> 32)), lower);
            eight = hn::Or(eight, hn::TableLookupBytesOr0(load, hn::LoadU(bytes, lookup)));
        }
        hn::StoreU(hn::BitCast(pixels, eight), pixels, target);
    }
}

#else

template <int Loads>
void ShufflePairs(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to)
{
    const hn::FixedTag<uint8_t, 16> bytes;
    const hn::FixedTag<uint32_t, 4> pixels;
    const auto opaque = hn::BitCast(bytes, hn::Set(pixels, 0xff000000u));
    const int first = FrameShuffle::Place(from, 0, Loads);
    const int32_t* starts = shuffle.starts.data() + first;
    const uint8_t* lookup = shuffle.lookup.data() + first * 16;
    for (int group = from; group < to; group += 2, target += 8) {
        auto lower = opaque;
        auto upper = opaque;
        for (int i = 0; i < Loads; ++i, starts += 2, lookup += 32) {
            const auto one = hn::LoadU(bytes, source + starts[0]);
            const auto other = hn::LoadU(bytes, source + starts[1]);
            lower = hn::Or(lower, hn::TableLookupBytesOr0(one, hn::LoadU(bytes, lookup)));
            upper = hn::Or(upper, hn::TableLookupBytesOr0(other, hn::LoadU(bytes, lookup + 16)));
        }
        hn::StoreU(hn::BitCast(pixels, lower), pixels, target);
        hn::StoreU(hn::BitCast(pixels, upper), pixels, target + 4);
    }
}

#endif

template <int Loads>
void Shuffle(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to)
{
    const int even = std::min(to, from + from % 2);
    const int odd = even + (to - even) / 2 * 2;
    ShuffleSingles<Loads>(shuffle, source, target, from, even);
    ShufflePairs<Loads>(shuffle, source, target + (even - from) * 4, even, odd);
    ShuffleSingles<Loads>(shuffle, source, target + (odd - from) * 4, odd, to);
}

#endif

#if HWY_CAP_GE256

void ShuffleWide(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to)
{
    const hn::FixedTag<uint8_t, 32> bytes;
    const hn::FixedTag<uint32_t, 4> half;
    const hn::FixedTag<uint32_t, 8> pixels;
    const auto opaque = hn::Set(pixels, 0xff000000u);
    const auto take = [&](int group, auto numbers) HWY_ATTR {
        const auto load = hn::BitCast(pixels, hn::LoadU(bytes, source + shuffle.starts[group]));
        return hn::TableLookupLanes(load, numbers);
    };
    for (int group = from; group < to; group += 2, target += 8) {
        const auto lookup = hn::BitCast(pixels, hn::LoadU(bytes, shuffle.lookup.data() + group * 16));
        const auto numbers = hn::IndicesFromVec(pixels, lookup);
        const auto lower = hn::Or(take(group, numbers), opaque);
        if (group + 1 == to)
            hn::StoreU(hn::LowerHalf(half, lower), half, target);
        else
            hn::StoreU(hn::ConcatUpperLower(pixels, hn::Or(take(group + 1, numbers), opaque), lower), pixels,
                       target);
    }
}

#else

void ShuffleWide(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to)
{
    for (int pixel = from * 4; pixel < to * 4; ++pixel, ++target) {
        uint32_t number;
        std::memcpy(&number, shuffle.lookup.data() + pixel * 4, sizeof number);
        std::memcpy(target, source + shuffle.starts[pixel / 4] + number * 4, sizeof *target);
        *target |= 0xff000000u;
    }
}

#endif

bool LooksUpWide()
{
    return HWY_CAP_GE256;
}

void ShuffleAll(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to)
{
    if (shuffle.wide)
        ShuffleWide(shuffle, source, target, from, to);
    else if (shuffle.loads == 1)
        Shuffle<1>(shuffle, source, target, from, to);
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
HWY_EXPORT(LooksUpWide);
} // namespace frameshuffle

void ShuffleGroups(const FrameShuffle& shuffle, const uint8_t* source, uint32_t* target, int from, int to)
{
    using namespace frameshuffle;
    HWY_DYNAMIC_DISPATCH(ShuffleAll)(shuffle, source, target, from, to);
}

bool LooksUpWide()
{
    using namespace frameshuffle;
    return HWY_DYNAMIC_DISPATCH(LooksUpWide)();
}

void PrefetchBytes(const uint8_t* bytes, int count)
{
    constexpr int LINE = 64;
    for (int i = 0; i < count; i += LINE)
        hwy::Prefetch(bytes + i);
}

#endif
