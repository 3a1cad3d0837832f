#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "shareForLines/path/WaveTable.h"

namespace streakfall {
namespace {

WaveTable evenWave() {
    WaveTable wave;
    wave.amount = 15;
    wave.wavelength = 50;
    return wave;
}

TEST(WaveTable, EvenWaveSwingsAThirdOfItsAmount) {
    WaveTable wave = evenWave();
    std::uint32_t state = 1;
    resetWave(wave, state, 0.0);
    for (int step = 0; step <= 100; ++step) {
        const double w = waveOffset(wave);
        if (step == 0 || step == 100) {
            EXPECT_NEAR(w, 5.0, 1e-12);
        }
        if (step == 50) {
            EXPECT_NEAR(w, -5.0, 1e-12);
        }
        if (step == 25) {
            EXPECT_NEAR(w, 0.0, 1e-12);
        }
    }
}

// Wherever the walk enters the circle, forward or backward, it meets the same wave.
TEST(WaveTable, EveryEntryMeetsTheSameWave) {
    WaveTable base = evenWave();
    base.amountRandom = 0.7;
    base.wavelengthRandom = 1.0;
    const auto offsetAt = [&](double place) {
        WaveTable wave = base;
        std::uint32_t state = 99;
        resetWave(wave, state, place);
        return waveOffset(wave);
    };
    WaveTable walked = base;
    std::uint32_t state = 99;
    resetWave(walked, state, 0.0);
    const double total = walked.totalLength;
    for (int step = 0; step < 3000; ++step) {
        const double w = waveOffset(walked);
        EXPECT_NEAR(offsetAt(step), w, 1e-9) << step;
        EXPECT_NEAR(offsetAt(step - total), w, 1e-9) << step;
        EXPECT_NEAR(offsetAt(step + 2 * total), w, 1e-9) << step;
    }
}

TEST(WaveTable, AnyPlaceComesBack) {
    for (const double place : {1e300, -1e300, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
        WaveTable wave = evenWave();
        std::uint32_t state = 1;
        resetWave(wave, state, place);
        EXPECT_TRUE(std::isfinite(waveOffset(wave))) << place;
    }
}

}  // namespace
}  // namespace streakfall
