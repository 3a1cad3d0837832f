// The few suites that the host library asks for, with counters and failures on demand. One at a
// time: the suites' functions find it through `active`.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "hostapi/hostapi.h"

class FakeServices {
  public:
    FakeServices();
    ~FakeServices();
    FakeServices(const FakeServices&) = delete;
    FakeServices& operator=(const FakeServices&) = delete;

    SPBasicSuite* basic() { return &basic_; }

    // Acquired and not released, of one suite; of all suites.
    long held(const std::string& name, A_long number);
    long heldInAll();

    bool worldSuite2 = true;
    bool worldSuite1 = true;
    bool handleSuite = true;

    bool newHandleFails = false;
    bool lockFails = false;
    std::size_t misalignment = 0;  // of locked addresses, past a multiple of 64
    A_HandleSize lastSize = 0;
    std::atomic<long> handles{0};
    std::atomic<long> locks{0};

    PF_Err newWorldCode = 0;
    SPErr releaseWorldSuiteCode = 0;
    long worlds = 0;
    A_long lastFlags = -1;   // of the older form
    A_long lastFormat = -1;  // of the newer form
    PF_ProgPtr lastDisposeRef = nullptr;

    static FakeServices* active;

  private:
    friend struct FakeCalls;

    std::mutex mutex_;
    std::map<std::pair<std::string, A_long>, long> held_;
    SPBasicSuite basic_{};
    PF_HandleSuite1 handleTable_{};
    PF_WorldSuite1 olderWorldTable_{};
    PF_WorldSuite2 worldTable_{};
    PF_WorldTransformSuite1 transformTable_{};
};
