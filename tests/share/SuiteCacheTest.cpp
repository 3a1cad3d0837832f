#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>
#include <vector>

#include "FakeServices.h"
#include "share/util/SuiteCache.h"

namespace {

using AEUtil::SuiteCache;

// The number that a missing suite throws, 0 when nothing was thrown.
template <class Work>
A_long thrownNumber(Work&& work) {
    try {
        work();
    } catch (A_long number) {
        return number;
    }
    return 0;
}

TEST(SuiteCacheTest, MissingSuiteThrowsAPlainNumber) {
    FakeServices services;
    services.handleSuite = false;
    EXPECT_EQ(thrownNumber([] { SuiteCache cache(nullptr); }), 516);
    SuiteCache cache(services.basic());
    EXPECT_EQ(thrownNumber([&] { cache.get<PF_HandleSuite1>(); }), 516);
    EXPECT_EQ(cache.find<PF_HandleSuite1>(), nullptr);
}

TEST(SuiteCacheTest, HoldsASuiteOnceAndReleasesItAtScopesEnd) {
    FakeServices services;
    try {
        SuiteCache cache(services.basic());
        const PF_HandleSuite1* const first = &cache.get<PF_HandleSuite1>();
        EXPECT_EQ(&cache.get<PF_HandleSuite1>(), first);
        cache.get<PF_WorldSuite1>();
        EXPECT_EQ(services.held("PF Handle Suite", 2), 1);
        EXPECT_EQ(services.held("PF World Suite", 1), 1);
        throw std::runtime_error("passes the cache");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(services.heldInAll(), 0);
}

TEST(SuiteCacheTest, GlobalInstanceStandsBetweenSetUpAndTearDown) {
    FakeServices services;
    SuiteCache::setUpGlobal(nullptr);
    EXPECT_EQ(SuiteCache::global(), nullptr);
    for (int life = 0; life < 2; ++life) {
        SuiteCache::setUpGlobal(services.basic());
        SuiteCache* const standing = SuiteCache::global();
        ASSERT_NE(standing, nullptr);
        SuiteCache::setUpGlobal(services.basic());
        EXPECT_EQ(SuiteCache::global(), standing);
        standing->get<PF_HandleSuite1>();
        EXPECT_EQ(services.heldInAll(), 1);
        SuiteCache::tearDownGlobal();
        EXPECT_EQ(SuiteCache::global(), nullptr);
        EXPECT_EQ(services.heldInAll(), 0);
    }
}

// A slot that several threads fill at once must cost one acquire in the end.
TEST(SuiteCacheTest, ThreadsThatFillASlotAtOnceBalance) {
    FakeServices services;
    for (int round = 0; round < 50; ++round) {
        {
            SuiteCache cache(services.basic());
            std::vector<std::thread> threads;
            for (int i = 0; i < 4; ++i) {
                threads.emplace_back([&] { cache.get<PF_WorldTransformSuite1>(); });
            }
            for (auto& thread : threads) thread.join();
            EXPECT_EQ(services.heldInAll(), 1);
        }
        ASSERT_EQ(services.heldInAll(), 0);
    }
}

}  // namespace
