// A page's values as a file for --look, and back.
#pragma once

#include <string>

#include "Look.h"
#include "Values.h"

namespace tool::panel {

// All values, points in percent of the layer, keys too; made for a layer of this size.
[[nodiscard]] std::string lookFile(const Values& values, const Params& params,
                                   standin::LayerSize layer, const std::string& name);

// A file's name and its text, as a page sent them. Throws Failure (usage).
[[nodiscard]] Look readLookFile(const std::string& name, const std::string& text);

}  // namespace tool::panel
