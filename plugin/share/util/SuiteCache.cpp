#include "share/util/SuiteCache.h"

#include <iterator>
#include <new>

namespace AEUtil {

namespace {

struct SuiteName {
    const char* name;
    A_long number;
};

// In the order of SuiteId. The number is the one that the host knows, not that of the record.
constexpr SuiteName kSuiteNames[] = {
    {kPFHandleSuite, kPFHandleSuiteVersion},
    {kPFFillMatteSuite, kPFFillMatteSuiteVersion},
    {kPFWorldTransformSuite, kPFWorldTransformSuiteVersion},
    {kPFWorldSuite, kPFWorldSuiteVersion1},
    {kPFParamUtilsSuite, kPFParamUtilsSuiteVersion},
    {kPFAppSuite, kPFAppSuiteVersion},
};
static_assert(std::size(kSuiteNames) == static_cast<std::size_t>(SuiteId::Count));

// Plain bytes, so that nothing is destroyed at the end of the process: the host is gone by then,
// and its suites must not be released.
alignas(SuiteCache) constinit std::byte globalStorage[sizeof(SuiteCache)]{};
constinit std::atomic<SuiteCache*> globalCache{nullptr};

const void* acquireFrom(SPBasicSuite* basic, const SuiteName& suite) noexcept {
    const void* record = nullptr;
    const SPErr error = basic->AcquireSuite(suite.name, suite.number, &record);
    return error == 0 ? record : nullptr;
}

}  // namespace

void MissingSuite() { throw A_long{PF_Err_BAD_CALLBACK_PARAM}; }

SuiteCache::SuiteCache(SPBasicSuite* basic) : basic_(basic) {
    if (basic == nullptr) MissingSuite();
}

const void* SuiteCache::acquire(SuiteId id) noexcept {
    const auto index = static_cast<std::size_t>(id);
    const void* held = slots_[index].load(std::memory_order_acquire);
    if (held != nullptr) return held;

    const SuiteName& suite = kSuiteNames[index];
    const void* acquired = acquireFrom(basic_, suite);
    if (acquired == nullptr) return nullptr;
    if (slots_[index].compare_exchange_strong(held, acquired, std::memory_order_acq_rel)) {
        return acquired;
    }
    // Another thread was first: one acquire a slot, so that one release balances it.
    basic_->ReleaseSuite(suite.name, suite.number);
    return held;
}

void SuiteCache::ReleaseAll() noexcept {
    for (std::size_t index = 0; index < slots_.size(); ++index) {
        if (slots_[index].load(std::memory_order_acquire) != nullptr) {
            basic_->ReleaseSuite(kSuiteNames[index].name, kSuiteNames[index].number);
        }
    }
}

SuiteCache* SuiteCache::global() noexcept { return globalCache.load(std::memory_order_acquire); }

void SuiteCache::setUpGlobal(SPBasicSuite* basic) noexcept {
    if (basic == nullptr || global() != nullptr) return;
    globalCache.store(::new (globalStorage) SuiteCache(basic), std::memory_order_release);
}

void SuiteCache::tearDownGlobal() noexcept {
    SuiteCache* cache = global();
    if (cache == nullptr) return;
    cache->~SuiteCache();
    globalCache.store(nullptr, std::memory_order_release);
}

ScopedSuite::ScopedSuite(SPBasicSuite* basic, const char* name, A_long number) noexcept
    : basic_(basic), name_(name), number_(number) {
    if (basic_ != nullptr) basic_->AcquireSuite(name_, number_, &record_);
}

SPErr ScopedSuite::release() noexcept {
    if (record_ == nullptr) return 0;
    record_ = nullptr;
    return basic_->ReleaseSuite(name_, number_);
}

}  // namespace AEUtil
