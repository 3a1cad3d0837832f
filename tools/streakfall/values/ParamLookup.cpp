#include "ParamLookup.h"

#include <algorithm>
#include <utility>

#include "Failure.h"
#include "Text.h"

namespace tool {

using standin::ParamInfo;

const ParamInfo& ParamLookup::find(std::string_view nameOrId) const {
    const ParamInfo* param = search(nameOrId);
    if (param == nullptr)
        failUsage("there is no parameter \"{}\"; the nearest: {}", nameOrId,
                  quotedList(nearestNames(nameOrId)));
    if (!param->hasValue())
        failUsage("\"{}\" is a {} and has no value; the nearest: {}", nameOrId,
                  standin::kindName(param->type), quotedList(nearestNames(nameOrId)));
    return *param;
}

const ParamInfo* ParamLookup::search(std::string_view nameOrId) const {
    for (const ParamInfo& param : params_)
        if (!param.name.empty() && param.name == nameOrId) return &param;
    const auto id = parseInt(nameOrId);
    for (const ParamInfo& param : params_)
        if (id && param.id == *id) return &param;
    return nullptr;
}

std::vector<std::string> ParamLookup::nearestNames(std::string_view name) const {
    constexpr std::size_t kCount = 3;
    const std::string wanted = lowered(trimmed(name));
    std::vector<std::pair<int, std::string>> names;
    for (const ParamInfo& param : params_) {
        if (!param.hasValue()) continue;
        // A part of a name counts as near: "Seed" is meant for "Random Seed".
        const bool part =
            wanted.size() > 2 && lowered(param.name).find(wanted) != std::string::npos;
        const int distance = editDistance(wanted, param.name);
        names.emplace_back(part ? std::min(distance, 2) : distance, param.name);
    }
    std::stable_sort(names.begin(), names.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    const int farthest = static_cast<int>(wanted.size()) / 2;
    std::vector<std::string> nearest;
    for (const auto& [distance, text] : names)
        if (nearest.empty() || (distance <= farthest && nearest.size() < kCount))
            nearest.push_back(text);
    return nearest;
}

}  // namespace tool
