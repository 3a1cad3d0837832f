// What the fuzzers share: the effect on a host, and how a finding ends the process.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/Host.h"
#include "validate/Report.h"

namespace fuzz {

// Says what is wrong and aborts, which is what the fuzzer keeps an input for.
[[noreturn]] void finding(std::string_view what);

template <class... Parts>
void expect(bool holds, const Parts&... otherwise) {
    if (!holds) finding(validate::text(otherwise...));
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

// The effect, started. Worlds and handles lie in allocations of exactly their size, so that the
// address sanitizer sees the first byte too many. Owner: a fuzzer, for the life of the process.
class Stage {
  public:
    explicit Stage(standin::HostOffer offer = {});
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    standin::Host& host() { return host_; }

    // Sets down and starts again, as when the user leaves the host and comes back.
    void restart();
    // Between commands: no broken rule, and nothing lent that a command must give back.
    void expectTidy();

  private:
    void start();
    void stop();

    standin::Host host_;
};

}  // namespace fuzz
