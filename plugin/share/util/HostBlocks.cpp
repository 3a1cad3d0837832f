#include "share/util/HostBlocks.h"

#include <cstdint>
#include <limits>
#include <new>

#include "share/util/PendingErrorList.h"
#include "share/util/SuiteCache.h"

namespace AEUtil {

namespace {

[[noreturn]] void outOfMemory() {
    RecordError(PF_Err_OUT_OF_MEMORY);
    throw std::bad_alloc();
}

// The host is asked in signed 32-bit sizes. A larger request is one that it cannot meet; cut to
// 32 bits it would come back as a block that is too small.
A_HandleSize handleSize(std::size_t size, std::size_t alignment) {
    constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();
    const std::size_t extra =
        sizeof(BlockHeader) + (alignment > kBlockAlignment ? alignment : std::size_t{0});
    if (alignment > kMost / 2 || size > kMost - extra) outOfMemory();
    return static_cast<A_HandleSize>(size + extra);
}

char* alignUp(char* address, std::size_t alignment) {
    const auto misfit = reinterpret_cast<std::uintptr_t>(address) & (alignment - 1);
    return misfit == 0 ? address : address + (alignment - misfit);
}

}  // namespace

void* allocateBlock(std::size_t size, std::size_t alignment) {
    SuiteCache* const suites = SuiteCache::global();
    if (suites == nullptr) return nullptr;
    const PF_HandleSuite1& handles = suites->get<PF_HandleSuite1>();

    const PF_Handle handle = handles.host_new_handle(handleSize(size, alignment));
    if (handle == nullptr) outOfMemory();
    char* const locked = static_cast<char*>(handles.host_lock_handle(handle));
    if (locked == nullptr) {
        handles.host_dispose_handle(handle);
        outOfMemory();
    }

    char* address = locked + sizeof(BlockHeader);
    if (alignment > kBlockAlignment) address = alignUp(address, alignment);
    ::new (address - sizeof(BlockHeader)) BlockHeader{handle, {}};
    return address;
}

void freeBlock(void* address) noexcept {
    SuiteCache* const suites = SuiteCache::global();
    if (suites == nullptr || address == nullptr) return;
    const auto* const handles = suites->find<PF_HandleSuite1>();
    // Read before the unlock: from there on the host may move the block.
    const PF_Handle handle =
        reinterpret_cast<BlockHeader*>(static_cast<char*>(address) - sizeof(BlockHeader))->handle;
    if (handles == nullptr || handle == nullptr) return;
    handles->host_unlock_handle(handle);
    handles->host_dispose_handle(handle);
}

}  // namespace AEUtil
