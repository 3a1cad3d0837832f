// streakfall: renders pictures and sequences with the effect, outside its usual host.
#include "Commands.h"
#include "Failure.h"
#include "Say.h"
#include "Version.h"

namespace {

using tool::Exit;

int report(Exit code, std::string_view text) {
    tool::say("streakfall: {}\n", text);
    return static_cast<int>(code);
}

// Help and version are answers, and go to standard output.
int answer(const CLI::App& program, const CLI::Success& asked) {
    std::ostringstream text, ignored;
    const int code = program.exit(asked, text, ignored);
    tool::printText(text.str());
    return code;
}

int run(int argc, char** argv) {
    CLI::App program("Draws comic-style streak lines on pictures and sequences.", "streakfall");
    program.set_version_flag("-V,--version", tool::versionText,
                             "Print version, commit and what this build runs on");
    program.require_subcommand(0, 1);
    program.get_formatter()->column_width(32);
    int result = 0;
    tool::addCommands(program, result);
    program.footer("streakfall COMMAND --help tells more of a command.");
    try {
        program.parse(argc, argv);
        if (program.get_subcommands().empty())
            return report(Exit::kUsage, "which command? See --help");
        return result;
    } catch (const CLI::Success& asked) {
        return answer(program, asked);
    } catch (const CLI::ParseError& error) {
        return report(Exit::kUsage, fmt::format("{}; see --help", error.what()));
    } catch (const tool::Failure& failure) {
        return report(failure.code(), failure.what());
    } catch (const std::bad_alloc&) {
        return report(Exit::kEffect, "out of memory");
    } catch (const std::exception& error) {
        return report(Exit::kEffect, error.what());
    }
}

}  // namespace

int main(int argc, char** argv) {
    tool::guardStreams();
    const int code = run(argc, argv);
    const std::string lost = tool::flushOutput();
    return lost.empty() || code != 0 ? code : report(Exit::kOutput, lost);
}
