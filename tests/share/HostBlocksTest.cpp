#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>

#include "FakeServices.h"
#include "share/util/HostBlocks.h"
#include "share/util/PendingErrorList.h"
#include "share/util/SuiteCache.h"

namespace {

using AEUtil::allocateBlock;
using AEUtil::freeBlock;
using AEUtil::PendingErrorList;
using AEUtil::SuiteCache;

class HostBlocksTest : public ::testing::Test {
  protected:
    void SetUp() override {
        SuiteCache::setUpGlobal(services.basic());
        ASSERT_TRUE(PendingErrorList::create());
    }
    void TearDown() override {
        PendingErrorList::destroy();
        SuiteCache::tearDownGlobal();
        EXPECT_EQ(services.handles, 0);
        EXPECT_EQ(services.locks, 0);
        EXPECT_EQ(services.heldInAll(), 0);
    }

    FakeServices services;
};

TEST_F(HostBlocksTest, HandleStandsThirtyTwoBytesBeforeTheAddress) {
    void* const block = allocateBlock(0);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(services.lastSize, 32u);
    PF_Handle handle = nullptr;
    std::memcpy(&handle, static_cast<char*>(block) - 32, sizeof handle);
    EXPECT_EQ(static_cast<char*>(*handle) + 32, block);
    EXPECT_EQ(services.locks, 1);
    freeBlock(block);
    freeBlock(nullptr);
}

// The host promises 16 and no more: whatever it gives beyond must not be counted on.
TEST_F(HostBlocksTest, AnyAlignmentOnAnyLockedAddress) {
    for (const std::size_t misalignment : {0u, 16u, 32u, 48u}) {
        services.misalignment = misalignment;
        for (const std::size_t alignment : {1u, 8u, 16u, 32u, 64u, 256u, 4096u}) {
            for (const std::size_t size : {0u, 1u, 100u}) {
                void* const block = allocateBlock(size, alignment);
                EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignment, 0u);
                std::memset(block, 0xAB, size);
                const auto* const first = reinterpret_cast<char**>(
                    reinterpret_cast<AEUtil::BlockHeader*>(static_cast<char*>(block) - 32)->handle);
                EXPECT_LE(static_cast<char*>(block) + size, *first + services.lastSize);
                freeBlock(block);
            }
        }
    }
}

TEST_F(HostBlocksTest, WithoutMemoryRecordsFourAndThrows) {
    services.newHandleFails = true;
    EXPECT_THROW(allocateBlock(10), std::bad_alloc);
    EXPECT_EQ(PendingErrorList::takeFirst(), 4);
    services.newHandleFails = false;
    services.lockFails = true;
    EXPECT_THROW(allocateBlock(10), std::bad_alloc);
    EXPECT_EQ(PendingErrorList::takeFirst(), 4);
}

// Cut to the host's 32 bits these sizes would come back as blocks of a few bytes.
TEST_F(HostBlocksTest, RefusesSizesBeyondTheHosts) {
    constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();
    for (const std::size_t size :
         {kMost, kMost - 31, std::size_t{1} << 32, SIZE_MAX, SIZE_MAX - 31}) {
        EXPECT_THROW(allocateBlock(size), std::bad_alloc) << size;
        EXPECT_THROW(allocateBlock(size, 64), std::bad_alloc) << size;
    }
    PendingErrorList::clear();
}

TEST(HostBlocksWithoutHostTest, NullBeforeAndNothingAfter) {
    FakeServices services;
    EXPECT_EQ(allocateBlock(10), nullptr);
    SuiteCache::setUpGlobal(services.basic());
    void* const block = allocateBlock(10);
    SuiteCache::tearDownGlobal();
    freeBlock(block);
    EXPECT_EQ(services.handles, 1);

    SuiteCache::setUpGlobal(services.basic());
    freeBlock(block);
    SuiteCache::tearDownGlobal();
    EXPECT_EQ(services.handles, 0);
}

}  // namespace
