// The life of an instance through the loaded module: its panel, the link of the two points, and
// what a project keeps of it.
#include <random>

#include "PlayedEffect.h"
#include "host/Keyframes.h"
#include "params/ParamRows.h"

namespace {

using namespace played;
using namespace standin;
using streakfall::paramIdOf;

constexpr A_long kStartPoint = paramIdOf("Start Point"), kEndPoint = paramIdOf("End Point");

class InstanceTest : public EffectTest {
  protected:
    InstanceTest() { play(); }

    void expectEnd(double x, double y) {
        const Value end = instance().value(kEndPoint);
        EXPECT_EQ(end.part[0], x);
        EXPECT_EQ(end.part[1], y);
    }
};

TEST_F(InstanceTest, PanelFollowsEverySettingOfTheSwitches) {
    struct Rule {
        const char* name;
        std::vector<A_long> controls;
    };
    const Rule rules[] = {{"Repeat", {19, 20}},
                          {"Enable In/Out", {38, 39, 40, 41}},
                          {"Use Start/End Opacity", {52, 53, 54}},
                          {"Enable Taper", {13, 16, 50}},
                          {"Enable Wave", {63, 64, 65, 66, 67, 68}}};
    constexpr A_long kFixBandForm = paramIdOf("Fix Band Form"), kArchRate = paramIdOf("Arch Rate");
    for (unsigned setting = 0; setting < 64; ++setting) {
        SCOPED_TRACE(setting);
        std::vector<bool> expected(streakfall::kParamIdLimit, true);
        for (std::size_t i = 0; i < std::size(rules); ++i) {
            const bool on = (setting >> i & 1) != 0;
            set(rules[i].name, on);
            for (const A_long id : rules[i].controls) expected[id] = on;
        }
        const bool fixed = (setting >> std::size(rules) & 1) != 0;
        instance().storeValue(kFixBandForm, Value::number(fixed));
        expected[kArchRate] = expected[kFixBandForm] && !fixed;

        ASSERT_EQ(instance().updatePanel(), 0);
        for (const ParamInfo& param : host().params())
            EXPECT_EQ(instance().enabled(param.id), expected[param.id]) << param.name;
    }
}

TEST_F(InstanceTest, EndPointIsDraggedAlong) {
    set("Link End Point", 1);
    instance().storeValue(kStartPoint, Value::point(10, 20));
    instance().storeValue(kEndPoint, Value::point(300, 5));
    ASSERT_EQ(instance().updatePanel(), 0);
    for (int step = 0; step < 3; ++step)  // the memo keeps up with the drag
        ASSERT_EQ(instance().setValue(kStartPoint, Value::point(30 + step, -20.5)), 0);
    expectEnd(322, -35.5);

    // From one end of the 16.16 numbers to the other is one pixel back.
    instance().storeValue(kStartPoint, Value::point(-32768, 0));
    instance().storeValue(kEndPoint, Value::point(-32768, 7));
    ASSERT_EQ(instance().updatePanel(), 0);
    ASSERT_EQ(instance().setValue(kStartPoint, Value::point(32767, 0)), 0);
    expectEnd(32767, 7);
}

TEST_F(InstanceTest, ProjectKeepsTheSameBytesAndTheBooksBalance) {
    const std::vector<std::uint8_t> flat = {'q', 'e', 's', 'p', 1, 0, 0, 0, 1, 0, 0, 0,
                                            24,  0,   0,   0,   0, 0, 0, 0, 0, 0, 0, 0};
    constexpr unsigned kSeed = 3;
    SCOPED_TRACE(kSeed);
    std::mt19937 random(kSeed);
    const auto upTo = [&](double most) { return most * random() / 4294967296.0; };
    for (int edit = 0; edit < 20; ++edit) {
        const ParamInfo& param = host().params()[random() % host().params().size()];
        const Value value = param.type == PF_Param_POINT ? Value::point(upTo(320), upTo(180))
                                                         : Value::number(upTo(100));
        ASSERT_EQ(instance().setValue(param.id, value), 0) << param.name;
    }
    EXPECT_EQ(instance().save(), flat);
    EXPECT_EQ(instance().save(), flat) << "after a resetup";
    Instance loaded(host(), {320, 180}, flat);
    EXPECT_EQ(loaded.save(), flat);
    Instance copy = instance().duplicate();
    EXPECT_EQ(copy.save(), flat);
    EXPECT_EQ(copy.setDown(), 0);
    EXPECT_EQ(loaded.setDown(), 0);
}

}  // namespace
