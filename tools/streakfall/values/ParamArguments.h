// The parameter values a command line gives: files of values (JSON, or the settings file that the
// effect keeps its defaults in), single values, and values over time. Later ones win over earlier
// ones of the same parameter, in the order looks, files, --set, --key; several --key of one
// parameter add up.
#pragma once

#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Look.h"
#include "ParamLookup.h"
#include "ParamValue.h"

namespace tool {

struct ParamTexts {
    std::vector<std::string> files;    // --params; "-" is standard input
    std::vector<std::string> sets;     // --set "Name=value"
    std::vector<std::string> keys;     // --key "Name@1=0,@24=200:ease"
    std::vector<std::string> looks{};  // --look: keys of those that ship, or files
    std::vector<Look> readLooks{};     // behind those, looks that were read already
};

struct ParamKey {
    ParamValue value;
    standin::Way behind = standin::Way::line;
    std::string text;  // as it was written
};

// A parameter's values by frame. One that is not keyed has a single entry.
struct ParamKeys {
    const standin::ParamInfo* param;
    std::map<int, ParamKey> byFrame;
    bool keyed = false;
    // Of a value that comes from a look: the frame it was made for, to be fitted to the layer.
    std::optional<standin::LayerSize> madeFor{};
};

// A value as the host keeps it on that layer: percents taken of it, and what a look was made for
// another frame with fitted to it.
[[nodiscard]] standin::Value valueOn(const ParamKeys& keys, const ParamKey& key,
                                     standin::LayerSize layer);

class ParamArguments {
  public:
    // `section` is the one of a settings file that counts, "Version=1.5"; files of other
    // versions of the effect are refused. The list behind the lookup must outlive the object.
    // Throws Failure: usage for what cannot be read as a value, input for a file that cannot be
    // read.
    ParamArguments(const ParamLookup& lookup, std::string_view section, const ParamTexts& texts);

    // By host index.
    [[nodiscard]] const std::map<int, ParamKeys>& values() const { return values_; }
    // Values past the ranges of their parameters, a line each.
    [[nodiscard]] std::vector<std::string> warnings() const;
    // As a file for --params that gives these values again on a layer of this size.
    [[nodiscard]] nlohmann::ordered_json toJson(standin::LayerSize layer) const;

  private:
    void addLook(const Look& look);
    void addFile(const std::string& path);
    void addJson(const std::string& text);
    void addJsonKeys(const standin::ParamInfo& param, const nlohmann::ordered_json& keys);
    void addSettings(const std::string& text);
    void addSet(std::string_view text);
    void addKey(std::string_view text);
    void setConstant(const standin::ParamInfo& param, std::string_view value);

    ParamLookup lookup_;
    std::string section_;
    std::map<int, ParamKeys> values_;
    std::set<int> keyedHere_;  // parameters that a --key was given for
};

}  // namespace tool
