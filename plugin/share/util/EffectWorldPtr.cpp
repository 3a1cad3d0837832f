#include "share/util/EffectWorldPtr.h"

#include <utility>

#include "share/util/SuiteCache.h"

namespace AEUtil {

namespace {

// The result is not looked at: there is nobody left to tell.
void disposeOf(WorldHolder& holder) noexcept {
    SuiteCache* const suites = SuiteCache::global();
    if (suites == nullptr) return;
    if (const ScopedWorldSuite2 suite(suites->basic()); suite) {
        suite->PF_DisposeWorld(holder.effectRef, &holder.world);
    } else if (const auto* older = suites->find<PF_WorldSuite1>()) {
        older->dispose_world(holder.effectRef, &holder.world);
    }
}

}  // namespace

EffectWorldPtr::EffectWorldPtr(WorldHolder* newHolder) noexcept : holder(newHolder) {
    if (holder != nullptr) holder->refCount = 1;
}

EffectWorldPtr::EffectWorldPtr(const EffectWorldPtr& other) noexcept
    : holder(other.holder), world(other.world) {
    if (holder != nullptr) ++holder->refCount;
}

EffectWorldPtr::EffectWorldPtr(EffectWorldPtr&& other) noexcept
    : holder(std::exchange(other.holder, nullptr)), world(std::exchange(other.world, nullptr)) {}

EffectWorldPtr& EffectWorldPtr::operator=(EffectWorldPtr other) noexcept {
    std::swap(holder, other.holder);
    std::swap(world, other.world);
    return *this;
}

std::int32_t EffectWorldPtr::release() noexcept {
    if (holder == nullptr) return -1;
    WorldHolder* const held = std::exchange(holder, nullptr);
    // A world that the host never made is not given back to it.
    const bool made = std::exchange(world, nullptr) != nullptr;
    if (--held->refCount > 0) return held->refCount;
    if (made) disposeOf(*held);
    delete held;
    return 0;
}

}  // namespace AEUtil
