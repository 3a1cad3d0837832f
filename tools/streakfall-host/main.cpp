// The stand-in host as a Windows program: it reads a module's property list, loads it as the real
// host does, plays it, and shows its dialog over a real window.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "HostWindow.h"
#include "PropertyListReader.h"
#include "effect/PlayedEffect.h"
#include "host/PathText.h"

namespace {

using namespace standin;

constexpr char kUsage[] =
    "usage: streakfall-host [--module FILE] COMMAND\n"
    "  show                          the property list, what the module announces, its about text\n"
    "  dialog [--old] [--frame NAME] opens the options dialog with a golden frame's values and\n"
    "                                describes it once it can be seen\n"
    "  test [GOOGLETEST OPTIONS]     the host-side tests through the module\n"
    "Without --module: Q_Streakfall.aex beside this program. \"-L WORD\" chooses the language.\n";

constexpr int kFailed = 1, kUsageError = 2;

std::string programFolder() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return pathText(std::filesystem::path(path).parent_path());
}

struct Arguments {
    std::string command;
    bool old = false;
    std::string frame = "07";
    std::vector<std::string> rest;  // of the test command
};

// False for what is no command line of this program.
bool read(const std::vector<std::string>& words, Arguments& arguments) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        const bool hasNext = i + 1 < words.size();
        if (word == "--module" && hasNext) {
            played::modulePath() = words[++i];
        } else if ((word == "-L" || word == "-l") && hasNext) {
            ++i;  // the module looks for it by itself
        } else if (word == "--frame" && hasNext) {
            arguments.frame = words[++i];
        } else if (word == "--old") {
            arguments.old = true;
        } else if (arguments.command.empty()) {
            arguments.command = word;
        } else if (arguments.command == "test") {
            arguments.rest.push_back(word);
        } else {
            return false;
        }
    }
    return true;
}

int show() {
    const PropertyList list = PropertyList::ofFile(played::modulePath());
    std::printf("file        %s\nname        %s\ncategory    %s\nmatch name  %s\nentry       %s\n",
                played::modulePath().c_str(), list.name("name").c_str(), list.name("catg").c_str(),
                list.name("eMNA").c_str(), list.text("8664").c_str());
    std::printf("version     %u\nflags       0x%X 0x%X\n", list.number("eVER"), list.number("eGLO"),
                list.number("eGL2"));
    Host host(played::module());
    if (const PF_Err error = host.start()) {
        std::fprintf(stderr, "the module does not start: code %d\n", static_cast<int>(error));
        return kFailed;
    }
    std::printf("announced   %u, 0x%X 0x%X, %d parameters\nabout       %s\n", host.global().version,
                static_cast<unsigned>(host.global().outFlags),
                static_cast<unsigned>(host.global().outFlags2),
                static_cast<int>(host.global().numParams), host.about().c_str());
    return 0;
}

void tellDialog(HWND dialog) {
    std::fputs(describeDialog(dialog).c_str(), stdout);
    std::fflush(stdout);
}

int openDialog(const Arguments& arguments) {
    const HostWindow window;
    HostOffer offer = arguments.old ? HostOffer::old() : HostOffer{};
    offer.mainWindow = window.handle();
    Host host(played::module(), offer);
    if (const PF_Err error = host.start()) {
        std::fprintf(stderr, "the module does not start: code %d\n", static_cast<int>(error));
        return kFailed;
    }
    Instance instance(host, LayerSize{});
    const golden::Frame& frame = golden::frame(arguments.frame);
    for (const auto& named : frame.named) {
        instance.storeValue(named.first, played::valueOf(frame, named.first));
    }
    const DialogWatch watch(tellDialog);
    const PF_Err error = instance.openDialog();
    std::printf("closed %d\n", static_cast<int>(error));
    return error == PF_Err_NONE ? 0 : kFailed;
}

int test(const Arguments& arguments) {
    std::vector<std::string> words{"streakfall-host"};
    words.insert(words.end(), arguments.rest.begin(), arguments.rest.end());
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    int count = static_cast<int>(pointers.size());
    pointers.push_back(nullptr);
    ::testing::InitGoogleTest(&count, pointers.data());
    return RUN_ALL_TESTS();
}

int run(const std::vector<std::string>& words) {
    played::modulePath() = programFolder() + "\\Q_Streakfall.aex";
    Arguments arguments;
    const bool known = read(words, arguments);
    if (known && arguments.command == "show") return show();
    if (known && arguments.command == "dialog") return openDialog(arguments);
    if (known && arguments.command == "test") return test(arguments);
    std::fputs(kUsage, stderr);
    return kUsageError;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    std::vector<std::string> words;
    for (int i = 1; i < argc; ++i) words.push_back(pathText(argv[i]));
    try {
        return run(words);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "streakfall-host: %s\n", error.what());
        return kFailed;
    }
}
