#include "Body.h"
#include "Handlers.h"
#include "ParamText.h"
#include "RenderLine.h"
#include "Variation.h"
#include "Words.h"

namespace tool::panel {

namespace {

using standin::ParamInfo;

constexpr int kMostThrows = 100;

Json bothLanguages(const std::array<std::string, 2>& texts) {
    return {{"en", texts[0]}, {"ja", texts[1]}};
}

Json inputJson(const Studio& studio) {
    if (!studio.input()) return nullptr;
    const InputInfo& input = *studio.input();
    return {{"pattern", input.pattern.text()},
            {"sequence", input.pattern.hasNumber()},
            {"frames", studio.frames()},
            {"count", input.count}};
}

Json outputJson(const PanelOptions& options) {
    if (options.output.empty()) return nullptr;
    return {{"folder", options.output}, {"name", outputName(options.studio)}};
}

// One kind of text in both languages, out of those that are kept by language.
Json textJson(const Json& texts, const char* which) {
    Json both;
    for (const auto& [language, told] : texts.items()) both[language] = told.at(which);
    return both;
}

Json paramJson(const ParamInfo& param, int depth) {
    Json entry = {
        {"index", param.index}, {"id", param.id},
        {"name", param.name},   {"kind", standin::kindName(param.type)},
        {"depth", depth},       {"closed", (param.flags & PF_ParamFlag_START_COLLAPSED) != 0}};
    if (hasRange(param)) {
        entry["valid"] = {param.validMin, param.validMax};
        entry["slider"] = {param.sliderMin, param.sliderMax};
    }
    entry["precision"] = static_cast<int>(param.precision);
    entry["percent"] = (param.display & PF_ValueDisplayFlag_PERCENT) != 0;
    entry["interpolates"] = param.hasValue() && !param.steps();
    entry["keyable"] = param.hasValue() && (param.flags & PF_ParamFlag_CANNOT_TIME_VARY) == 0;
    entry["seed"] = isSeed(param);
    entry["words"] = wordsJson(param.id);
    return entry;
}

// From low to high over the slider; an angle once around, its end left out.
Json evenSteps(const ParamInfo& param, int count) {
    constexpr double kTurn = 360;
    Json values = Json::array();
    if (param.type == PF_Param_CHECKBOX) return {false, true};
    const bool isAngle = param.type == PF_Param_ANGLE;
    if (!isAngle && !hasRange(param))
        refuse(Status::kUnreadable, "\"{}\" has no range to go through", param.name);
    const double least = isAngle ? 0 : param.sliderMin;
    const double most = isAngle ? kTurn * (count - 1) / count : param.sliderMax;
    for (int i = 0; i < count; ++i) {
        const double part = count == 1 ? 0 : static_cast<double>(i) / (count - 1);
        values.push_back(valueJson(param, standin::Value::number(least + part * (most - least))));
    }
    return values;
}

}  // namespace

Answer tellAbout(PanelParts& parts, const Ask&, const std::string&) {
    Studio& studio = parts.studio;
    const FrameRate& rate = studio.rate();
    const Look* look = studio.openingLook();
    return jsonAnswer({{"version", studio.session().version()},
                       {"program", parts.options.version},
                       {"about", textJson(parts.texts, "about")},
                       {"dialog", textJson(parts.texts, "dialog")},
                       {"settingsFile", studio.session().settingsFile()},
                       {"input", inputJson(studio)},
                       {"width", studio.layer().width},
                       {"height", studio.layer().height},
                       {"frames", studio.frames()},
                       {"rate",
                        {{"scale", rate.timeScale},
                         {"step", rate.timeStep},
                         {"fps", static_cast<double>(rate.timeScale) / rate.timeStep}}},
                       {"output", outputJson(parts.options)},
                       {"look", look != nullptr ? Json(look->key) : Json()}});
}

Answer tellParams(PanelParts& parts, const Ask&, const std::string&) {
    Studio& studio = parts.studio;
    const Values now(studio.params(), studio.layer());
    const Values own(studio.ownParams(), studio.layer());
    Json list = Json::array();
    int depth = 0;
    for (const ParamInfo& param : studio.params()) {
        if (param.type == PF_Param_GROUP_END) --depth;
        Json entry = paramJson(param, depth);
        if (param.type == PF_Param_GROUP_START) ++depth;
        if (param.hasValue()) {
            entry["default"] = valueJson(param, now.of(param).constant);
            entry["fromStart"] = valueJson(param, own.of(param).constant);
        }
        list.push_back(std::move(entry));
    }
    return jsonAnswer(list);
}

Answer tellLooks(PanelParts& parts, const Ask&, const std::string&) {
    Json list = Json::array();
    for (const Look& look : parts.studio.looks()) {
        Json entry = {{"key", look.key},
                      {"name", bothLanguages(look.name)},
                      {"about", bothLanguages(look.about)}};
        entry["size"] = look.size ? Json{look.size->width, look.size->height} : Json();
        list.push_back(std::move(entry));
    }
    return jsonAnswer(list);
}

Answer tellThrows(PanelParts& parts, const Ask& ask, const std::string&) {
    constexpr int kUsual = 12;
    constexpr int kFarthest = 1'000'000;
    const ParamInfo& param =
        paramAt(parts.studio.params(), wholeOf(ask, "param", 1, kFarthest).value_or(0));
    const int count = wholeOf(ask, "count", 1, kMostThrows).value_or(kUsual);
    const int from = wholeOf(ask, "from", 0, kFarthest).value_or(0);
    Json values = Json::array();
    if (!isSeed(param)) {
        values = evenSteps(param, count);
    } else {
        for (const double seed : farApart(param, from, count))
            values.push_back(static_cast<long>(seed));
    }
    return jsonAnswer({{"param", param.index}, {"values", std::move(values)}});
}

}  // namespace tool::panel
