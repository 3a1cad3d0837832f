#include "host/SuiteTables.h"

#include <array>
#include <atomic>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <utility>

#include "host/Services.h"

namespace standin {
namespace {

constexpr int kSlots = 64;

struct Slots {
    std::mutex mutex;
    std::array<std::atomic<Services*>, kSlots> holder{};
};

Slots& slots() {
    static Slots only;
    return only;
}

SPErr allocateBlock(std::size_t size, void** block) {
    *block = std::malloc(size);
    return *block ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY;
}

SPErr freeBlock(void* block) {
    std::free(block);
    return PF_Err_NONE;
}

SPErr reallocateBlock(void* block, std::size_t size, void** fresh) {
    *fresh = std::realloc(block, size);
    return *fresh ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY;
}

A_long isEqual(const A_char* one, const A_char* other) { return std::strcmp(one, other) == 0; }

// The functions of slot N: each finds its host by the number it is compiled for.
template <int N>
struct Slot {
    static Services& host() { return *slots().holder[N].load(); }

    static SPErr acquire(const A_char* name, A_long version, const void** suite) {
        return host().acquireSuite(name, version, suite);
    }
    static SPErr release(const A_char* name, A_long version) {
        return host().releaseSuite(name, version);
    }
    static SPErr undefined() { return PF_Err_INVALID_CALLBACK; }
    static PF_Handle newHandle(A_HandleSize size) { return host().newHandle(size); }
    static void* lock(PF_Handle handle) { return host().lockHandle(handle); }
    static void unlock(PF_Handle handle) { host().unlockHandle(handle); }
    static void dispose(PF_Handle handle) { host().disposeHandle(handle); }
    static A_HandleSize size(PF_Handle handle) { return host().handleSize(handle); }
    static PF_Err resize(A_HandleSize size, PF_Handle* handle) {
        return host().resizeHandle(size, handle);
    }
    static PF_Err pixelFormat(const PF_EffectWorld* world, PF_PixelFormat* format) {
        return host().pixelFormat(world, format);
    }
    static PF_Err isRenderEngine(PF_Boolean* answer) { return host().isRenderEngine(answer); }

    static void fill(SuiteTables& tables) {
        tables.basic = {acquire,   release,         isEqual,  allocateBlock,
                        freeBlock, reallocateBlock, undefined};
        tables.handle = {newHandle, lock, unlock, dispose, size, resize};
        tables.world2.PF_GetPixelFormat = pixelFormat;
        tables.app.PF_IsRenderEngine = isRenderEngine;
        tables.utils.host_new_handle = newHandle;
        tables.utils.host_lock_handle = lock;
        tables.utils.host_unlock_handle = unlock;
        tables.utils.host_dispose_handle = dispose;
        tables.utils.host_get_handle_size = size;
        tables.utils.host_resize_handle = resize;
    }
};

using Fill = void (*)(SuiteTables&);

template <int... N>
constexpr std::array<Fill, kSlots> allFills(std::integer_sequence<int, N...>) {
    return {Slot<N>::fill...};
}

constexpr auto kFills = allFills(std::make_integer_sequence<int, kSlots>{});

int formatted(A_char* buffer, const A_char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsprintf(buffer, format, arguments);
    va_end(arguments);
    return length;
}

A_char* copied(A_char* to, const A_char* from) { return std::strcpy(to, from); }

PF_ANSICallbacks ansiCallbacks() {
    PF_ANSICallbacks ansi{};
    ansi.atan = std::atan;
    ansi.atan2 = std::atan2;
    ansi.ceil = std::ceil;
    ansi.cos = std::cos;
    ansi.exp = std::exp;
    ansi.fabs = std::fabs;
    ansi.floor = std::floor;
    ansi.fmod = std::fmod;
    ansi.hypot = std::hypot;
    ansi.log = std::log;
    ansi.log10 = std::log10;
    ansi.pow = std::pow;
    ansi.sin = std::sin;
    ansi.sqrt = std::sqrt;
    ansi.tan = std::tan;
    ansi.sprintf = formatted;
    ansi.strcpy = copied;
    ansi.asin = std::asin;
    ansi.acos = std::acos;
    return ansi;
}

}  // namespace

namespace suiteSlots {

int take(Services& services, SuiteTables& tables) {
    const std::lock_guard lock(slots().mutex);
    for (int slot = 0; slot < kSlots; ++slot) {
        if (!slots().holder[slot]) {
            slots().holder[slot] = &services;
            tables = {};
            tables.utils.ansi = ansiCallbacks();
            kFills[slot](tables);
            addWorldCallbacks(tables);
            addCommandCallbacks(tables);
            return slot;
        }
    }
    return -1;
}

void leave(int slot) {
    const std::lock_guard lock(slots().mutex);
    slots().holder[slot] = nullptr;
}

}  // namespace suiteSlots

}  // namespace standin
