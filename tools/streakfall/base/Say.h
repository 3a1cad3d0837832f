// The program's words. What cannot be written is dropped: a log on a full disk, a closed terminal
// or a reader that went away stops no frame. Whether standard output took all of it is asked once,
// at the end, since there it may be what was wanted. Safe from any thread.
#pragma once

#include <fmt/format.h>

#include <string_view>
#include <utility>

namespace tool {

// On standard error, at once.
void sayText(std::string_view text);
// On standard output.
void printText(std::string_view text);

template <class... Args>
void say(fmt::format_string<Args...> format, Args&&... args) {
    sayText(fmt::format(format, std::forward<Args>(args)...));
}

template <class... Args>
void print(fmt::format_string<Args...> format, Args&&... args) {
    printText(fmt::format(format, std::forward<Args>(args)...));
}

// Hands over what is still held back. In words why standard output lost something; empty when it
// took all, and when its reader had enough and went away.
[[nodiscard]] std::string flushOutput();

// To be called first. A standard stream that is closed would give its number to the next file that
// is opened, and words meant for the stream would land in a picture: it is opened on nothing. A
// pipe without a reader becomes an error of the write instead of the program's end.
void guardStreams();

}  // namespace tool
