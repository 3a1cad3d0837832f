// EffectWorldPtr: a reference-counted handle of a world that the effect had the host make. The
// last handle disposes of the world. Worlds that belong to the host never come in here.
//
// A world belongs to one render, so the count is plain: all handles of one world stay on one
// thread.
#pragma once

#include <cstdint>

#include "hostapi/hostapi.h"

namespace AEUtil {

// Shared by all handles of one world.
struct WorldHolder {
    PF_ProgPtr effectRef;   // made with it, disposed of with it
    PF_EffectWorld world;   // all zero until the host fills it
    std::int32_t refCount;  // number of handles
};

class EffectWorldPtr {
  public:
    // No world: both pointers null.
    EffectWorldPtr() noexcept = default;
    // Takes a new holder, or null, as its first handle.
    explicit EffectWorldPtr(WorldHolder* newHolder) noexcept;
    EffectWorldPtr(const EffectWorldPtr& other) noexcept;
    EffectWorldPtr(EffectWorldPtr&& other) noexcept;
    EffectWorldPtr& operator=(EffectWorldPtr other) noexcept;
    ~EffectWorldPtr() { release(); }

    // Gives this handle's reference back and empties the handle. Returns how many are left; 0 when
    // the world was disposed of; -1 when there was no holder.
    std::int32_t release() noexcept;

    WorldHolder* holder = nullptr;
    PF_EffectWorld* world = nullptr;  // inside the holder; null until the host made the world
};

}  // namespace AEUtil
