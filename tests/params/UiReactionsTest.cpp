#include <gtest/gtest.h>

#include "FakeHost.h"
#include "params/SequenceData.h"
#include "params/UiReactions.h"

namespace streakfall::test {
namespace {

// An instance whose panel is open.
class UiReactions : public ::testing::Test {
  protected:
    UiReactions() : table(host) {
        EXPECT_EQ(paramsSetup(&host.in, &host.out), PF_Err_NONE);
        EXPECT_EQ(sequenceSetup(&host.in, &host.out), PF_Err_NONE);
        host.in.sequence_data = host.out.sequence_data;
    }
    ~UiReactions() override { EXPECT_EQ(sequenceSetdown(&host.in), PF_Err_NONE); }

    void update() {
        host.controls.clear();
        ASSERT_EQ(updateParamsUI(&host.in, &host.out, host.params()), PF_Err_NONE);
    }
    void startPointChanged() {
        const PF_UserChangedParamExtra extra{hostIndexOf(2)};
        ASSERT_EQ(userChangedParam(&host.in, host.params(), &extra), PF_Err_NONE);
    }
    PF_PointDef& start() { return host.param(2).u.td; }
    PF_PointDef& end() { return host.param(3).u.td; }
    static void place(PF_PointDef& point, PF_Fixed x, PF_Fixed y) {
        point.x_value = x;
        point.y_value = y;
    }
    void link(bool on) { host.param(4).u.bd.value = on; }

    FakeHost host;
    Table table;
};

TEST_F(UiReactions, ControlsAreSentInOrderAndNoOthers) {
    update();
    std::vector<std::int32_t> ids;
    for (const auto& [index, on] : host.controls) {
        ids.push_back(paramsByIndex[static_cast<std::size_t>(index)]->paramId());
    }
    EXPECT_EQ(ids, (std::vector<std::int32_t>{19, 20, 38, 39, 40, 41, 52, 53, 54, 13,
                                              14, 16, 50, 14, 63, 64, 65, 66, 67, 68}));
    // The definitions of the command keep their state.
    for (std::size_t i = 1; i <= kParamCount; ++i) EXPECT_EQ(host.params()[i]->ui_flags, 0);
}

TEST_F(UiReactions, ARenderEngineDisablesEverythingAndReactsToNothing) {
    update();
    host.renderEngine = true;
    link(true);
    start().x_value += 65536;
    const PF_PointDef before = end();
    update();
    ASSERT_EQ(host.controls.size(), 62u);
    for (PF_ParamIndex i = 1; i <= 62; ++i) EXPECT_FALSE(host.enabled(i));
    startPointChanged();
    EXPECT_EQ(end().x_value, before.x_value);

    host.in.appl_id = kAppID_PrMr;
    update();
    EXPECT_EQ(host.controls.size(), 20u) << "another host has its panel";
}

TEST_F(UiReactions, EndPointFollowsByTheSameDistance) {
    link(true);
    place(start(), 100, -200);
    place(end(), 5, 7);
    startPointChanged();
    EXPECT_EQ(end().x_value, 5) << "nothing is known before the first update";
    update();
    place(start(), 130, -260);
    startPointChanged();
    EXPECT_EQ(end().x_value, 35);
    EXPECT_EQ(end().y_value, -53);
    EXPECT_EQ(host.param(3).uu.change_flags & PF_ChangeFlag_CHANGED_VALUE, 1);
    update();
    host.param(3).uu.change_flags = 0;
    startPointChanged();
    EXPECT_EQ(end().x_value, 35);
    EXPECT_EQ(host.param(3).uu.change_flags, 0) << "it has not moved";
}

TEST_F(UiReactions, DistancesWrapAround) {
    link(true);
    place(start(), INT32_MIN, INT32_MAX);
    update();
    place(start(), INT32_MAX, INT32_MIN);  // by -1 and 1
    place(end(), INT32_MIN, INT32_MAX);
    startPointChanged();
    EXPECT_EQ(end().x_value, INT32_MAX);
    EXPECT_EQ(end().y_value, INT32_MIN);
}

TEST_F(UiReactions, TheLinkTakesOverWithoutAJump) {
    update();
    start().x_value += 1000;
    const PF_Fixed before = end().x_value;
    startPointChanged();
    EXPECT_EQ(end().x_value, before) << "the link is off";
    update();
    link(true);
    startPointChanged();
    EXPECT_EQ(end().x_value, before);
    const PF_UserChangedParamExtra other{hostIndexOf(3)};
    start().x_value += 1000;
    ASSERT_EQ(userChangedParam(&host.in, host.params(), &other), PF_Err_NONE);
    EXPECT_EQ(end().x_value, before) << "only the start point leads";
}

// Whatever block is there, the panel works; a block that is not live is not written to.
TEST_F(UiReactions, BlocksThatAreNotLiveAreSkipped) {
    const PF_Handle own = host.in.sequence_data;
    link(true);
    for (std::size_t size = 0; size <= 64; ++size) {
        for (const int flat : {0, 1}) {
            std::vector<unsigned char> bytes(size, 0xFF);
            const unsigned char head[] = {'q', 'e', 's', 'p', static_cast<unsigned char>(flat),
                                          0,   0,   0};
            std::copy_n(head, std::min(size, sizeof head), bytes.begin());
            host.in.sequence_data = host.newBlock(bytes.data(), size);
            update();
            EXPECT_EQ(host.bytes(host.in.sequence_data) == bytes, size < 36 || flat == 1) << size;
            startPointChanged();
            host.in.utils->host_dispose_handle(host.in.sequence_data);
        }
    }
    host.in.sequence_data = nullptr;
    update();
    startPointChanged();

    host.in.sequence_data = own;
    host.failLockAfter = 0;
    update();
    startPointChanged();
    host.failLockAfter = -1;
}

TEST_F(UiReactions, AMissingSuiteTravelsAsItsNumber) {
    SPBasicSuite* const basic = host.in.pica_basicP;
    host.in.pica_basicP = nullptr;
    EXPECT_THROW(update(), A_long);
    host.in.pica_basicP = basic;
}

}  // namespace
}  // namespace streakfall::test
