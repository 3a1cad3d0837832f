// How the program ends, and the one exception that carries an ending up to main.
//
// The text of a failure is one line that names the thing (file, option, parameter); main prints
// it behind the program's name and ends with the code.
#pragma once

#include <fmt/format.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace tool {

enum class Exit : int {
    kDone = 0,        // all frames written, or skipped for good reason
    kSomeFailed = 1,  // some frames written, others not
    kUsage = 2,
    kInput = 3,
    kOutput = 4,
    kEffect = 5,  // the effect or the host; its code is in the text
};

class Failure : public std::runtime_error {
  public:
    Failure(Exit code, const std::string& text) : std::runtime_error(text), code_(code) {}

    [[nodiscard]] Exit code() const { return code_; }

  private:
    Exit code_;
};

template <class... Args>
[[noreturn]] void fail(Exit code, fmt::format_string<Args...> format, Args&&... args) {
    throw Failure(code, fmt::format(format, std::forward<Args>(args)...));
}

template <class... Args>
[[noreturn]] void failUsage(fmt::format_string<Args...> format, Args&&... args) {
    throw Failure(Exit::kUsage, fmt::format(format, std::forward<Args>(args)...));
}

}  // namespace tool
