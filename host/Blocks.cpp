#include "host/Blocks.h"

#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

namespace standin {
namespace blocks {
namespace {

struct Store {
    std::mutex mutex;
    std::size_t limit = 0;
    std::size_t kept = 0;  // bytes
    std::map<std::size_t, std::vector<void*>> free;

    // Frees kept blocks of other sizes, which belong to frames gone by, until `size` fits.
    void makeRoom(std::size_t size) {
        for (auto at = free.begin(); at != free.end() && kept + size > limit;) {
            auto& [other, list] = *at;
            while (other != size && !list.empty() && kept + size > limit) {
                std::free(list.back());
                list.pop_back();
                kept -= other;
            }
            at = list.empty() ? free.erase(at) : std::next(at);
        }
    }
};

// Never destroyed, as modules may give worlds back while the process ends.
Store& store() {
    static Store& only = *new Store;
    return only;
}

void* takeKept(std::size_t size) {
    const std::lock_guard lock(store().mutex);
    const auto found = store().free.find(size);
    if (found == store().free.end() || found->second.empty()) {
        return nullptr;
    }
    void* block = found->second.back();
    found->second.pop_back();
    store().kept -= size;
    return block;
}

}  // namespace

void keep(std::size_t bytes) {
    const std::lock_guard lock(store().mutex);
    store().limit = bytes;
    store().makeRoom(0);
}

void* take(std::size_t size, bool clear) {
    void* block = takeKept(size);
    if (!block) {
        return clear ? std::calloc(size ? size : 1, 1) : std::malloc(size ? size : 1);
    }
    if (clear) {
        std::memset(block, 0, size);
    }
    return block;
}

void giveBack(void* block, std::size_t size) {
    if (!block) {
        return;
    }
    {
        const std::lock_guard lock(store().mutex);
        store().makeRoom(size);
        if (store().kept + size <= store().limit) {
            store().free[size].push_back(block);
            store().kept += size;
            return;
        }
    }
    std::free(block);
}

}  // namespace blocks

BlockBytes::BlockBytes(std::size_t size) : BlockBytes(size, true) {}

BlockBytes::BlockBytes(std::size_t size, bool clear)
    : data_(static_cast<std::byte*>(blocks::take(size, clear))), size_(size) {
    if (!data_) {
        throw std::bad_alloc();
    }
}

BlockBytes BlockBytes::adopt(std::byte* data, std::size_t size) {
    BlockBytes bytes;
    bytes.data_ = data;
    bytes.size_ = size;
    return bytes;
}

BlockBytes::BlockBytes(const BlockBytes& other) : BlockBytes(other.size_, false) {
    if (size_ != 0) {
        std::memcpy(data_, other.data_, size_);
    }
}

bool BlockBytes::operator==(const BlockBytes& other) const {
    return size_ == other.size_ && (size_ == 0 || std::memcmp(data_, other.data_, size_) == 0);
}

void BlockBytes::swap(BlockBytes& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
}

}  // namespace standin
