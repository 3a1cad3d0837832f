#include <gtest/gtest.h>

#include <random>

#include "FakeHost.h"
#include "params/SequenceData.h"

namespace streakfall::test {
namespace {

using Bytes = std::vector<unsigned char>;

const Bytes kFlat = {'q', 'e', 's', 'p', 1, 0, 0, 0, 1, 0, 0, 0,
                     24,  0,   0,   0,   0, 0, 0, 0, 0, 0, 0, 0};

class SequenceData : public ::testing::Test {
  protected:
    ~SequenceData() override {
        // The instance ends: whatever block there is now is the last one.
        host.in.sequence_data = host.out.sequence_data;
        EXPECT_EQ(sequenceSetdown(&host.in), PF_Err_NONE);
    }

    PF_Err resetup() {
        return sequenceResetup(&host.in, &host.out,
                               [&] { return sequenceSetup(&host.in, &host.out); });
    }
    // The host gives a block to resetup and disposes of it after the command, as hosts do.
    PF_Err resetupFrom(const Bytes& bytes) {
        host.in.sequence_data = host.newBlock(bytes.data(), bytes.size());
        const PF_Err error = resetup();
        dispose(host.in.sequence_data);
        return error;
    }
    void dispose(PF_Handle& handle) {
        if (handle != nullptr) host.in.utils->host_dispose_handle(handle);
        handle = nullptr;
    }
    SequenceState live() const {
        SequenceState state{};
        const Bytes bytes = host.bytes(host.out.sequence_data);
        EXPECT_EQ(bytes.size(), sizeof state);
        std::memcpy(&state, bytes.data(), sizeof state);
        return state;
    }
    void expectFresh() const {
        const SequenceState state = live();
        EXPECT_EQ(std::memcmp(&state.magic, "qesp", 4), 0);
        EXPECT_EQ(state.flatFlag, 0u);
        EXPECT_EQ(state.flatSize, 24u);
        EXPECT_EQ(state.formatVersion, 1u);
        EXPECT_EQ(state.startPointKnown, 0);
        EXPECT_EQ(state.startPointMemoX, 0);
    }
    void fillMemo() {
        const LockedBlock block(&host.in, host.out.sequence_data);
        SequenceState* state = block.liveState();
        ASSERT_NE(state, nullptr);
        state->startPointKnown = 1;
        state->startPointMemoX = state->startPointMemoY = 0x01010101;
    }

    FakeHost host;
};

TEST_F(SequenceData, FlattenGivesTheSame24BytesAlways) {
    ASSERT_EQ(sequenceSetup(&host.in, &host.out), PF_Err_NONE);
    expectFresh();
    fillMemo();
    for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(sequenceFlatten(&host.in, &host.out), PF_Err_NONE);
        EXPECT_EQ(host.bytes(host.out.sequence_data), kFlat);
        EXPECT_EQ(host.locks.size(), 1u) << "the live block that was replaced is gone";

        PF_Handle old = host.in.sequence_data = host.out.sequence_data;
        ASSERT_EQ(resetup(), PF_Err_NONE);
        dispose(old);
        expectFresh();
    }
}

TEST_F(SequenceData, AMissingOrForeignBlockIsASetup) {
    ASSERT_EQ(resetup(), PF_Err_NONE);
    expectFresh();
    dispose(host.out.sequence_data);
    ASSERT_EQ(resetupFrom(Bytes(24, 'x')), PF_Err_NONE);
    expectFresh();
}

// Every length, with the right first word and without, also with a live block's bytes.
TEST_F(SequenceData, AnyBlockBecomesAFreshOne) {
    std::mt19937 random(3);
    for (std::size_t size = 0; size <= 64; ++size) {
        for (int kind = 0; kind < 20; ++kind) {
            Bytes bytes(size);
            for (auto& byte : bytes) byte = static_cast<unsigned char>(random());
            if (kind % 2 == 0)
                std::copy_n(kFlat.begin(), std::min<std::size_t>(size, 4), bytes.begin());
            if (kind % 4 == 0) {
                std::copy_n(kFlat.begin(), std::min(size, kFlat.size()), bytes.begin());
                if (kind == 4 && size > 8) bytes[8] = 2;     // a later version
                if (kind == 8 && size > 12) bytes[12] = 36;  // another size
            }
            ASSERT_EQ(resetupFrom(bytes), PF_Err_NONE) << size;
            expectFresh();
            ASSERT_EQ(sequenceFlatten(&host.in, &host.out), PF_Err_NONE);
            Bytes flat = host.bytes(host.out.sequence_data);
            flat.resize(16);
            EXPECT_EQ(flat, Bytes(kFlat.begin(), kFlat.begin() + 16));
            dispose(host.out.sequence_data);
        }
    }
}

TEST_F(SequenceData, ADuplicateOfALiveInstanceStartsFresh) {
    ASSERT_EQ(sequenceSetup(&host.in, &host.out), PF_Err_NONE);
    fillMemo();
    PF_Handle original = host.in.sequence_data = host.out.sequence_data;
    ASSERT_EQ(resetup(), PF_Err_NONE);
    expectFresh();
    dispose(original);
}

TEST_F(SequenceData, WhatTheHostRefusesLeavesNothingBehind) {
    host.failNewHandleAfter = 0;
    EXPECT_EQ(sequenceSetup(&host.in, &host.out), PF_Err_OUT_OF_MEMORY);
    host.failNewHandleAfter = -1;
    host.failLockAfter = 0;
    EXPECT_EQ(sequenceSetup(&host.in, &host.out), PF_Err_INTERNAL_STRUCT_DAMAGED);
    EXPECT_TRUE(host.locks.empty());
    EXPECT_EQ(sequenceFlatten(&host.in, &host.out), PF_Err_INTERNAL_STRUCT_DAMAGED);

    host.failLockAfter = -1;
    ASSERT_EQ(sequenceSetup(&host.in, &host.out), PF_Err_NONE);
    const PF_Handle handle = host.out.sequence_data;
    host.failNewHandleAfter = 0;
    EXPECT_EQ(sequenceFlatten(&host.in, &host.out), PF_Err_OUT_OF_MEMORY);
    host.failNewHandleAfter = -1;
    for (int locks = 0; locks < 2; ++locks) {
        host.failLockAfter = locks;
        EXPECT_EQ(sequenceFlatten(&host.in, &host.out), PF_Err_INTERNAL_STRUCT_DAMAGED);
        EXPECT_EQ(host.out.sequence_data, handle) << "the live block stays";
        EXPECT_EQ(host.locks.size(), 1u);
    }
    host.failLockAfter = -1;
}

// In order: the question whether the block is the effect's own, the old block, the setup's, the
// new block.
TEST_F(SequenceData, AResetupThatCannotLock) {
    const PF_Err expected[] = {PF_Err_NONE, PF_Err_INTERNAL_STRUCT_DAMAGED,
                               PF_Err_INTERNAL_STRUCT_DAMAGED, PF_Err_INTERNAL_STRUCT_DAMAGED};
    for (int n = 1; n < 4; ++n) {
        host.failLockAfter = n;
        EXPECT_EQ(resetupFrom(kFlat), expected[n]) << n;
        dispose(host.out.sequence_data);
    }
    host.failLockAfter = -1;
    EXPECT_EQ(resetupFrom(kFlat), PF_Err_NONE);
}

TEST_F(SequenceData, ASetupThatFailsGivesItsCodeBack) {
    host.in.sequence_data = host.newBlock(kFlat.data(), kFlat.size());
    EXPECT_EQ(sequenceResetup(&host.in, &host.out, [] { return PF_Err{77}; }), 77);
    dispose(host.in.sequence_data);
}

TEST_F(SequenceData, UnflattenTakesShortBlocksAsNone) {
    SequenceState state{};
    state.startPointKnown = 1;
    state.startPointMemoX = 5;
    EXPECT_FALSE(unflattenSequence(state, std::span(kFlat).first(23)));
    EXPECT_EQ(state.flatSize, 24u);
    state.flatFlag = 1;
    EXPECT_TRUE(unflattenSequence(state, kFlat));
    EXPECT_EQ(state.flatFlag, 0u);
    EXPECT_EQ(state.startPointMemoX, 5);
    std::vector<std::uint8_t> bytes{0xEE};
    flattenSequence(state, bytes);
    EXPECT_EQ(Bytes(bytes.begin() + 1, bytes.end()), kFlat);
}

TEST_F(SequenceData, ARenderEngineTakesTheHeaderAsItIs) {
    ASSERT_EQ(sequenceSetup(&host.in, &host.out), PF_Err_NONE);
    {
        const LockedBlock block(&host.in, host.out.sequence_data);
        block.liveState()->reserved[7] = 0xAB;
    }
    host.renderEngine = true;
    ASSERT_EQ(sequenceFlatten(&host.in, &host.out), PF_Err_NONE);
    Bytes expected = kFlat;
    expected[23] = 0xAB;
    EXPECT_EQ(host.bytes(host.out.sequence_data), expected);
}

}  // namespace
}  // namespace streakfall::test
