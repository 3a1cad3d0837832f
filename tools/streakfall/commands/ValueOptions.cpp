#include "ValueOptions.h"

namespace tool {

namespace {

constexpr char kGroup[] = "Parameters";

// One argument a time the option is given: what follows belongs to the next option.
void addRepeated(CLI::App& command, const char* name, std::vector<std::string>& texts,
                 const char* help, const char* form) {
    command.add_option(name, texts, help)
        ->type_name(form)
        ->type_size(1)
        ->allow_extra_args(false)
        ->take_all()
        ->group(kGroup);
}

}  // namespace

void addModuleOption(CLI::App& command, std::string& path) {
    command
        .add_option("--module", path, "The effect module; else the one that came with this program")
        ->type_name("FILE");
}

void addLanguageOption(CLI::App& command, std::string& language) {
    command.add_option("--lang", language, "Language of the effect's texts")
        ->type_name("ja|en")
        ->check(CLI::IsMember({"ja", "en"}).description(""));
}

void addValueOptions(CLI::App& command, ParamTexts& texts, bool overTime) {
    addRepeated(command, "--look", texts.looks,
                "A look that ships (\"streakfall looks\" lists them) or a file;\n"
                "one that names its frame is fitted to this one",
                "NAME|FILE");
    addRepeated(command, "--params", texts.files,
                "Values from a file (- is standard input), JSON or the effect's\n"
                "own settings file:\n"
                "{\"Thickness\": 3, \"Color\": \"#ff8000\", \"Offset\": {\"1\": 0, \"24\": 200}}",
                "FILE");
    addRepeated(command, "--set", texts.sets,
                "One value, by exact name or fixed id: \"Taper=60\", 13=60,\n"
                "\"Color=#ff8000\", \"Start Point=30%,50%\", \"Repeat=on\";\n"
                "may be given often, the last one of a parameter wins",
                "NAME=VALUE");
    if (overTime)
        addRepeated(command, "--key", texts.keys,
                    "Values over time: \"Offset@1=0,@24=200\"; between keys a value\n"
                    "runs in a straight line, or behind \"@1=0:hold\" and \":ease\"\n"
                    "not at all and softly; switches and seeds step",
                    "NAME@FRAME=VALUE,...");
}

}  // namespace tool
