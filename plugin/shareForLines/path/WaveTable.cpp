#include "shareForLines/path/WaveTable.h"

#include <algorithm>
#include <cmath>

#include "lines/RandomSequence.h"

namespace streakfall {
namespace {

// Places beyond this many pixels lie outside every slider's range; they are first brought near
// by a remainder, so that the subtractions below stay few.
constexpr double kFarPlace = 1e7;

void enterKnot(WaveTable& wave, int i) {
    const auto amplitude = [&](int k) {
        return wave.knots[static_cast<std::size_t>(k % WaveTable::kKnots)].amplitude;
    };
    wave.active = {amplitude(i + 99), amplitude(i), amplitude(i + 1), amplitude(i + 2)};
    wave.segmentLength = wave.knots[static_cast<std::size_t>(i)].length;
    wave.next = (i + 1) % WaveTable::kKnots;
}

// Enters the knot interval that holds place p, counted forward from knot 0 or, below zero,
// backward from it. False when rounding or a NaN left no interval.
bool findPlace(WaveTable& wave, double p) {
    const auto length = [&](int k) { return wave.knots[static_cast<std::size_t>(k)].length; };
    if (std::fabs(p) > kFarPlace) p = std::fmod(p, wave.totalLength);
    if (p >= 0.0) {
        while (p >= wave.totalLength) p -= wave.totalLength;
        for (int i = 0; i < WaveTable::kKnots; ++i) {
            if (!(length(i) <= p)) {
                enterKnot(wave, i);
                wave.position = p;
                return true;
            }
            p -= length(i);
        }
    } else if (p < 0.0) {
        while (p <= -wave.totalLength) p += wave.totalLength;
        for (int i = WaveTable::kKnots - 1; i >= 0; --i) {
            if (p > -length(i)) {
                enterKnot(wave, i);
                wave.position = p + length(i);
                return true;
            }
            p += length(i);
        }
    }
    return false;
}

}  // namespace

void resetWave(WaveTable& wave, std::uint32_t& waveState, double phaseBase) {
    wave.step = 1.0;
    wave.totalLength = 0.0;
    double sign = 1.0;
    for (WaveTable::Knot& knot : wave.knots) {
        double u = drawUnit(waveState);
        knot.amplitude = (1.0 - u * wave.amountRandom) * wave.amount * sign;
        sign = -sign;
        u = drawUnit(waveState);
        // From a quarter of the wave length to twice it at full randomness.
        const double bracket =
            ((u - 1.0 + 1.0 + u) * 1.75 / 2.0 - 0.75) * wave.wavelengthRandom + 1.0;
        // Four steps at least: a step crosses one knot at most.
        knot.length = std::max(wave.step * 4.0, bracket * wave.wavelength);
        wave.totalLength += knot.length;
    }
    const double p = phaseBase + wave.phase + drawUnit(waveState) * wave.phaseRandom;
    if (!findPlace(wave, p)) {
        enterKnot(wave, 0);
        wave.position = 0.0;
    }
}

double waveOffset(WaveTable& wave) {
    if (wave.position > wave.segmentLength) {
        wave.position -= wave.segmentLength;
        enterKnot(wave, wave.next);
    }
    const double u = wave.position / wave.segmentLength;
    wave.position += wave.step;
    const double u2 = u * u, u3 = u * u * u;
    const auto& p = wave.active;
    return ((3.0 * (u2 - u) + 1.0 - u3) * p[0] + (4.0 - 6.0 * u2 + 3.0 * u3) * p[1] +
            (3.0 * (u + u2) + 1.0 - 3.0 * u3) * p[2] + u3 * p[3]) *
           0.16666666666666666;
}

double steepestSlope(const WaveTable& wave) {
    // The slope of a uniform B-spline is a mean of the slopes between its control values.
    double steepest = 0.0;
    for (std::size_t i = 0; i < WaveTable::kKnots; ++i) {
        const auto amplitude = [&](std::size_t k) {
            return wave.knots[(i + k) % WaveTable::kKnots].amplitude;
        };
        double rise = std::fabs(amplitude(0) - amplitude(WaveTable::kKnots - 1));
        rise = std::max(rise, std::fabs(amplitude(1) - amplitude(0)));
        rise = std::max(rise, std::fabs(amplitude(2) - amplitude(1)));
        steepest = std::max(steepest, rise / wave.knots[i].length);
    }
    return steepest;
}

}  // namespace streakfall
