// Finds the effect's parameters as a user names them. Holds a reference to the host's list, which
// must outlive it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/ParamInfo.h"

namespace tool {

class ParamLookup {
  public:
    explicit ParamLookup(const std::vector<standin::ParamInfo>& params) : params_(params) {}

    // By the exact name, else by the fixed id. Throws Failure (usage) that names the nearest
    // names when there is none, or when it is a group.
    [[nodiscard]] const standin::ParamInfo& find(std::string_view nameOrId) const;
    // The same, groups too.
    [[nodiscard]] const standin::ParamInfo& findAny(std::string_view nameOrId) const;

  private:
    [[nodiscard]] const standin::ParamInfo* search(std::string_view nameOrId) const;
    [[nodiscard]] std::vector<std::string> nearestNames(std::string_view name) const;

    const std::vector<standin::ParamInfo>& params_;
};

}  // namespace tool
