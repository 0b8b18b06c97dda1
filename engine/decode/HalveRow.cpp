#include "decode/HalveRow.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "decode/HalveRow.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace halverow {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

int HalveVectors(const uint8_t*, const uint8_t*, uint8_t*, int)
{
    return 0;
}

#else

/// Returns how many pixels were written: as many as fill whole vectors.
int HalveVectors(const uint8_t* upper, const uint8_t* lower, uint8_t* target, int width)
{
    const hn::ScalableTag<uint8_t> bytes;
    const hn::RepartitionToWide<decltype(bytes)> sums;
    const hn::RebindToSigned<decltype(sums)> numbers;
    const hn::Rebind<uint8_t, decltype(numbers)> halves;
    const auto low = hn::Set(sums, 0xff);
    const auto pairs = [&](const uint8_t* row) {
        const auto both = hn::BitCast(sums, hn::LoadU(bytes, row));
        return hn::Add(hn::And(both, low), hn::ShiftRight<8>(both));
    };
    const int step = int(hn::Lanes(sums));
    int x = 0;
    for (; x + step <= width; x += step) {
        const auto four = hn::Add(hn::Add(pairs(upper + 2 * x), pairs(lower + 2 * x)), hn::Set(sums, 2));
        const auto mean = hn::BitCast(numbers, hn::ShiftRight<2>(four));
        hn::StoreU(hn::DemoteTo(halves, mean), halves, target + x);
    }
    return x;
}

#endif

} // namespace HWY_NAMESPACE
} // namespace halverow
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace halverow {

HWY_EXPORT(HalveVectors);

int halveVectors(const uint8_t* upper, const uint8_t* lower, uint8_t* target, int width)
{
    return HWY_DYNAMIC_DISPATCH(HalveVectors)(upper, lower, target, width);
}

} // namespace halverow

void halveRow(const uint8_t* upper, const uint8_t* lower, uint8_t* target, int width)
{
    for (int x = halverow::halveVectors(upper, lower, target, width); x < width; ++x) {
        const int sum = upper[2 * x] + upper[2 * x + 1] + lower[2 * x] + lower[2 * x + 1];
        target[x] = uint8_t((sum + 2) >> 2);
    }
}

#endif
