#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <thread>

#include "FakeHost.h"
#include "params/HostQuestions.h"
#include "params/Numbers.h"
#include "params/ParamReads.h"
#include "params/ParamTable.h"

namespace streakfall::test {
namespace {

TEST(ParamTable, HasEveryIdOnceAndInHostOrder) {
    FakeHost host;
    const Table table(host);
    std::set<std::int32_t> ids;
    for (PF_ParamIndex i = 1; i <= 62; ++i) {
        const BaseParam* param = paramsByIndex[static_cast<std::size_t>(i)];
        ASSERT_NE(param, nullptr) << i;
        EXPECT_EQ(param->hostIndex(), i);
        EXPECT_EQ(hostIndexOf(param->paramId()), i);
        ids.insert(param->paramId());
    }
    EXPECT_EQ(paramsByIndex[0], nullptr);
    EXPECT_EQ(paramsByIndex[63], nullptr);
    for (std::int32_t id = 2; id <= 69; ++id) {
        const bool gap = id == 15 || id == 17 || id == 29 || id == 34 || id == 43 || id == 46;
        EXPECT_EQ(ids.contains(id), !gap) << id;
    }
    EXPECT_EQ(ids.size(), 62u);
    EXPECT_EQ(hostIndexOf(15), 0);
    EXPECT_STREQ(paramsByIndex[47]->name(), "Taper ");
    EXPECT_STREQ(paramsByIndex[49]->name(), "Taper");
}

TEST(ParamTable, ASecondLifeStartsAtOneAgain) {
    FakeHost host;
    { const Table first(host); }
    EXPECT_TRUE(std::ranges::all_of(paramRegistry, [](auto* param) { return param == nullptr; }));
    const Table second(host);
    EXPECT_EQ(paramsByIndex[1]->hostIndex(), 1);
    ASSERT_EQ(paramsSetup(&host.in, &host.out), PF_Err_NONE);
    EXPECT_EQ(host.out.num_params, 63);
}

TEST(ParamTable, DefinitionsOfEachKind) {
    FakeHost host;
    const Table table(host);
    ASSERT_EQ(paramsSetup(&host.in, &host.out), PF_Err_NONE);
    ASSERT_EQ(host.added.size(), 62u);
    EXPECT_EQ(host.out.num_params, 63);

    const PF_ParamDef& start = host.param(2);
    EXPECT_EQ(start.param_type, PF_Param_POINT);
    EXPECT_EQ(start.u.td.x_value, 30 << 16);
    EXPECT_EQ(start.u.td.y_dephault, 50 << 16);
    EXPECT_EQ(start.u.td.restrict_bounds, 0);
    EXPECT_EQ(start.flags, PF_ParamFlag_START_COLLAPSED | PF_ParamFlag_SUPERVISE);
    EXPECT_EQ(host.param(3).flags, PF_ParamFlag_START_COLLAPSED);

    const PF_ParamDef& length = host.param(45);
    EXPECT_STREQ(length.name, "Length");
    EXPECT_EQ(length.uu.id, 45);
    EXPECT_EQ(length.u.fs_d.value, 500);
    EXPECT_EQ(length.u.fs_d.slider_max, 200);
    EXPECT_EQ(length.u.fs_d.valid_min, -2000);
    EXPECT_EQ(length.u.fs_d.precision, 1);
    EXPECT_EQ(length.u.fs_d.display_flags, PF_ValueDisplayFlag_NONE);
    EXPECT_EQ(length.u.fs_d.curve_tolerance, 0.05F);
    EXPECT_EQ(length.u.fs_d.fs_flags, 0u);
    EXPECT_EQ(host.param(28).u.fs_d.display_flags, PF_ValueDisplayFlag_PERCENT);

    for (const std::int32_t stepping : {23, 44, 24}) {
        EXPECT_EQ(host.param(stepping).flags,
                  PF_ParamFlag_START_COLLAPSED | PF_ParamFlag_CANNOT_INTERP);
    }
    EXPECT_EQ(host.param(22).flags, PF_ParamFlag_START_COLLAPSED);
    EXPECT_STREQ(host.param(37).u.bd.u.nameptr, "");
    EXPECT_EQ(host.param(5).u.cd.value.alpha, 255);
    EXPECT_EQ(host.param(5).u.cd.value.red, 0);

    const PF_ParamDef& end = host.param(61);
    EXPECT_EQ(end.param_type, PF_Param_GROUP_END);
    EXPECT_EQ(end.flags, 0);
    EXPECT_STREQ(end.name, "");
}

TEST(ParamTable, SwitchesOpenAsTheyShould) {
    FakeHost host;
    const Table table(host);
    ASSERT_EQ(paramsSetup(&host.in, &host.out), PF_Err_NONE);
    for (const std::int32_t on : {37, 69, 22}) EXPECT_EQ(host.param(on).u.bd.value, 1) << on;
    for (const std::int32_t off : {62, 18, 4, 51, 16}) {
        EXPECT_EQ(host.param(off).u.bd.value, 0) << off;
    }
}

TEST(ParamTable, ARenderEngineStartsDisabledButForGroupEnds) {
    FakeHost host;
    host.renderEngine = true;
    const Table table(host);
    ASSERT_EQ(paramsSetup(&host.in, &host.out), PF_Err_NONE);
    for (const PF_ParamDef& def : host.added) {
        EXPECT_EQ(def.ui_flags, def.param_type == PF_Param_GROUP_END ? 0 : PF_PUI_DISABLED);
    }
    host.in.appl_id = kAppID_PrMr;  // is not asked, as it has no such suite to rely on
    host.in.pica_basicP = nullptr;
    EXPECT_FALSE(isRenderEngine(&host.in));
}

TEST(ParamTable, ARefusedParameterEndsTheAddingAtIt) {
    FakeHost host;
    const Table table(host);
    host.failAddAfter = 20;
    EXPECT_EQ(paramsSetup(&host.in, &host.out), PF_Err_INVALID_INDEX);
    EXPECT_EQ(host.added.size(), 20u);
    EXPECT_EQ(host.out.num_params, 63);
}

TEST(HostQuestions, OldHostsAreAfterEffectsBelow12Point12) {
    FakeHost host;
    const auto old = [&](A_long application, A_short major, A_short minor) {
        host.in.appl_id = application;
        host.in.version = {major, minor};
        return isOldHost(&host.in);
    };
    EXPECT_TRUE(old(kAppID_FXTC, 12, 11));
    EXPECT_FALSE(old(kAppID_FXTC, 12, 12));
    EXPECT_TRUE(old(kAppID_FXTC, 11, 99));
    EXPECT_FALSE(old(kAppID_FXTC, 13, 0));
    EXPECT_TRUE(old(kAppID_FXTC, -1, 50));
    EXPECT_FALSE(old(kAppID_PrMr, 1, 0));
}

class ParamReads : public ::testing::Test {
  protected:
    ParamReads() : table(host) { EXPECT_EQ(paramsSetup(&host.in, &host.out), PF_Err_NONE); }

    FakeHost host;
    Table table;
};

// Every value gets bits of its own, so that a value in another's place shows.
TEST_F(ParamReads, EachValueLandsInItsField) {
    host.param(2).u.td.x_value = 11;
    host.param(2).u.td.y_value = -12;
    host.param(4).u.bd.value = 0x7FFFFF01;  // the lowest byte counts
    host.param(6).u.fs_d.value = 0.1;
    host.param(5).u.cd.value = {9, 8, 7, 6};
    host.param(57).u.ad.value = -65537;
    host.param(24).u.sd.value = 4321;
    host.param(30).u.fs_d.value = 30.5;
    host.param(47).u.fs_d.value = 47.5;
    host.param(68).u.fs_d.value = std::nan("");

    GetParamByCheckout getter(&host.in);
    CheckedOutParams values(getter);
    EffectParams record;
    ASSERT_EQ(values.ReadAllParams(&record), PF_Err_NONE);
    EXPECT_EQ(host.checkedOut, 50);
    EXPECT_EQ(record.startPoint.x, 11);
    EXPECT_EQ(record.startPoint.y, -12);
    EXPECT_EQ(record.linkEndPoint, 1);
    EXPECT_EQ(record.opacity, 0.1);
    EXPECT_EQ(record.color.alpha, 9);
    EXPECT_EQ(record.color.blue, 6);
    EXPECT_EQ(record.colorRandomH, -65537);
    EXPECT_EQ(record.randomSeed, 4321);
    EXPECT_EQ(record.intervalRandom, 30.5);
    EXPECT_EQ(record.groupOffsetRandom, 47.5);
    EXPECT_TRUE(std::isnan(record.wavePhaseRandom));
    EXPECT_EQ(record.enableTaper, 1);
    EXPECT_EQ(record.length, 500);
    EXPECT_EQ(values.CheckInAllParams(), PF_Err_NONE);
    EXPECT_EQ(host.checkedOut, 0);
}

// Whatever checkout fails, those before it are given back, and only those.
TEST_F(ParamReads, AFailedCheckoutLeavesNothingHeld) {
    for (int n = 0; n < 50; ++n) {
        host.failCheckoutAfter = n;
        GetParamByCheckout getter(&host.in);
        CheckedOutParams values(getter);
        EffectParams record;
        EXPECT_EQ(values.ReadAllParams(&record), PF_Err_INVALID_INDEX);
        EXPECT_EQ(host.checkedOut, n);
        EXPECT_EQ(record.wavePhaseRandom, 0);
        EXPECT_EQ(values.CheckInAllParams(), PF_Err_NONE);
        EXPECT_EQ(host.checkedOut, 0);
    }
    PF_ParamDef def;
    std::memset(&def, 1, sizeof def);
    EXPECT_EQ(GetParamByCheckout(&host.in).getParam(4, &def), PF_Err_INVALID_INDEX);
    EXPECT_EQ(def.param_type, 0);
    EXPECT_EQ(def.u.fs_d.value, 0);
}

TEST_F(ParamReads, ARefusedCheckinDoesNotKeepTheOthers) {
    GetParamByCheckout getter(&host.in);
    CheckedOutParams values(getter);
    ASSERT_EQ(values.ReadAllParams(nullptr), PF_Err_NONE);
    host.failCheckin = 7;
    EXPECT_EQ(values.CheckInAllParams(), PF_Err_INVALID_CALLBACK);
    EXPECT_EQ(host.checkedOut, 0);
}

TEST_F(ParamReads, AnExceptionOnTheWayGivesBackAll) {
    try {
        GetParamByCheckout getter(&host.in);
        CheckedOutParams values(getter);
        ASSERT_EQ(values.ReadAllParams(nullptr), PF_Err_NONE);
        throw 516;
    } catch (int) {
    }
    EXPECT_EQ(host.checkedOut, 0);
}

// The race detector's case: nothing that a read writes is shared.
TEST_F(ParamReads, SeveralThreadsReadTheirOwnValues) {
    PF_ParamDef** params = host.params();
    const auto readMany = [params] {
        for (int i = 0; i < 200; ++i) {
            GetParamFromArray getter(params);
            CheckedOutParams values(getter);
            EffectParams record;
            ASSERT_EQ(values.ReadAllParams(&record), PF_Err_NONE);
            ASSERT_EQ(record.length, 500);
        }
    };
    std::jthread one(readMany), two(readMany), three(readMany);
}

TEST(Numbers, SixDecimalsAreThoseOfTheCLocale) {
    EXPECT_EQ(sixDecimals(12.5), "12.500000");
    EXPECT_EQ(sixDecimals(-0.0000004), "-0.000000");
    EXPECT_EQ(sixDecimals(1e22), "10000000000000000000000.000000");
    EXPECT_EQ(sixDecimals(-std::numeric_limits<double>::max()).size(), 317u);
}

TEST(Numbers, TextThatBeginsWithNoNumberIsZero) {
    EXPECT_EQ(parseDecimal("  +12.5abc"), 12.5);
    EXPECT_EQ(parseDecimal("-.5e1"), -5);
    EXPECT_EQ(parseDecimal("1,5"), 1);
    EXPECT_EQ(parseDecimal("7."), 7);
    for (const char* word : {"", " ", "abc", "inf", "-nan", "+-5", "--5", ".", "-", "+ 5", "e5"}) {
        EXPECT_EQ(parseDecimal(word), 0) << word;
    }
    EXPECT_EQ(parseDecimal("0x10"), 0);
    EXPECT_EQ(parseDecimal("-1e999"), -std::numeric_limits<double>::max());
    EXPECT_EQ(parseDecimal("1e-999"), 0);
}

}  // namespace
}  // namespace streakfall::test
