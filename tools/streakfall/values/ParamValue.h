// A parameter's value as the user writes it.
//
//   float slider  12.5 or 60%         slider   7
//   angle         45 (degrees)        checkbox on, off, 1, 0, yes, no, true, false
//   colour        #ff8000 or 255,128,0
//   point         100,200 (pixels of the full-size layer) or 30%,50%, mixed as one likes
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "host/Instance.h"

namespace tool {

class ParamValue {
  public:
    // Throws Failure (usage) that names the parameter and the text.
    ParamValue(const standin::ParamInfo& param, std::string_view text);

    // What to warn of: a value that the host's panel would not accept. The effect gets it as it
    // is, for a settings file or an expression can give such values as well.
    [[nodiscard]] std::optional<std::string> outOfRange(const standin::ParamInfo& param) const;

    // As the host keeps it; percents of a point are taken of the layer.
    [[nodiscard]] standin::Value on(standin::LayerSize layer) const;

  private:
    void parse(const standin::ParamInfo& param, std::string_view text);
    void parseColour(const standin::ParamInfo& param, std::string_view text);
    void parsePoint(const standin::ParamInfo& param, std::string_view text);

    PF_ParamType type_;
    std::array<double, 3> numbers_{};       // of which a colour uses three and a point two
    std::array<bool, 2> percentOfLayer_{};  // of a point
};

// A host's value as the user would write it; a point in pixels.
[[nodiscard]] std::string valueText(const standin::ParamInfo& param, const standin::Value& value);

}  // namespace tool
