#include "shareForLines/fast/thick/ThickBounds.h"

#include <algorithm>
#include <cmath>

#include "shareForLines/disc/CoverageTable.h"
#include "shareForLines/simd/Begin.h"
#include "shareForLines/simd/Lanes.h"

namespace streakfall {
namespace {

using namespace lanes;

// Pixels from a circle to what a dab has interior for sure, and to what it leaves. (Outside, the
// signed distance is more than the distance.)
constexpr double kInner = 1.0 + 0.01, kOuter = kNoCoverage + 0.01;
constexpr double kBow = 0.2;  // of a path that is not straight, between samples
constexpr float kFar = 1e6f;

}  // namespace

void ThickBounds::sample(const ThickDabs& dabs, std::int32_t stride, double bow) {
    count = 0;
    const double gap = stride * (ThickDabs::kMaxStep + 2.0 * ThickDabs::kQuantum);
    const std::int32_t last = dabs.end() - 1;
    for (std::int32_t k = dabs.begin();; k = std::min(k + stride, last)) {
        const auto i = static_cast<std::size_t>(count++), e = ThickDabs::at(k);
        float widest = dabs.radius[e];
        for (std::int32_t n = std::max(k - stride, dabs.begin()); n <= std::min(k + stride, last);
             ++n) {
            widest = std::max(widest, dabs.radius[ThickDabs::at(n)]);
        }
        const double inner = dabs.exactRadius[e] - kInner;
        const double outer = static_cast<double>(widest) + kOuter + ThickDabs::kQuantum + bow;
        major[i] = dabs.major[e];
        minor[i] = dabs.minor[e];
        core2[i] = static_cast<float>(inner * inner);
        reach2[i] = static_cast<float>(outer * outer + gap * gap / 4.0);
        reach[i] = std::sqrt(reach2[i]);
        if (k == last) break;
    }
}

void ThickBounds::find(const ThickDabs& dabs, bool straight, const Range& majorLimits,
                       const Range& minorLimits) {
    const std::int32_t stride =
        straight ? std::clamp(static_cast<std::int32_t>(std::sqrt(0.8 * dabs.smallest)), 2, 12) : 2;
    sample(dabs, stride, straight ? 0.0 : kBow);
    // Intervals of neighbours overlap.
    const float leastHalf = static_cast<float>(stride) + 0.25f;
    const Floats leastChord2 = lanes::all(leastHalf * leastHalf), zero = lanes::all(0.0f);
    const float ends = reach[0] + reach[static_cast<std::size_t>(count - 1)] +
                       static_cast<float>(dabs.largest) + 8.0f;
    const float lowest = major[0] - ends,
                highest = major[static_cast<std::size_t>(count - 1)] + ends;
    all.from = std::max(majorLimits.from, static_cast<std::int32_t>(std::floor(lowest)));
    all.to = std::min(majorLimits.to, static_cast<std::int32_t>(std::ceil(highest)));
    all.to = std::min(all.to, all.from + kMaxPlaces - 1);
    const float widest = *std::max_element(reach.begin(), reach.begin() + count);
    std::int32_t from = 0, to = 0;  // samples that may reach the eight places
    for (std::int32_t place = all.from; place <= all.to; place += kCount) {
        const auto left = static_cast<float>(place), right = static_cast<float>(place + kCount - 1);
        while (from < count && major[static_cast<std::size_t>(from)] < left - widest) ++from;
        while (to < count && major[static_cast<std::size_t>(to)] <= right + widest) ++to;
        const Floats at = toFloats(lanes::all(place) + kIota);
        Floats reachLow = lanes::all(kFar), reachHigh = lanes::all(-kFar);
        Floats coreLow = lanes::all(kFar), coreHigh = lanes::all(-kFar);
        Ints cored = lanes::all(0), torn = cored;  // has an interval; has two apart
        for (std::int32_t s = from; s < to; ++s) {
            const auto i = static_cast<std::size_t>(s);
            const Floats off = at - lanes::all(major[i]), off2 = off * off;
            const Floats middle = lanes::all(minor[i]);
            const Floats outer2 = lanes::all(reach2[i]) - off2;
            const Floats outer = where(outer2 >= zero, root(most(outer2, zero)), lanes::all(-kFar));
            reachLow = least(reachLow, middle - outer);
            reachHigh = most(reachHigh, middle + outer);
            const Floats inner2 = lanes::all(core2[i]) - off2;
            const Ints chord = inner2 >= leastChord2;
            const Floats inner = where(chord, root(most(inner2, zero)), lanes::all(-kFar));
            const Floats low = middle - inner, high = middle + inner;
            torn |= chord & cored & ((low > coreHigh) | (high < coreLow));
            cored |= chord;
            coreLow = least(coreLow, low);
            coreHigh = most(coreHigh, high);
        }
        coreLow = where(torn, lanes::all(kFar), coreLow);
        const Ints first = lanes::all(minorLimits.from), last = lanes::all(minorLimits.to);
        const Floats rounding = lanes::all(0.01f);
        const auto n = static_cast<std::size_t>(place - all.from);
        lanes::store(&reachFrom[n], most(floorOf(reachLow - rounding), first));
        lanes::store(&reachTo[n], least(ceilOf(reachHigh + rounding), last));
        lanes::store(&coreFrom[n], most(ceilOf(coreLow + rounding), first));
        lanes::store(&coreTo[n], least(floorOf(coreHigh - rounding), last));
    }
}

}  // namespace streakfall

#include "shareForLines/simd/End.h"
