#include <gtest/gtest.h>

#include "host/Keyframes.h"

using namespace standin;

TEST(Keyframes, RunInStraightLinesAndHoldBeyondTheEnds) {
    Track track(Value::number(3));
    EXPECT_EQ(track.at({100, 24}), Value::number(3));
    track.setKey({48, 24}, Value::point(10, -4));
    track.setKey({0, 24}, Value::point(0, 4));
    EXPECT_EQ(track.at({-9, 24}), Value::point(0, 4));
    EXPECT_EQ(track.at({12, 24}), Value::point(2.5, 2));
    // The same moment in other units.
    EXPECT_EQ(track.at({1, 1}), Value::point(5, 0));
    EXPECT_EQ(track.at({60, 30}), Value::point(10, -4));
    EXPECT_EQ(track.at({99, 1}), Value::point(10, -4));

    track.setKey({2, 1}, Value::point(20, 0));
    EXPECT_EQ(track.at({36, 24}), Value::point(15, 1));
    track.setConstant(Value::number(1));
    EXPECT_FALSE(track.keyed());
    EXPECT_EQ(track.at({0, 1}), Value::number(1));
}

TEST(Keyframes, HoldAndEaseBehindAKeyThatSaysSo) {
    Track track;
    track.setKey({0, 1}, Value::number(0), Way::hold);
    track.setKey({4, 1}, Value::number(8), Way::ease);
    track.setKey({8, 1}, Value::number(16));
    EXPECT_EQ(track.at({3, 1}), Value::number(0));
    EXPECT_EQ(track.at({4, 1}), Value::number(8));
    EXPECT_EQ(track.at({5, 1}), Value::number(8 + 8 * 0.15625));
    EXPECT_EQ(track.at({6, 1}), Value::number(12));
}

TEST(Keyframes, StepWhereTheHostMayNotInterpolate) {
    Track track(Value::number(0), true);
    track.setKey({1, 30}, Value::number(5));
    track.setKey({7, 30}, Value::number(9));
    EXPECT_EQ(track.at({0, 30}), Value::number(5));
    EXPECT_EQ(track.at({6, 30}), Value::number(5));
    EXPECT_EQ(track.at({7, 30}), Value::number(9));
}
