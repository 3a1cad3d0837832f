#include <memory>

#include "Commands.h"
#include "Failure.h"
#include "Look.h"
#include "Say.h"
#include "StoredLook.h"
#include "Text.h"
#include "ValueOptions.h"
#include "Words.h"

namespace tool {

namespace {

struct LooksOptions {
    std::string key;
    std::string from;
    std::string language;
};

void listLooks(Language language) {
    const auto index = static_cast<std::size_t>(language);
    for (const Look& look : shippedLooks()) print("{:14} {}\n", look.key, look.about[index]);
}

// Of a picture, as its render stamped it, or of a file of values in any form.
Look lookOf(const std::string& path) {
    if (lowered(path).ends_with(".json")) return loadLook(path);
    const std::string words = storedLook(path);
    if (words.empty())
        fail(Exit::kInput, "--from: {} does not say by what look it was drawn", path);
    return lookFromWords(path, words);
}

int showLooks(const LooksOptions& options) {
    if (!options.from.empty())
        print("{}", lookText(lookOf(options.from)));
    else if (options.key.empty())
        listLooks(chooseLanguage(options.language));
    else
        print("{}", lookText(loadLook(options.key)));
    return 0;
}

}  // namespace

void addLooksCommand(CLI::App& program, int& result) {
    CLI::App* command = program.add_subcommand(
        "looks", "List the looks that ship, or print one as a file to\nstart from");
    const auto options = std::make_shared<LooksOptions>();
    command->add_option("LOOK", options->key, "The look to print")->type_name("");
    command
        ->add_option("--from", options->from,
                     "Print the look that a rendered picture, or what\n\"params --json\" printed, "
                     "was made with")
        ->type_name("FILE")
        ->excludes("LOOK");
    addLanguageOption(*command, options->language);
    command->callback([options, &result] { result = showLooks(*options); });
}

}  // namespace tool
