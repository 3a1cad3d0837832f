#include "params/SequenceData.h"

#include <cstring>
#include <utility>

#include "params/HostQuestions.h"

namespace streakfall {

static_assert(sizeof(SequenceState) == 36);
static_assert(offsetof(SequenceState, startPointKnown) == kSequenceFlatSize,
              "the header is as long as the flat form");

namespace {

void appendWord(std::vector<std::uint8_t>& bytes, std::uint32_t word) {
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<std::uint8_t>(word >> shift));
    }
}

std::uint32_t wordAt(std::span<const std::uint8_t> bytes, std::size_t offset) {
    std::uint32_t word = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        word |= static_cast<std::uint32_t>(bytes[offset + i]) << (8 * i);
    }
    return word;
}

// A host handle that is disposed of unless it is released to the host.
class NewHandle {
  public:
    NewHandle(const PF_InData* inData, std::size_t size)
        : NewHandle(inData, inData->utils->host_new_handle(size)) {}
    NewHandle(const PF_InData* inData, PF_Handle made) : utils_(*inData->utils), handle_(made) {}
    ~NewHandle() {
        if (handle_ != nullptr) utils_.host_dispose_handle(handle_);
    }
    NewHandle(const NewHandle&) = delete;
    NewHandle& operator=(const NewHandle&) = delete;

    PF_Handle get() const { return handle_; }
    PF_Handle release() {
        const PF_Handle handle = handle_;
        handle_ = nullptr;
        return handle;
    }

  private:
    const PF_UtilCallbacks& utils_;
    PF_Handle handle_;
};

}  // namespace

void resetSequenceHeader(SequenceState& state) {
    state.magic = kSequenceMagic;
    state.flatFlag = 0;
    state.flatSize = kSequenceFlatSize;
    state.formatVersion = kSequenceFormatVersion;
    std::memset(state.reserved, 0, sizeof state.reserved);
}

void flattenSequence(const SequenceState& state, std::vector<std::uint8_t>& bytes) {
    appendWord(bytes, state.magic);
    appendWord(bytes, 1);
    appendWord(bytes, state.formatVersion);
    appendWord(bytes, state.flatSize);
    bytes.insert(bytes.end(), std::begin(state.reserved), std::end(state.reserved));
}

bool unflattenSequence(SequenceState& state, std::span<const std::uint8_t> bytes) {
    if (bytes.size() < kSequenceFlatSize) {
        resetSequenceHeader(state);
        return false;
    }
    state.magic = wordAt(bytes, 0);
    state.formatVersion = wordAt(bytes, 8);
    state.flatSize = wordAt(bytes, 12);
    std::memcpy(state.reserved, bytes.data() + 16, sizeof state.reserved);
    if (state.magic != kSequenceMagic || state.formatVersion != kSequenceFormatVersion ||
        state.flatSize != kSequenceFlatSize) {
        resetSequenceHeader(state);
    }
    state.flatFlag = 0;
    return true;
}

LockedBlock::LockedBlock(const PF_InData* inData, PF_Handle handle)
    : suites_(inData->pica_basicP), handle_(handle) {
    if (handle_ == nullptr) return;
    const auto& suite = suites_.get<PF_HandleSuite1>();
    data_ = static_cast<std::uint8_t*>(suite.host_lock_handle(handle_));
    if (data_ != nullptr) size_ = inData->utils->host_get_handle_size(handle_);
}

LockedBlock::~LockedBlock() {
    if (data_ != nullptr) suites_.find<PF_HandleSuite1>()->host_unlock_handle(handle_);
}

bool LockedBlock::isOwn() const {
    return size_ >= sizeof(kSequenceMagic) && wordAt(bytes(), 0) == kSequenceMagic;
}

SequenceState* LockedBlock::liveState() const {
    if (!isOwn() || size_ < sizeof(SequenceState)) return nullptr;
    auto* state = reinterpret_cast<SequenceState*>(data_);
    return state->flatFlag == 0 ? state : nullptr;
}

bool isOwnSequenceData(const PF_InData* inData, PF_Handle handle) {
    return handle != nullptr && LockedBlock(inData, handle).isOwn();
}

PF_Err sequenceSetup(const PF_InData* inData, PF_OutData* outData) {
    NewHandle handle(inData, sizeof(SequenceState));
    if (handle.get() == nullptr) return PF_Err_OUT_OF_MEMORY;
    const LockedBlock block(inData, handle.get());
    if (!block) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    SequenceState state{};
    resetSequenceHeader(state);
    std::memcpy(block.bytes().data(), &state, sizeof state);
    outData->sequence_data = handle.release();
    return PF_Err_NONE;
}

namespace {

// The flat form of the live block, in a handle of its own. A host without a user interface has its
// header taken as it is.
PF_Err makeFlat(const PF_InData* inData, PF_Handle live, PF_Handle& flat) {
    const LockedBlock block(inData, live);
    // Shorter than a header: nothing that setup or resetup made.
    if (block.bytes().size() < kSequenceFlatSize) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    SequenceState state{};
    std::memcpy(&state, block.bytes().data(), kSequenceFlatSize);
    if (!isRenderEngine(inData)) {
        resetSequenceHeader(state);
        std::memcpy(block.bytes().data(), &state, kSequenceFlatSize);
    }
    std::vector<std::uint8_t> bytes;
    flattenSequence(state, bytes);

    NewHandle handle(inData, bytes.size());
    if (handle.get() == nullptr) return PF_Err_OUT_OF_MEMORY;
    const LockedBlock flatBlock(inData, handle.get());
    if (!flatBlock) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    std::memcpy(flatBlock.bytes().data(), bytes.data(), bytes.size());
    flat = handle.release();
    return PF_Err_NONE;
}

}  // namespace

PF_Err sequenceFlatten(const PF_InData* inData, PF_OutData* outData) {
    const PF_Handle live = outData->sequence_data;
    const PF_Err error = makeFlat(inData, live, outData->sequence_data);
    // The host keeps the flat block only: the one that it replaces is the effect's to free.
    if (error == PF_Err_NONE) inData->utils->host_dispose_handle(live);
    return error;
}

PF_Err readOldSequence(const PF_InData* inData, PF_OutData* outData, const LockedBlock& old,
                       PF_Handle before) {
    // The host takes nothing from a command that fails, so the fresh block is the effect's to free
    // until all is well.
    NewHandle fresh(inData, std::exchange(outData->sequence_data, before));
    const LockedBlock block(inData, fresh.get());
    if (block.bytes().size() < sizeof(SequenceState)) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    // Whatever it says, the block is usable: it has a fresh header at least.
    unflattenSequence(*reinterpret_cast<SequenceState*>(block.bytes().data()), old.bytes());
    outData->sequence_data = fresh.release();
    return PF_Err_NONE;
}

PF_Err sequenceSetdown(const PF_InData* inData) {
    if (inData->sequence_data != nullptr) {
        inData->utils->host_dispose_handle(inData->sequence_data);
    }
    return PF_Err_NONE;
}

}  // namespace streakfall
