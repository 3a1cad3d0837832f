#include "FilePattern.h"

#include <cctype>
#include <optional>

#include "Failure.h"
#include "Text.h"

namespace tool {

namespace {

constexpr int kMostDigits = 20;

struct Place {
    std::size_t length;  // characters of the pattern
    int width;
};

// "%d", "%4d" or "%04d" at the start of the text. A padding with blanks is none for file names:
// every width pads with zeros.
std::optional<Place> percentPlace(std::string_view text) {
    std::size_t end = 1;
    while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end]))) ++end;
    if (end == text.size() || text[end] != 'd') return std::nullopt;
    const int width = end == 1 ? 1 : parseInt(text.substr(1, end - 1)).value_or(kMostDigits + 1);
    return Place{end + 1, width};
}

std::size_t hashRun(std::string_view text) {
    const auto end = text.find_first_not_of('#');
    return end == std::string_view::npos ? text.size() : end;
}

// A run of "#" at the start of the text, in brackets or bare.
std::optional<Place> hashPlace(std::string_view text) {
    const bool bracket = text[0] == '[';
    const std::size_t run = hashRun(text.substr(bracket ? 1 : 0));
    if (run == 0) return std::nullopt;
    if (bracket && (run + 1 == text.size() || text[run + 1] != ']')) return std::nullopt;
    return Place{run + (bracket ? 2 : 0), static_cast<int>(run)};
}

}  // namespace

FilePattern::FilePattern(std::string_view text, std::string_view option) : text_(text) {
    if (text.empty()) failUsage("{}: the file name is empty", option);
    literals_.emplace_back();
    while (!text.empty()) {
        const char c = text[0];
        if (c == '%' && text.substr(1, 1) == "%") {
            literals_.back() += '%';
            text.remove_prefix(2);
            continue;
        }
        std::optional<Place> place;
        if (c == '%') place = percentPlace(text);
        if (c == '#' || c == '[') place = hashPlace(text);
        if (!place) {
            literals_.back() += c;
            text.remove_prefix(1);
            continue;
        }
        if (c != '%' && place->width == 1)
            failUsage(
                "{}: one lone # in \"{}\" is read differently from program to program; "
                "write #### or %04d for four digits, %d for no padding",
                option, text_);
        if (place->width > kMostDigits)
            failUsage("{}: the frame number in \"{}\" has more than {} digits", option, text_,
                      kMostDigits);
        numbers_.push_back(place->width);
        literals_.emplace_back();
        text.remove_prefix(place->length);
    }
}

std::string FilePattern::fileFor(int frame) const {
    std::string name = literals_[0];
    for (std::size_t i = 0; i < numbers_.size(); ++i)
        name += fmt::format("{:0{}}", frame, numbers_[i]) + literals_[i + 1];
    return name;
}

}  // namespace tool
