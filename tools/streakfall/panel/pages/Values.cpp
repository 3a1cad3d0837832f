#include "Values.h"

#include <array>
#include <utility>

#include "FrameList.h"
#include "JsonText.h"
#include "Text.h"

namespace tool::panel {

namespace {

using standin::LayerSize;
using standin::ParamInfo;
using standin::Value;
using standin::Way;

// More would be no work of hands, and each frame that is drawn takes them along.
constexpr std::size_t kMostKeys = 10'000;

constexpr std::array<std::pair<Way, const char*>, 3> kWays{
    {{Way::line, "line"}, {Way::hold, "hold"}, {Way::ease, "ease"}}};

Way readWay(const Json& key, const ParamInfo& param) {
    const Json name = key.value("way", Json("line"));
    for (const auto& [way, known] : kWays)
        if (name == known) return way;
    refuse(Status::kUnreadable, "\"{}\": the way of a key is line, hold or ease", param.name);
}

const Json& objectIn(const Json& state, const char* name) {
    static const Json none = Json::object();
    const auto found = state.find(name);
    if (found == state.end() || found->is_null()) return none;
    if (!found->is_object()) refuse(Status::kUnreadable, "\"{}\" is to be an object", name);
    return *found;
}

std::map<int, Key> readKeys(const Json& json, const ParamInfo& param, LayerSize layer) {
    if (!json.is_object() || json.empty() || json.size() > kMostKeys)
        refuse(Status::kUnreadable, "\"{}\": keys are an object of 1 to {} frames", param.name,
               kMostKeys);
    std::map<int, Key> keys;
    for (const auto& [text, key] : json.items()) {
        const auto frame = parseInt(text);
        if (!frame || *frame < -kLastFrame || *frame > kLastFrame || !key.is_object() ||
            !key.contains("value"))
            refuse(Status::kUnreadable, "\"{}\": \"{}\" is no key", param.name, text);
        keys[*frame] = {readValue(key["value"], param, layer), readWay(key, param)};
    }
    return keys;
}

}  // namespace

Values::Values(const Params& params, LayerSize layer) {
    for (const ParamInfo& param : params) {
        Value value = param.defaultValue;
        if (param.type == PF_Param_POINT)  // in percent
            value =
                Value::point(value.part[0] * layer.width / 100, value.part[1] * layer.height / 100);
        settings_.push_back({value, {}});
    }
}

void Values::apply(const ParamArguments& arguments, LayerSize layer) {
    for (const auto& [index, given] : arguments.values()) {
        Setting& setting = of(*given.param);
        setting.keys.clear();
        for (const auto& [frame, key] : given.byFrame) {
            const Value value = valueOn(given, key, layer);
            if (given.keyed)
                setting.keys[frame] = {value, key.behind};
            else
                setting.constant = value;
        }
    }
}

void Values::apply(const Json& state, const Params& params, LayerSize layer) {
    if (!state.is_object()) refuse(Status::kUnreadable, "a state is to be an object");
    for (const auto& [index, value] : objectIn(state, "values").items()) {
        const ParamInfo& param = paramAt(params, index);
        set(param, readValue(value, param, layer));
    }
    for (const auto& [index, keys] : objectIn(state, "keys").items()) {
        const ParamInfo& param = paramAt(params, index);
        of(param).keys = readKeys(keys, param, layer);
    }
}

void Values::set(const ParamInfo& param, const Value& value) { of(param) = {value, {}}; }

const Setting& Values::of(const ParamInfo& param) const {
    return settings_[static_cast<std::size_t>(param.index) - 1];
}

Setting& Values::of(const ParamInfo& param) {
    return settings_[static_cast<std::size_t>(param.index) - 1];
}

void Values::storeIn(standin::Instance& instance, const Params& params,
                     const FrameRate& rate) const {
    for (const ParamInfo& param : params) {
        if (!param.hasValue()) continue;
        const Setting& setting = of(param);
        instance.storeValue(param.id, setting.constant);
        for (const auto& [frame, key] : setting.keys)
            instance.storeKey(param.id, {timeOf(frame, rate, param.name), rate.timeScale},
                              key.value, key.behind);
    }
}

Json Values::keysJson(const Params& params) const {
    Json all = Json::object();
    for (const ParamInfo& param : params)
        for (const auto& [frame, key] : of(param).keys)
            all[std::to_string(param.index)][std::to_string(frame)] = {
                {"value", valueJson(param, key.value)}, {"way", wayName(key.behind)}};
    return all;
}

Json valueJson(const ParamInfo& param, const Value& value) {
    switch (param.type) {
        case PF_Param_CHECKBOX:
            return value.part[0] != 0;
        case PF_Param_COLOR:
            return valueText(param, value);
        case PF_Param_POINT:
            return {value.part[0], value.part[1]};
        case PF_Param_SLIDER:
            return static_cast<long>(value.part[0]);
        default:
            return value.part[0];
    }
}

Value readValue(const Json& json, const ParamInfo& param, LayerSize layer) {
    return ParamValue(param, plainText(json, param.name)).on(layer);
}

const ParamInfo& paramAt(const Params& params, int index) {
    if (index < 1 || index > static_cast<int>(params.size()) ||
        !params[static_cast<std::size_t>(index) - 1].hasValue())
        refuse(Status::kUnreadable, "there is no parameter with a value at {}", index);
    return params[static_cast<std::size_t>(index) - 1];
}

const ParamInfo& paramAt(const Params& params, const std::string& index) {
    return paramAt(params, parseInt(index).value_or(0));
}

const char* wayName(Way way) {
    for (const auto& [known, name] : kWays)
        if (known == way) return name;
    return "";
}

}  // namespace tool::panel
