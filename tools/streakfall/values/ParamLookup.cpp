#include "ParamLookup.h"

#include "Failure.h"
#include "Text.h"

namespace tool {

using standin::ParamInfo;

const ParamInfo& ParamLookup::find(std::string_view nameOrId) const {
    const ParamInfo& param = findAny(nameOrId);
    if (!param.hasValue())
        failUsage("\"{}\" is a {} and has no value; the nearest: {}", nameOrId,
                  standin::kindName(param.type), quotedList(nearestNames(nameOrId)));
    return param;
}

const ParamInfo& ParamLookup::findAny(std::string_view nameOrId) const {
    const ParamInfo* param = search(nameOrId);
    if (param == nullptr)
        failUsage("there is no parameter \"{}\"; the nearest: {}", nameOrId,
                  quotedList(nearestNames(nameOrId)));
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
    std::vector<std::string> names;
    for (const ParamInfo& param : params_)
        if (param.hasValue()) names.push_back(param.name);
    return nearestOf(name, names);
}

}  // namespace tool
