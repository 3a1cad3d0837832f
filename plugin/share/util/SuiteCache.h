// SuiteCache: the host's suites, acquired by name and version on first use and kept.
//
// One global instance serves the allocator, the background and worlds on older hosts; it stands
// from first-call initialisation to shutdown. Code that needs a suite in a bounded scope builds
// a local instance, which releases its suites when it leaves scope, also when an exception
// passes.
//
// Thread: get() may run on several threads at once; a suite that two of them acquired is
// released again by the later one. Construction, ReleaseAll and the two global operations want
// the instance to themselves.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>

#include "hostapi/hostapi.h"

namespace AEUtil {

// Suites that a cache can hold. Each has one row in SuiteCache.cpp: name and number.
enum class SuiteId { Handle, FillMatte, WorldTransform, World1, ParamUtils, App, Count };

// Binds a suite's record to its place in the cache.
template <class Record>
inline constexpr SuiteId kSuiteOf = SuiteId::Count;
template <>
inline constexpr SuiteId kSuiteOf<PF_HandleSuite1> = SuiteId::Handle;
template <>
inline constexpr SuiteId kSuiteOf<PF_FillMatteSuite2> = SuiteId::FillMatte;
template <>
inline constexpr SuiteId kSuiteOf<PF_WorldTransformSuite1> = SuiteId::WorldTransform;
template <>
inline constexpr SuiteId kSuiteOf<PF_WorldSuite1> = SuiteId::World1;
template <>
inline constexpr SuiteId kSuiteOf<PF_ParamUtilsSuite1> = SuiteId::ParamUtils;
template <>
inline constexpr SuiteId kSuiteOf<PFAppSuite4> = SuiteId::App;

// Throws the plain number 516 (PF_Err_BAD_CALLBACK_PARAM) as an A_long: a suite that the effect
// cannot work without is absent.
[[noreturn]] void MissingSuite();

class SuiteCache {
  public:
    // A null pointer is a missing suite.
    explicit SuiteCache(SPBasicSuite* basic);
    ~SuiteCache() { ReleaseAll(); }
    SuiteCache(const SuiteCache&) = delete;
    SuiteCache& operator=(const SuiteCache&) = delete;

    // The suite; throws MissingSuite when the host has none.
    template <class Record>
    const Record& get() {
        const Record* record = find<Record>();
        if (record == nullptr) MissingSuite();
        return *record;
    }

    // The suite, or null when the host has none. Does not throw.
    template <class Record>
    const Record* find() noexcept {
        static_assert(kSuiteOf<Record> != SuiteId::Count, "this record is no cached suite");
        return static_cast<const Record*>(acquire(kSuiteOf<Record>));
    }

    // Releases every suite held. The slots keep their values: the instance is at its end.
    void ReleaseAll() noexcept;

    SPBasicSuite* basic() const noexcept { return basic_; }

    // The global instance, null before setUpGlobal and after tearDownGlobal.
    static SuiteCache* global() noexcept;
    // Does nothing when the instance stands already or `basic` is null.
    static void setUpGlobal(SPBasicSuite* basic) noexcept;
    static void tearDownGlobal() noexcept;

  private:
    const void* acquire(SuiteId id) noexcept;

    SPBasicSuite* basic_;
    std::array<std::atomic<const void*>, static_cast<std::size_t>(SuiteId::Count)> slots_{};
};

// One use of a suite that is never cached. Acquired by name and number, held for the scope.
class ScopedSuite {
  public:
    // A null `basic` counts as absent. Only the pointer tells whether the suite came; the code of
    // the acquire is not looked at.
    ScopedSuite(SPBasicSuite* basic, const char* name, A_long number) noexcept;
    ~ScopedSuite() { release(); }
    ScopedSuite(const ScopedSuite&) = delete;
    ScopedSuite& operator=(const ScopedSuite&) = delete;

    const void* record() const noexcept { return record_; }

    // Gives the suite back now and returns the host's code; 0 when there is nothing to give back.
    SPErr release() noexcept;

  private:
    SPBasicSuite* basic_;
    const char* name_;
    A_long number_;
    const void* record_ = nullptr;
};

// "PF World Suite" number 2: acquired and released around each single use.
class ScopedWorldSuite2 : public ScopedSuite {
  public:
    explicit ScopedWorldSuite2(SPBasicSuite* basic) noexcept
        : ScopedSuite(basic, kPFWorldSuite, kPFWorldSuiteVersion2) {}
    explicit operator bool() const noexcept { return record() != nullptr; }
    const PF_WorldSuite2* operator->() const noexcept {
        return static_cast<const PF_WorldSuite2*>(record());
    }
};

}  // namespace AEUtil
