#include <gtest/gtest.h>

#include <cmath>

#include "lines/LineField.h"
#include "lines/RandomSequence.h"

namespace streakfall {
namespace {

// The state whose next step has the given output word.
std::uint32_t stateBefore(std::uint32_t word) {
    std::uint32_t inverse = 1;  // of the multiplier, modulo 2^32
    for (int i = 0; i < 5; ++i) inverse *= 2u - 214013u * inverse;
    return ((word << 16) - 2531011u) * inverse;
}

TEST(RandomSequence, DrawsReachBothEndsAndNeverZero) {
    std::uint32_t state = stateBefore(65535);
    EXPECT_EQ(drawUnit(state), 1.0);
    state = stateBefore(0);
    EXPECT_EQ(drawSigned(state), -1.0);
    state = stateBefore(32767);
    EXPECT_NEAR(drawSigned(state), -1.5259e-05, 1e-9);
    state = stateBefore(32768);
    EXPECT_NEAR(drawSigned(state), 1.5259e-05, 1e-9);
}

std::uint32_t intervalWordAt(int frame, int interval, int array) {
    LineField field(0, 0, 640, 480, 0, 1);
    intervalWordFor(field, frame, interval, array);
    return field.intervalWord;
}

TEST(RandomSequence, IntervalWordsFollowTheArrayCycle) {
    const std::uint32_t words[] = {54006, 2437, 41623, 11797, 8365, 32285};
    for (int r = 1; r < 6; ++r) EXPECT_EQ(intervalWordAt(r, 1, 0), words[r]) << r;
    EXPECT_EQ(intervalWordAt(512, 1, 0), words[0]);  // 0 stands for 512
    // The word of the first interval, 0, does not come back.
    const std::uint32_t twoFields[] = {0, 2437, 54006, 2437, 54006};
    for (int frame = 0; frame < 50; ++frame) {
        EXPECT_EQ(intervalWordAt(frame, 10, 2), twoFields[frame / 10]) << frame;
    }
    EXPECT_EQ(intervalWordAt(7, 1, 1), 0u);
    EXPECT_EQ(intervalWordAt(7, 0, 0), 0u);
    EXPECT_EQ(intervalWordAt(-7, 1, 0), 0u);
    EXPECT_EQ(intervalWordAt(600, 1, 100000), intervalWordAt(600 - 512, 1, 0));
}

TEST(RandomSequence, RowSeedsAreTwoStepsFromTheWord) {
    LineField field(0, 0, 640, 480, 0, 1);
    EXPECT_EQ(field.rowSeedWord(0, +1), 1);
    EXPECT_EQ(field.state, 0xC823F683u);
    EXPECT_EQ(lcgWord(lcgStep(field.state)), 6334u);
    EXPECT_EQ(lcgWord(lcgStep(lcgStep(field.state))), 59268u);
    EXPECT_EQ(field.rowSeedWord(0, -1), -1);
    EXPECT_EQ(field.state, 0x742B2671u);
}

}  // namespace
}  // namespace streakfall
