#include "FakeServices.h"

#include <new>

FakeServices* FakeServices::active = nullptr;

namespace {

constexpr std::align_val_t kAlignment{64};

// What a fake handle points at: its first pointer is the address, as the host promises.
struct Block {
    void* address;
    void* storage;
};

}  // namespace

struct FakeCalls {
    static FakeServices& fake() { return *FakeServices::active; }

    static const void* table(const std::string& name, A_long number) {
        if (name == "PF Handle Suite" && number == 2 && fake().handleSuite) {
            return &fake().handleTable_;
        }
        if (name == "PF World Suite" && number == 1 && fake().worldSuite1) {
            return &fake().olderWorldTable_;
        }
        if (name == "PF World Suite" && number == 2 && fake().worldSuite2) {
            return &fake().worldTable_;
        }
        if (name == "PF World Transform Suite" && number == 1) return &fake().transformTable_;
        return nullptr;
    }

    static SPErr acquire(const A_char* name, A_long number, const void** suite) {
        const std::lock_guard lock(fake().mutex_);
        *suite = table(name, number);
        if (*suite == nullptr) return 1;
        ++fake().held_[{name, number}];
        return 0;
    }

    static SPErr release(const A_char* name, A_long number) {
        const std::lock_guard lock(fake().mutex_);
        --fake().held_[{name, number}];
        const bool world = std::string(name) == "PF World Suite" && number == 2;
        return world ? fake().releaseWorldSuiteCode : 0;
    }

    static PF_Handle newHandle(A_HandleSize size) {
        fake().lastSize = size;
        if (fake().newHandleFails) return nullptr;
        auto* const block = new Block;
        block->storage = ::operator new(size + fake().misalignment, kAlignment);
        block->address = static_cast<char*>(block->storage) + fake().misalignment;
        ++fake().handles;
        return reinterpret_cast<PF_Handle>(block);
    }
    static void* lock(PF_Handle handle) {
        if (fake().lockFails) return nullptr;
        ++fake().locks;
        return *handle;
    }
    static void unlock(PF_Handle) { --fake().locks; }
    static void dispose(PF_Handle handle) {
        auto* const block = reinterpret_cast<Block*>(handle);
        ::operator delete(block->storage, kAlignment);
        delete block;
        --fake().handles;
    }

    static PF_Err newWorld(A_long width, A_long height, PF_EffectWorld* world) {
        if (fake().newWorldCode != 0) return fake().newWorldCode;
        ++fake().worlds;
        world->width = width;
        world->height = height;
        return 0;
    }
    static PF_Err newOlderWorld(PF_ProgPtr, A_long width, A_long height, PF_NewWorldFlags flags,
                                PF_EffectWorld* world) {
        fake().lastFlags = flags;
        return newWorld(width, height, world);
    }
    static PF_Err newNewerWorld(PF_ProgPtr, A_long width, A_long height, PF_Boolean,
                                PF_PixelFormat format, PF_EffectWorld* world) {
        fake().lastFormat = format;
        return newWorld(width, height, world);
    }
    static PF_Err disposeWorld(PF_ProgPtr ref, PF_EffectWorld*) {
        --fake().worlds;
        fake().lastDisposeRef = ref;
        return 0;
    }
};

FakeServices::FakeServices() {
    active = this;
    basic_.AcquireSuite = FakeCalls::acquire;
    basic_.ReleaseSuite = FakeCalls::release;
    handleTable_.host_new_handle = FakeCalls::newHandle;
    handleTable_.host_lock_handle = FakeCalls::lock;
    handleTable_.host_unlock_handle = FakeCalls::unlock;
    handleTable_.host_dispose_handle = FakeCalls::dispose;
    olderWorldTable_.new_world = FakeCalls::newOlderWorld;
    olderWorldTable_.dispose_world = FakeCalls::disposeWorld;
    worldTable_.PF_NewWorld = FakeCalls::newNewerWorld;
    worldTable_.PF_DisposeWorld = FakeCalls::disposeWorld;
}

FakeServices::~FakeServices() { active = nullptr; }

long FakeServices::held(const std::string& name, A_long number) {
    const std::lock_guard lock(mutex_);
    return held_[{name, number}];
}

long FakeServices::heldInAll() {
    const std::lock_guard lock(mutex_);
    long sum = 0;
    for (const auto& [suite, count] : held_) sum += count;
    return sum;
}
