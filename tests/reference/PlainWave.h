// The plain twin's ramp curves and wave.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "lines/RandomSequence.h"
#include "shareForLines/path/StrokeShape.h"
#include "shareForLines/path/WaveTable.h"

namespace reference {

// A polyline read at u.
inline double curveAt(const std::vector<streakfall::ShapePoint>& points, double u) {
    const auto b = std::ranges::lower_bound(points, u, {}, &streakfall::ShapePoint::position);
    if (b == points.end()) return points.back().value;
    if (b == points.begin()) return b->value;
    const auto a = b - 1;
    return a->value + ((u - a->position) / (b->position - a->position)) * (b->value - a->value);
}

// 100 knots in a circle, walked one pixel a step.
class Wave {
  public:
    // form: amounts, lengths and phases. place: of the line's start.
    Wave(const streakfall::WaveTable& form, std::int32_t seed, double place) {
        std::uint32_t state = static_cast<std::uint32_t>(seed);
        for (int i = 0; i < 2; ++i) state = streakfall::lcgStep(state);
        double sign = 1.0, total = 0.0;
        for (std::size_t i = 0; i < kKnots; ++i) {
            double u = streakfall::drawUnit(state);
            amplitudes[i] = (1.0 - u * form.amountRandom) * form.amount * sign;
            sign = -sign;
            u = streakfall::drawUnit(state);
            const double spread = (u - 1.0 + 1.0 + u) * 1.75 / 2.0 - 0.75;
            lengths[i] = std::max(4.0, (spread * form.wavelengthRandom + 1.0) * form.wavelength);
            total += lengths[i];
        }
        start(place + form.phase + streakfall::drawUnit(state) * form.phaseRandom, total);
    }

    // Pixels sideways of the next step.
    double next() {
        if (walked > lengths[knot]) {
            walked -= lengths[knot];
            knot = (knot + 1) % kKnots;
        }
        const double u = walked / lengths[knot];
        walked += 1.0;
        const auto p = [&](std::size_t ahead) { return amplitudes[(knot + 99 + ahead) % kKnots]; };
        const double u2 = u * u, u3 = u * u * u;
        return ((3.0 * (u2 - u) + 1.0 - u3) * p(0) + (4.0 - 6.0 * u2 + 3.0 * u3) * p(1) +
                (3.0 * (u + u2) + 1.0 - 3.0 * u3) * p(2) + u3 * p(3)) *
               0.16666666666666666;
    }

  private:
    static constexpr std::size_t kKnots = 100;

    // Enters the circle at p, forward or backward from knot 0.
    void start(double p, double total) {
        if (std::fabs(p) > 1e7) p = std::fmod(p, total);  // far past every slider
        while (p >= total) p -= total;
        while (p <= -total) p += total;
        if (p >= 0.0) {
            for (knot = 0; knot < kKnots && lengths[knot] <= p; ++knot) p -= lengths[knot];
            walked = p;
        } else {
            for (knot = kKnots; knot > 0;) {
                --knot;
                walked = p + lengths[knot];
                if (p > -lengths[knot]) return;
                p += lengths[knot];
            }
            knot = kKnots;
        }
        if (knot == kKnots || !(walked >= 0.0)) knot = 0, walked = 0.0;
    }

    std::array<double, kKnots> amplitudes, lengths;
    std::size_t knot = 0;
    double walked = 0.0;
};

}  // namespace reference
