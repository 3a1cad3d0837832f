#include <fmt/format.h>

#include <memory>
#include <nlohmann/json.hpp>

#include "Commands.h"
#include "EffectSession.h"
#include "Failure.h"
#include "ParamText.h"
#include "RenderOptions.h"
#include "Say.h"
#include "ValueOptions.h"
#include "Words.h"

namespace tool {

namespace {

using Json = nlohmann::ordered_json;
using standin::ParamInfo;

struct ParamsOptions {
    std::string module;
    std::string language;
    std::string size = "1920x1080";
    ParamTexts params;
    bool json = false;
};

// A panel with the values given, or none when there are none.
class Panel {
  public:
    Panel(EffectSession& session, const ParamsOptions& options) {
        const ParamArguments arguments = session.readArguments(options.params);
        if (arguments.values().empty()) return;
        for (const std::string& warning : arguments.warnings()) say("note: {}\n", warning);
        instance_ = std::make_unique<standin::Instance>(
            session.makeInstance(parseSize(options.size, "--size")));
        storeValues(*instance_, arguments, {});
        if (const PF_Err code = instance_->updatePanel(); code != PF_Err_NONE)
            fail(Exit::kEffect, "the panel's update answered with code {}", code);
    }

    explicit operator bool() const { return instance_ != nullptr; }
    [[nodiscard]] std::string value(const ParamInfo& param) const {
        return valueText(param, instance_->value(param.id));
    }
    // For the table; empty without values.
    [[nodiscard]] std::string text(const ParamInfo& param) const {
        if (instance_ == nullptr || !param.hasValue()) return "";
        return value(param) + (live(param) ? "" : "  (greyed)");
    }
    // As the effect told the host in its last update.
    [[nodiscard]] bool live(const ParamInfo& param) const { return instance_->enabled(param.id); }

  private:
    std::unique_ptr<standin::Instance> instance_;
};

std::string displayName(const ParamInfo& param) {
    if (!hasRange(param)) return "";
    if (param.type == PF_Param_SLIDER) return "integer";
    return (param.display & PF_ValueDisplayFlag_PERCENT) != 0 ? "percent" : "number";
}

std::vector<std::string> flagNames(const ParamInfo& param) {
    std::vector<std::string> names;
    const auto name = [&](bool set, const char* text) {
        if (set) names.emplace_back(text);
    };
    name((param.flags & PF_ParamFlag_CANNOT_TIME_VARY) != 0, "CANNOT_TIME_VARY");
    name((param.flags & PF_ParamFlag_CANNOT_INTERP) != 0, "CANNOT_INTERP");
    name((param.flags & PF_ParamFlag_START_COLLAPSED) != 0, "START_COLLAPSED");
    name((param.flags & PF_ParamFlag_SUPERVISE) != 0, "SUPERVISE");
    name((param.uiFlags & PF_PUI_DISABLED) != 0, "DISABLED");
    return names;
}

Json defaultJson(const ParamInfo& param) {
    const double number = param.defaultValue.part[0];
    switch (param.type) {
        case PF_Param_FLOAT_SLIDER:
        case PF_Param_ANGLE:
            return number;
        case PF_Param_SLIDER:
            return static_cast<int>(number);
        case PF_Param_CHECKBOX:
            return number != 0;
        default:
            return param.hasValue() ? Json(defaultText(param)) : Json();
    }
}

void printJson(const std::vector<ParamInfo>& params, const Panel& panel) {
    Json list = Json::array();
    for (const ParamInfo& param : params) {
        Json entry = {{"index", param.index},
                      {"id", param.id},
                      {"name", param.name},
                      {"kind", standin::kindName(param.type)},
                      {"group", param.group}};
        if (hasRange(param)) {
            entry["valid"] = {param.validMin, param.validMax};
            entry["slider"] = {param.sliderMin, param.sliderMax};
        }
        entry["default"] = defaultJson(param);
        entry["display"] = displayName(param);
        entry["flags"] = flagNames(param);
        if (panel) {
            entry["value"] = panel.value(param);
            entry["live"] = panel.live(param);
        }
        entry["words"] = wordsJson(param.id);
        list.push_back(std::move(entry));
    }
    print("{}\n", list.dump(2));
}

void printTable(const std::vector<ParamInfo>& params, const Panel& panel, Language language) {
    constexpr auto kRow = "{:>5} {:>3}  {:25} {:12} {:>9}  {:16} {:14} {:8} {:{}} {}";
    const int valueWidth = panel ? 18 : 0;
    const auto line = [&](const auto&... cells) {
        return fmt::format(fmt::runtime(kRow), cells...);
    };
    const auto put = [](std::string text) {
        text.erase(text.find_last_not_of(' ') + 1);
        print("{}\n", text);
    };
    put(line("Index", "Id", "Name", "Kind", "Default", "Valid", "Slider", "Display",
             panel ? "Value" : "", valueWidth, "What it does"));
    for (const ParamInfo& param : params) {
        const std::string name = (param.group.empty() ? "" : "  ") + param.name;
        const bool range = hasRange(param);
        const ControlWords* words = wordsOf(param.id, language);
        put(line(param.index, param.id, name, standin::kindName(param.type), defaultText(param),
                 range ? rangeText(param.validMin, param.validMax) : "",
                 range ? rangeText(param.sliderMin, param.sliderMax) : "", displayName(param),
                 panel.text(param), valueWidth, words != nullptr ? words->what : ""));
    }
}

int listParams(const ParamsOptions& options) {
    EffectSession session(options.module, Defaults::kStored);
    const Panel panel(session, options);
    if (options.json)
        printJson(session.host().params(), panel);
    else
        printTable(session.host().params(), panel, chooseLanguage(options.language));
    return 0;
}

}  // namespace

void addParamsCommand(CLI::App& program, int& result) {
    CLI::App* command = program.add_subcommand(
        "params", "List the effect's parameters; with values, which controls\nthey leave live");
    const auto options = std::make_shared<ParamsOptions>();
    command->add_flag("--json", options->json, "As JSON");
    command->add_option("--size", options->size, "The layer that percents of a point are taken of")
        ->type_name("WxH")
        ->capture_default_str();
    addModuleOption(*command, options->module);
    addLanguageOption(*command, options->language);
    addValueOptions(*command, options->params, false);
    command->callback([options, &result] { result = listParams(*options); });
}

}  // namespace tool
