#include "FilePattern.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

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

std::size_t runOf(char sign, std::string_view text) {
    const auto end = text.find_first_not_of(sign);
    return end == std::string_view::npos ? text.size() : end;
}

// A run of "#" or "@" at the start of the text, one of "#" also in brackets.
std::optional<Place> runPlace(std::string_view text) {
    const bool bracket = text[0] == '[';
    const std::size_t run = runOf(bracket ? '#' : text[0], text.substr(bracket ? 1 : 0));
    if (run == 0) return std::nullopt;
    if (bracket && (run + 1 == text.size() || text[run + 1] != ']')) return std::nullopt;
    return Place{run + (bracket ? 2 : 0), static_cast<int>(run)};
}

}  // namespace

FilePattern::FilePattern(std::string_view text, std::string_view option) : text_(text) {
    if (text.empty()) failUsage("{}: the file name is empty", option);
    const auto slash = text.rfind('/');
    folder_ = text.substr(0, slash == std::string_view::npos ? 0 : slash + 1);
    text.remove_prefix(folder_.size());
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
        if (c == '#' || c == '[' || c == '@') place = runPlace(text);
        if (!place) {
            literals_.back() += c;
            text.remove_prefix(1);
            continue;
        }
        if (c != '%' && c != '@' && place->width == 1)
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
    std::string name = folder_ + literals_[0];
    for (std::size_t i = 0; i < numbers_.size(); ++i)
        name += fmt::format("{:0{}}", frame, numbers_[i]) + literals_[i + 1];
    return name;
}

std::vector<int> FilePattern::framesOnDisk(int last) const {
    std::vector<int> frames;
    if (!hasNumber()) return frames;
    std::error_code error;
    std::filesystem::directory_iterator at(folder_.empty() ? "." : folder_, error);
    for (const std::filesystem::directory_iterator end; !error && at != end; at.increment(error)) {
        const auto frame = frameOf(at->path().filename().string());
        if (frame && *frame >= -last && *frame <= last) frames.push_back(*frame);
    }
    std::sort(frames.begin(), frames.end());
    return frames;
}

// The number is read where the first one stands; that the whole name fits is for fileFor to say.
std::optional<int> FilePattern::frameOf(const std::string& name) const {
    if (!name.starts_with(literals_[0])) return std::nullopt;
    const std::string_view rest = std::string_view(name).substr(literals_[0].size());
    const std::size_t sign = rest.starts_with('-') ? 1 : 0;
    const auto digits = rest.substr(sign).find_first_not_of("0123456789");
    const auto frame =
        parseInt(rest.substr(0, digits == std::string_view::npos ? digits : sign + digits));
    return frame && fileFor(*frame) == folder_ + name ? frame : std::nullopt;
}

}  // namespace tool
