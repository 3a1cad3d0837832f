// streakfall: renders pictures and sequences with the effect, outside its usual host.
#include <fmt/format.h>

#include "Commands.h"
#include "Failure.h"

namespace {

int report(tool::Exit code, std::string_view text) {
    fmt::print(stderr, "streakfall: {}\n", text);
    return static_cast<int>(code);
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App program("Draws comic-style streak lines on pictures and sequences.", "streakfall");
    program.set_version_flag("--version", "streakfall " STREAKFALL_VERSION,
                             "Print the program's version");
    program.require_subcommand(0, 1);
    program.get_formatter()->column_width(32);
    int result = 0;
    tool::addCommands(program, result);
    program.footer("streakfall COMMAND --help tells more of a command.");
    try {
        program.parse(argc, argv);
        if (program.get_subcommands().empty())
            return report(tool::Exit::kUsage, "which command? See --help");
        return result;
    } catch (const CLI::Success& asked) {
        return program.exit(asked);
    } catch (const CLI::ParseError& error) {
        return report(tool::Exit::kUsage, fmt::format("{}; see --help", error.what()));
    } catch (const tool::Failure& failure) {
        return report(failure.code(), failure.what());
    } catch (const std::bad_alloc&) {
        return report(tool::Exit::kEffect, "out of memory");
    } catch (const std::exception& error) {
        return report(tool::Exit::kEffect, error.what());
    }
}
