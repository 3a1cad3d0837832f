// The module's operator new and delete, over blocks of the host. Every form is replaced, so that
// memory of the module never meets memory of the process around it: the standard library inside
// the module uses these too, and nothing that it hands out leaves the module.
#include <cstddef>
#include <new>

#include "share/util/HostBlocks.h"

namespace {

using AEUtil::allocateBlock;
using AEUtil::freeBlock;

std::size_t alignmentOf(std::align_val_t alignment) { return static_cast<std::size_t>(alignment); }

void* allocateOrNull(std::size_t size, std::size_t alignment = AEUtil::kBlockAlignment) noexcept {
    try {
        return allocateBlock(size, alignment);
    } catch (...) {
        return nullptr;
    }
}

}  // namespace

// Plain and over-aligned blocks have the same header, so every delete is the same one.

void* operator new(std::size_t size) { return allocateBlock(size); }
void* operator new[](std::size_t size) { return allocateBlock(size); }
void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocateBlock(size, alignmentOf(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return allocateBlock(size, alignmentOf(alignment));
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocateOrNull(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocateOrNull(size);
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return allocateOrNull(size, alignmentOf(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return allocateOrNull(size, alignmentOf(alignment));
}

void operator delete(void* address) noexcept { freeBlock(address); }
void operator delete[](void* address) noexcept { freeBlock(address); }
void operator delete(void* address, std::size_t) noexcept { freeBlock(address); }
void operator delete[](void* address, std::size_t) noexcept { freeBlock(address); }
void operator delete(void* address, std::align_val_t) noexcept { freeBlock(address); }
void operator delete[](void* address, std::align_val_t) noexcept { freeBlock(address); }
void operator delete(void* address, std::size_t, std::align_val_t) noexcept { freeBlock(address); }
void operator delete[](void* address, std::size_t, std::align_val_t) noexcept {
    freeBlock(address);
}
void operator delete(void* address, const std::nothrow_t&) noexcept { freeBlock(address); }
void operator delete[](void* address, const std::nothrow_t&) noexcept { freeBlock(address); }
void operator delete(void* address, std::align_val_t, const std::nothrow_t&) noexcept {
    freeBlock(address);
}
void operator delete[](void* address, std::align_val_t, const std::nothrow_t&) noexcept {
    freeBlock(address);
}
