// The values of one panel over time, as a project keeps them: a constant for each parameter, or
// keys. A value type; the truth of a page beside its instance, from which frames are drawn on
// instances of their own.
#pragma once

#include <map>
#include <vector>

#include "EffectSession.h"
#include "Exchange.h"

namespace tool::panel {

using Params = std::vector<standin::ParamInfo>;

struct Key {
    standin::Value value;
    standin::Way behind = standin::Way::line;
    bool operator==(const Key&) const = default;
};

// Of one parameter; the constant counts while there are no keys.
struct Setting {
    standin::Value constant;
    std::map<int, Key> keys;  // by frame
};

class Values {
  public:
    // The defaults of these parameters on that layer.
    Values(const Params& params, standin::LayerSize layer);

    // What the arguments name takes the place of what was there.
    void apply(const ParamArguments& arguments, standin::LayerSize layer);
    // {"values": {INDEX: value}, "keys": {INDEX: {FRAME: {"value", "way"}}}}, likewise. Throws
    // Refusal, and Failure (usage) for a value.
    void apply(const Json& state, const Params& params, standin::LayerSize layer);
    // One constant, in place of keys too.
    void set(const standin::ParamInfo& param, const standin::Value& value);

    // By host index.
    [[nodiscard]] const Setting& of(const standin::ParamInfo& param) const;
    [[nodiscard]] Setting& of(const standin::ParamInfo& param);

    // Without a command, as a project that is opened. Throws Failure (usage) for a key past the
    // end of time.
    void storeIn(standin::Instance& instance, const Params& params, const FrameRate& rate) const;

    // {INDEX: {FRAME: {"value", "way"}}}, keyed parameters only.
    [[nodiscard]] Json keysJson(const Params& params) const;

  private:
    std::vector<Setting> settings_;  // by host index less one
};

// A number, true or false, "#rrggbb" or [x, y].
[[nodiscard]] Json valueJson(const standin::ParamInfo& param, const standin::Value& value);
// That, and all that --set takes. Throws Failure (usage) that names the parameter.
[[nodiscard]] standin::Value readValue(const Json& json, const standin::ParamInfo& param,
                                       standin::LayerSize layer);

// The parameter with a value at this host index. Throws Refusal.
[[nodiscard]] const standin::ParamInfo& paramAt(const Params& params, int index);
// The same, by an index that stands as text.
[[nodiscard]] const standin::ParamInfo& paramAt(const Params& params, const std::string& index);

[[nodiscard]] const char* wayName(standin::Way way);

}  // namespace tool::panel
