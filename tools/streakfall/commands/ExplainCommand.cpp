#include <memory>

#include "Commands.h"
#include "EffectSession.h"
#include "ParamLookup.h"
#include "ParamText.h"
#include "Say.h"
#include "ValueOptions.h"
#include "Words.h"

namespace tool {

namespace {

using standin::ParamInfo;

struct ExplainOptions {
    std::vector<std::string> names;
    std::string module;
    std::string language;
};

void printRow(const std::string& label, const std::string& text) {
    if (!text.empty()) print("  {}: {}\n", label, text);
}

void printRange(const ParamInfo& param, const WordLabels& labels) {
    if (hasRange(param))
        printRow(labels.range,
                 fmt::format("{} ({}: {})", rangeText(param.validMin, param.validMax),
                             labels.slider, rangeText(param.sliderMin, param.sliderMax)));
    printRow(labels.standard, defaultText(param));
}

void explain(const ParamInfo& param, Language language) {
    const ControlWords* words = wordsOf(param.id, language);
    if (words == nullptr) return;
    const WordLabels& labels = labelsOf(language);
    print("{}{}\n  {}\n", param.group.empty() ? "" : param.group + " > ", param.name, words->what);
    printRow(labels.unit, words->unit);
    if (param.hasValue()) printRange(param, labels);
    printRow(labels.with, words->with);
    printRow(labels.hint, words->hint);
}

int explainAll(const ExplainOptions& options) {
    EffectSession session(options.module, Defaults::kOwn);
    const Language language = chooseLanguage(options.language);
    const std::vector<ParamInfo>& params = session.host().params();
    std::vector<const ParamInfo*> wanted;
    for (const std::string& name : options.names)
        wanted.push_back(&ParamLookup(params).findAny(name));
    if (options.names.empty())
        for (const ParamInfo& param : params)
            if (!param.name.empty()) wanted.push_back(&param);
    for (const ParamInfo* param : wanted) {
        if (param != wanted.front()) print("\n");
        explain(*param, language);
    }
    return 0;
}

}  // namespace

void addExplainCommand(CLI::App& program, int& result) {
    CLI::App* command = program.add_subcommand(
        "explain", "Tell what controls do to the picture, all or those named");
    const auto options = std::make_shared<ExplainOptions>();
    command->add_option("CONTROL", options->names, "Controls, by name or fixed id")->type_name("");
    addModuleOption(*command, options->module);
    addLanguageOption(*command, options->language);
    command->callback([options, &result] { result = explainAll(*options); });
}

}  // namespace tool
