// Looks: sets of values with a name, either one of those that ship or the user's own file.
//
//   {"name": {"en": "Rain", "ja": "..."}, "about": {"en": "...", "ja": "..."},
//    "size": [1920, 1080], "values": {"Thickness": 6, "Color": "#e8f1ff"}}
//
// All but the values may be left out. A file of values alone, and what `params --json` prints,
// are looks as well. A size is that of the frame the look was made for.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Words.h"
#include "host/Instance.h"

namespace tool {

struct Look {
    std::string key;                   // what --look takes; of a file its path
    std::array<std::string, 2> name;   // by Language, UTF-8; may be empty
    std::array<std::string, 2> about;  // one sentence; likewise
    std::optional<standin::LayerSize> size;
    std::string values;  // a JSON object, as --params takes it
};

// Throws Failure (usage) that says what is wrong.
[[nodiscard]] Look parseLook(std::string_view key, std::string_view text);

// From the words that a rendered picture carries: "Thickness=6; Color=#e8f1ff". Throws Failure
// (input) for other words.
[[nodiscard]] Look lookFromWords(std::string_view key, std::string_view words);

// Those that ship, by key.
[[nodiscard]] const std::vector<Look>& shippedLooks();

// Null when none of those that ship has this key.
[[nodiscard]] const Look* findShippedLook(std::string_view key);

// What --look names: the key of one that ships, or else a file. Throws Failure: usage when there
// is neither, with the nearest keys, or when the file is no look; input when it cannot be read.
[[nodiscard]] Look loadLook(const std::string& keyOrPath);

// The file of a look, ready to be loaded again. `values` is left as it is.
[[nodiscard]] std::string lookText(const Look& look);

// What a value becomes on a layer of another size than the look's.
[[nodiscard]] double fitted(double value, Fit fit, standin::LayerSize madeFor,
                            standin::LayerSize layer);

}  // namespace tool
