// Values that no slider gives, but an expression, a damaged file or an odd host may. What counts
// is that a frame comes back: no crash, no undefined step, no endless loop.
#include <cmath>
#include <limits>

#include "PlayedEffect.h"
#include "params/ParamRows.h"

namespace {

using namespace played;
using namespace standin;

class BadValuesTest : public EffectTest {
  protected:
    void everythingOn() {
        instance().storeDefaults();
        for (const char* const name :
             {"Repeat", "Enable Wave", "Use Start/End Opacity", "Enable Taper"}) {
            set(name, 1);
        }
        set("Taper", 20);
        set("Group Lines", 10);
        set("Repeat Interval", 50);
    }
    PF_Err renderSmall(Depth depth = Depth::bits8) {
        return render(halfMatted(40, 30, depth)).code;
    }
};

class LongBadValuesTest : public BadValuesTest {};

TEST_F(LongBadValuesTest, EveryNumberAtItsWorst) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    play({}, {40, 30});
    for (const streakfall::ParamRow& row : streakfall::kParamRows) {
        if (row.type != PF_Param_FLOAT_SLIDER) continue;
        SCOPED_TRACE(row.name);
        for (const double value : {std::nan(""), kInfinity, -kInfinity, 1e300, -1e300, 1e-300, -0.5,
                                   row.valid.max * 10 + 1, row.valid.min - 1000}) {
            for (const bool on : {true, false}) {
                on ? everythingOn() : instance().storeDefaults();
                set(row.name, value);
                EXPECT_EQ(renderSmall(), 0) << value << (on ? ", all on" : "");
            }
        }
    }
}

TEST_F(LongBadValuesTest, RepeatOfTinyRowsComesBack) {
    play({}, {40, 30});
    set("Repeat", 1);
    set("Repeat Interval", 0);
    for (const double length : {1e-5, 1e-3, 0.1}) {
        set("Length", length);
        EXPECT_EQ(renderSmall(), 0) << length;
    }
}

TEST_F(BadValuesTest, WholeNumbersAtTheirEnds) {
    play({}, {40, 30});
    for (const char* const name :
         {"Random Interval", "Random Array", "Random Seed", "Random Repeat Num"}) {
        for (const double value : {-2147483648.0, -1.0, 2147483647.0}) {
            everythingOn();
            set(name, value);
            EXPECT_EQ(renderSmall(), 0) << name << " " << value;
        }
    }
}

TEST_F(BadValuesTest, PointsAndHueFarAway) {
    play({}, {40, 30});
    for (const double far : {-32768.0, 32767.0}) {
        everythingOn();
        set("Start Point", Value::point(far, far));
        EXPECT_EQ(renderSmall(), 0);
        set("End Point", Value::point(far, far));
        set("H", far);
        EXPECT_EQ(renderSmall(Depth::float32), 0);
    }
}

TEST_F(BadValuesTest, TimesAtTheirEnds) {
    play({}, {40, 30});
    everythingOn();
    set("Random Interval", 3);
    set("Auto Offset", 2000);
    FrameRequest request = halfMatted(40, 30, Depth::bits8);
    for (const A_long time : {INT32_MIN, -1, 0, INT32_MAX}) {
        for (const A_long step : {INT32_MIN, -1, 0, 1, INT32_MAX}) {
            request.currentTime = time;
            request.timeStep = step;
            EXPECT_EQ(render(request).code, 0) << time << "/" << step;
        }
    }
}

TEST_F(BadValuesTest, FramesOfAllShapes) {
    HostOffer offer;
    offer.rowPadding = 12;
    for (const Depth depth : kDepths) {
        for (const auto& [width, height] :
             {std::pair{1, 1}, std::pair{1, 300}, std::pair{30000, 1}, std::pair{3, 2}}) {
            play(offer, {width, height});
            everythingOn();
            EXPECT_EQ(render(halfMatted(width, height, depth)).code, 0) << width << "x" << height;
        }
    }
}

}  // namespace
