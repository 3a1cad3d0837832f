// WaveTable: the wobble of one line, a circle of 100 knots smoothed by a uniform cubic B-spline.
//
// The amplitudes are control values, not points on the curve: without randomness the crests reach
// a third of `amount`. The constant part is set once a frame, the knots once a line. Owner: the
// Stroke.
#pragma once

#include <array>
#include <cstdint>

namespace streakfall {

struct WaveTable {
    static constexpr int kKnots = 100;
    struct Knot {
        double length;     // to the next knot, pixels; at least 4 steps
        double amplitude;  // pixels, with sign
    };

    double amount = 0;            // buffer pixels, with sign
    double amountRandom = 0;      // ratio
    double wavelength = 1;        // buffer pixels, at least 1
    double wavelengthRandom = 0;  // ratio
    double phase = 0;             // pixels, not scaled with the render
    double phaseRandom = 0;       // likewise
    double segmentLength = 0;     // of the knot interval being walked
    double position = 0;          // distance walked into it
    double step = 1;              // advance of a walk step
    std::array<Knot, kKnots> knots{};
    double totalLength = 0;
    std::array<double, 4> active{};  // amplitudes that the spline reads now
    std::int32_t next = 0;           // the knot that follows the current one
};

// Builds the knots of one line, 201 draws, and places the walk at phaseBase plus the phases.
void resetWave(WaveTable& wave, std::uint32_t& waveState, double phaseBase);

// Sideways displacement at the current walk step, pixels; moves on by one step.
double waveOffset(WaveTable& wave);

// A bound of the displacement's change in a pixel of the walk, 0 or more.
double steepestSlope(const WaveTable& wave);

}  // namespace streakfall
