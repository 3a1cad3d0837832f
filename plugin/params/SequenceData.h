// The block that the host keeps for each instance of the effect.
//
// Live, it is a SequenceState behind a host handle; in a project it is 24 bytes:
//
//   offset  0   4   8             12       16       20
//           |   |   |             |        |        |
//           "qesp"  formatVersion flatSize reserved reserved      all little-endian
//               flatFlag 1      1       24        0        0
//
// Version and size stand in the other order in the live block. The memo of "Start Point" lasts as
// long as the instance is open and is never stored, so a block that cannot be read costs nothing:
// it becomes a fresh one.
//
// The host owns the handles between commands. A block is touched only between lock and unlock
// within one command, on the host's calling thread.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "hostapi/hostapi.h"
#include "share/util/SuiteCache.h"

namespace streakfall {

inline constexpr std::uint32_t kSequenceMagic = 0x70736571;  // "qesp" in memory
inline constexpr std::uint32_t kSequenceFormatVersion = 1;
inline constexpr std::uint32_t kSequenceFlatSize = 24;  // bytes

struct SequenceState {
    std::uint32_t magic;
    std::uint32_t flatFlag;  // 0 in live data, 1 in flat data
    std::uint32_t flatSize;
    std::uint32_t formatVersion;
    std::uint8_t reserved[8];
    std::uint8_t startPointKnown;  // 1 when the memo holds a position
    PF_Fixed startPointMemoX;      // 16.16 layer pixels, at the last update of the panel
    PF_Fixed startPointMemoY;
};

// Leaves the memo alone.
void resetSequenceHeader(SequenceState& state);

// Appends the flat form, with flatFlag 1 whatever the state's says.
void flattenSequence(const SequenceState& state, std::vector<std::uint8_t>& bytes);

// Reads a flat form. Too few bytes, another version, another size or another first word give a
// fresh header; false only for too few bytes. The memo stays as it is.
bool unflattenSequence(SequenceState& state, std::span<const std::uint8_t> bytes);

// A locked handle; unlocks when it leaves scope. Null, short and unlockable handles are all seen
// as a block of no bytes.
class LockedBlock {
  public:
    LockedBlock(const PF_InData* inData, PF_Handle handle);
    ~LockedBlock();
    LockedBlock(const LockedBlock&) = delete;
    LockedBlock& operator=(const LockedBlock&) = delete;

    explicit operator bool() const { return data_ != nullptr; }
    std::span<std::uint8_t> bytes() const { return {data_, size_}; }
    // Whether the block begins with the magic word.
    bool isOwn() const;
    // The block as live data, or null when it is too short, not of this effect or flat.
    SequenceState* liveState() const;

  private:
    AEUtil::SuiteCache suites_;
    PF_Handle handle_;
    std::uint8_t* data_ = nullptr;
    std::size_t size_ = 0;
};

// False also for a null handle and for one that gives nothing when locked.
bool isOwnSequenceData(const PF_InData* inData, PF_Handle handle);

// The four operations on PF_Cmd_SEQUENCE_*; each returns a host error code.

// Puts a fresh live block into out_data. 4 when the host gives no handle, 512 when it gives no
// lock.
[[nodiscard]] PF_Err sequenceSetup(const PF_InData* inData, PF_OutData* outData);

// Replaces the block in out_data by its flat form and disposes of the live one. On an error
// (512: no block, or no lock; 4: no handle) out_data still holds the live block.
[[nodiscard]] PF_Err sequenceFlatten(const PF_InData* inData, PF_OutData* outData);

// Turns what a project or a duplicate brings into a live block in out_data. The old handle in
// in_data stays the host's. `setup` is the effect's own operation for a fresh block.
[[nodiscard]] PF_Err sequenceResetup(const PF_InData* inData, PF_OutData* outData, auto&& setup);

[[nodiscard]] PF_Err sequenceSetdown(const PF_InData* inData);

// The part of the resetup behind a setup that succeeded: fills the fresh block in out_data. 512
// when that has no lock; it is disposed of then, and out_data holds what it held before the setup.
[[nodiscard]] PF_Err readOldSequence(const PF_InData* inData, PF_OutData* outData,
                                     const LockedBlock& old, PF_Handle before);

PF_Err sequenceResetup(const PF_InData* inData, PF_OutData* outData, auto&& setup) {
    if (!isOwnSequenceData(inData, inData->sequence_data)) return setup();
    const LockedBlock old(inData, inData->sequence_data);
    if (!old) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    const PF_Handle before = outData->sequence_data;
    if (const PF_Err error = setup(); error != PF_Err_NONE) return error;
    return readOldSequence(inData, outData, old, before);
}

}  // namespace streakfall
