// The settings file's text: finding and replacing values in it, without any file.
//
// Follows the rules that Platform.h states for settings files. Works on bytes; any text is valid,
// and what is not a section, a key or a comment is carried along untouched.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace streakfall::platform::profile {

// The value of the first such key in the first such section, without the blanks and the pair of
// quotes around it. Points into the text.
std::optional<std::string_view> findValue(std::string_view text, std::string_view section,
                                          std::string_view key);

// The text with the key set to the value. Everything else keeps its bytes; new lines end in
// "\r\n".
std::string withValue(std::string_view text, std::string_view section, std::string_view key,
                      std::string_view value);

// Decimal, modulo 2^32; 0 for a text that does not begin with a number.
std::int32_t parseInteger(std::string_view text);

}  // namespace streakfall::platform::profile
