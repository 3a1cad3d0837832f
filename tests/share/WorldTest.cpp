#include <gtest/gtest.h>

#include <string>

#include "FakeServices.h"
#include "share/util/AEException.h"
#include "share/util/AEWorldSuite.h"
#include "share/util/SuiteCache.h"

namespace {

using AEUtil::EffectWorldPtr;
using AEUtil::SuiteCache;
using AEUtil::WorldSuite;

class WorldTest : public ::testing::Test {
  protected:
    void SetUp() override { SuiteCache::setUpGlobal(services.basic()); }
    void TearDown() override {
        SuiteCache::tearDownGlobal();
        EXPECT_EQ(services.worlds, 0);
        EXPECT_EQ(services.heldInAll(), 0);
    }
    EffectWorldPtr make(PF_PixelFormat format = PF_PixelFormat_ARGB32, char clear = 1) {
        return WorldSuite::newWorld(ref, 20, 10, clear, format);
    }

    FakeServices services;
    int something = 0;
    const PF_ProgPtr ref = reinterpret_cast<PF_ProgPtr>(&something);
};

TEST_F(WorldTest, TheLastHandleDisposes) {
    EffectWorldPtr first = make(PF_PixelFormat_ARGB128);
    EXPECT_EQ(services.lastFormat, PF_PixelFormat_ARGB128);
    ASSERT_NE(first.world, nullptr);
    EXPECT_EQ(first.world->width, 20);
    EffectWorldPtr second = first;
    EXPECT_EQ(second.world, first.world);

    EXPECT_EQ(first.release(), 1);
    EXPECT_EQ(services.worlds, 1);
    EXPECT_EQ(first.release(), -1);
    EXPECT_EQ(second.release(), 0);
    EXPECT_EQ(services.worlds, 0);
    EXPECT_EQ(services.lastDisposeRef, ref);
    EXPECT_EQ(second.holder, nullptr);
    EXPECT_EQ(second.world, nullptr);
    EXPECT_EQ(second.release(), -1);
}

TEST_F(WorldTest, AssignmentGivesTheOldWorldBack) {
    EffectWorldPtr a = make();
    EffectWorldPtr b = make();
    EXPECT_EQ(services.worlds, 2);
    a = b;
    EXPECT_EQ(services.worlds, 1);
    const EffectWorldPtr& self = a;
    a = self;
    EXPECT_EQ(a.holder->refCount, 2);
}

TEST_F(WorldTest, OlderHostGetsFlags) {
    services.worldSuite2 = false;
    make(PF_PixelFormat_ARGB32, 0);
    EXPECT_EQ(services.lastFlags, 0);
    make(PF_PixelFormat_ARGB32, 1);
    EXPECT_EQ(services.lastFlags, 1);
    make(PF_PixelFormat_ARGB64, 0);
    EXPECT_EQ(services.lastFlags, 2);
    make(PF_PixelFormat_ARGB64, 1);
    EXPECT_EQ(services.lastFlags, 3);

    const EffectWorldPtr none = make(PF_PixelFormat_ARGB128);
    EXPECT_NE(none.holder, nullptr);
    EXPECT_EQ(none.world, nullptr);
}

TEST_F(WorldTest, FailureCarriesTheHostsCodeAndTheSignature) {
    services.newWorldCode = 77;
    for (const bool newer : {true, false}) {
        services.worldSuite2 = newer;
        try {
            make();
            FAIL() << "no world, and no exception";
        } catch (const AEUtil::AEException& failure) {
            EXPECT_EQ(failure.code, 77);
            EXPECT_STREQ(failure.what(),
                         ".\\share\\util\\AEWorldSuite(151): AEUtil::EffectWorldPtr "
                         "AEUtil::WorldSuite::newWorld(PF_ProgressInfo *, long, long, char, long)");
        }
    }
}

// A world that was made goes back to the host even though its maker reports a failure.
TEST_F(WorldTest, FailedReleaseOfTheSuiteCountsOnlyAfterSuccess) {
    services.releaseWorldSuiteCode = 5;
    const auto codeOf = [&] {
        try {
            make();
        } catch (const AEUtil::AEException& failure) {
            return failure.code;
        }
        return PF_Err{0};
    };
    EXPECT_EQ(codeOf(), 5);
    EXPECT_EQ(services.worlds, 0);
    services.newWorldCode = 77;
    EXPECT_EQ(codeOf(), 77);
}

TEST_F(WorldTest, NoWorldSuiteAtAllIsAMissingSuite) {
    services.worldSuite2 = services.worldSuite1 = false;
    EXPECT_THROW(make(), A_long);
}

}  // namespace
