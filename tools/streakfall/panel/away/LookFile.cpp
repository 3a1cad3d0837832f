#include "LookFile.h"

#include "JsonText.h"

namespace tool::panel {

namespace {

// As --set takes it, so that a point fits other layers too.
std::string textOf(const standin::ParamInfo& param, const standin::Value& value,
                   standin::LayerSize layer) {
    if (param.type != PF_Param_POINT) return valueText(param, value);
    return fmt::format("{}%,{}%", value.part[0] / layer.width * 100,
                       value.part[1] / layer.height * 100);
}

Json constantOf(const standin::ParamInfo& param, const standin::Value& value,
                standin::LayerSize layer) {
    return param.type == PF_Param_POINT ? Json(textOf(param, value, layer))
                                        : valueJson(param, value);
}

}  // namespace

std::string lookFile(const Values& values, const Params& params, standin::LayerSize layer,
                     const std::string& name) {
    Json all = Json::object();
    for (const standin::ParamInfo& param : params) {
        if (!param.hasValue()) continue;
        const Setting& setting = values.of(param);
        Json& entry = all[param.name];
        if (setting.keys.empty()) entry = constantOf(param, setting.constant, layer);
        for (const auto& [frame, key] : setting.keys)
            entry[std::to_string(frame)] =
                fmt::format("{}:{}", textOf(param, key.value, layer), wayName(key.behind));
    }
    Look look;
    look.name = {name, name};
    look.size = layer;
    look.values = all.dump();
    return lookText(look);
}

Look readLookFile(const std::string& name, const std::string& text) {
    (void)parseJson(text);  // tells the line of what is wrong, and how deep it may go
    return parseLook(name, text);
}

}  // namespace tool::panel
