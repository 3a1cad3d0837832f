#include "host/Handles.h"

#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>
#include <unordered_map>

namespace standin::handles {
namespace {

// No effect asks for more; a negative size widened with its sign is far above.
constexpr A_HandleSize kLargest = A_HandleSize{1} << 32;

struct Block {
    void* address = nullptr;  // a handle is a pointer to this member
    A_HandleSize size = 0;
    int locks = 0;
    int pins = 0;
    std::shared_ptr<Ledger> owner;

    ~Block() { std::free(address); }
};

struct Store {
    std::mutex mutex;
    std::unordered_map<PF_Handle, std::unique_ptr<Block>> blocks;

    Block* find(PF_Handle handle) {
        const auto found = blocks.find(handle);
        return found == blocks.end() ? nullptr : found->second.get();
    }

    Block* find(PF_Handle handle, Ledger& caller, const char* action) {
        Block* block = find(handle);
        if (!block) {
            caller.violation(std::string(action) +
                             (handle ? " of a handle that is not alive" : " of a null handle"));
        }
        return block;
    }
};

// Never destroyed: modules free their last blocks while the process ends.
Store& store() {
    static Store& only = *new Store;
    return only;
}

// malloc aligns to 16 on the platforms in question.
void* allocate(A_HandleSize size) {
    return size > kLargest ? nullptr : std::malloc(size ? size : 1);
}

void move(Block& block) {
    void* fresh = allocate(block.size);
    if (fresh) {
        std::memcpy(fresh, block.address, block.size);
        std::free(block.address);
        block.address = fresh;
    }
}

}  // namespace

PF_Handle create(const std::shared_ptr<Ledger>& owner, A_HandleSize size) {
    auto block = std::make_unique<Block>();
    block->address = allocate(size);
    if (!block->address) {
        return nullptr;
    }
    block->size = size;
    block->owner = owner;
    owner->lend(Loan::handle);
    const PF_Handle handle = &block->address;
    const std::lock_guard lock(store().mutex);
    store().blocks.emplace(handle, std::move(block));
    return handle;
}

void* lock(PF_Handle handle, Ledger& caller) {
    const std::lock_guard guard(store().mutex);
    Block* block = store().find(handle, caller, "lock");
    if (!block) {
        return nullptr;
    }
    ++block->locks;
    block->owner->lend(Loan::handleLock);
    return block->address;
}

void unlock(PF_Handle handle, Ledger& caller, bool moves) {
    const std::lock_guard guard(store().mutex);
    Block* block = store().find(handle, caller, "unlock");
    if (!block) {
        return;
    }
    if (block->locks == 0) {
        caller.violation("unlock of a handle that is not locked");
        return;
    }
    --block->locks;
    block->owner->giveBack(Loan::handleLock);
    if (moves && block->locks == 0 && block->pins == 0) {
        move(*block);
    }
}

void dispose(PF_Handle handle, Ledger& caller) {
    const std::lock_guard guard(store().mutex);
    Block* block = store().find(handle, caller, "disposal");
    if (!block) {
        return;
    }
    if (block->locks != 0) {
        caller.violation("disposal of a locked handle of " + std::to_string(block->size) +
                         " bytes");
    }
    for (; block->locks > 0; --block->locks) {
        block->owner->giveBack(Loan::handleLock);
    }
    block->owner->giveBack(Loan::handle);
    store().blocks.erase(handle);
}

A_HandleSize size(PF_Handle handle, Ledger& caller) {
    const std::lock_guard guard(store().mutex);
    const Block* block = store().find(handle, caller, "size");
    return block ? block->size : 0;
}

PF_Err resize(PF_Handle handle, A_HandleSize size, Ledger& caller) {
    const std::lock_guard guard(store().mutex);
    Block* block = store().find(handle, caller, "resize");
    if (!block || block->locks != 0) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    void* fresh = size > kLargest ? nullptr : std::realloc(block->address, size ? size : 1);
    if (!fresh) {
        return PF_Err_OUT_OF_MEMORY;
    }
    block->address = fresh;
    block->size = size;
    return PF_Err_NONE;
}

bool alive(PF_Handle handle) {
    const std::lock_guard guard(store().mutex);
    return store().find(handle) != nullptr;
}

void pin(PF_Handle handle, int by) {
    const std::lock_guard guard(store().mutex);
    if (Block* block = store().find(handle)) {
        block->pins += by;
    }
}

std::vector<std::uint8_t> bytes(PF_Handle handle) {
    const std::lock_guard guard(store().mutex);
    const Block* block = store().find(handle);
    if (!block) {
        return {};
    }
    const auto* first = static_cast<const std::uint8_t*>(block->address);
    return {first, first + block->size};
}

}  // namespace standin::handles
