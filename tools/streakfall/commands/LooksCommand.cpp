#include <memory>

#include "Commands.h"
#include "Look.h"
#include "Say.h"
#include "ValueOptions.h"
#include "Words.h"

namespace tool {

namespace {

struct LooksOptions {
    std::string key;
    std::string language;
};

void listLooks(Language language) {
    const auto index = static_cast<std::size_t>(language);
    for (const Look& look : shippedLooks()) print("{:14} {}\n", look.key, look.about[index]);
}

int showLooks(const LooksOptions& options) {
    if (options.key.empty())
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
    command->add_option("name", options->key, "The look to print")->type_name("");
    addLanguageOption(*command, options->language);
    command->callback([options, &result] { result = showLooks(*options); });
}

}  // namespace tool
