// Blocks of memory over the host's handles: what the module's operator new and delete are made of.
//
//   locked address                          address handed out
//   | ... room to align ... | handle, 8 bytes | 24 unused bytes | the caller's bytes
//                           '-------- 32 bytes header --------'
//
// A block stays locked for its whole life. The host's lock gives an address aligned to 16 as far
// as anything here relies on; a wider alignment is made inside the block.
#pragma once

#include <cstddef>

#include "hostapi/hostapi.h"

namespace AEUtil {

struct BlockHeader {
    PF_Handle handle;
    char unused[24];
};
static_assert(sizeof(BlockHeader) == 32);

// Alignment that a block has without being asked.
inline constexpr std::size_t kBlockAlignment = 16;

// Null when there is no global SuiteCache; throws MissingSuite's number when the handle suite is
// absent; records 4 and throws std::bad_alloc when the host has no memory.
void* allocateBlock(std::size_t size, std::size_t alignment = kBlockAlignment);

// Does nothing for null and for any address while there is no global SuiteCache.
void freeBlock(void* address) noexcept;

}  // namespace AEUtil
