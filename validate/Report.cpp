#include "validate/Report.h"

#include <unistd.h>

#include <algorithm>

namespace validate {
namespace {

// More would bury the first.
constexpr int kMostFindings = 12;

}  // namespace

void Report::at(std::string place) {
    place_ = std::move(place);
    write(kPlaceLine, place_);
}

void Report::finding(const std::string& what) {
    write(kFindingLine, place_.empty() ? what : place_ + ": " + what);
    if (++findings_ >= kMostFindings) throw EndOfCheck{};
}

void Report::stop(const std::string& what) {
    finding(what);
    throw EndOfCheck{};
}

void Report::note(const std::string& what) { write(kNoteLine, what); }

void Report::done() { write(kDoneLine, {}); }

// A pipe that nobody reads any more is no reason to stop.
void Report::write(char kind, const std::string& what) {
    std::string line = kind + what;
    std::ranges::replace(line, '\n', ' ');
    line += '\n';
    for (std::size_t written = 0; written < line.size();) {
        const ssize_t count = ::write(pipe_, line.data() + written, line.size() - written);
        if (count <= 0) return;
        written += static_cast<std::size_t>(count);
    }
}

}  // namespace validate
