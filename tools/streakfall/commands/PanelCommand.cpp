#include <unistd.h>

#include <filesystem>
#include <future>
#include <memory>
#include <thread>

#include "Commands.h"
#include "EffectTexts.h"
#include "Failure.h"
#include "Interrupt.h"
#include "PictureWriter.h"
#include "RenderRun.h"
#include "Say.h"
#include "Server.h"
#include "Spawn.h"
#include "ValueOptions.h"

namespace tool {

namespace {

constexpr char kExamples[] =
    "Examples:\n"
    "  streakfall panel -i shot.####.png -o renders\n"
    "  streakfall panel --look impact-fan --size 1280x720\n"
    "\n"
    "The address holds a secret made anew for each run: whoever has it can use the panel.\n"
    "Ctrl-C ends it.";

struct PanelTexts {
    panel::PanelOptions options;
    int port = 0;
    bool noOpen = false;
};

void checkFolder(const std::string& option, const std::string& folder) {
    std::error_code ignored;
    if (!folder.empty() && !std::filesystem::is_directory(folder, ignored))
        failUsage("{}: there is no folder {}", option, folder);
}

// Pictures come and go at a page's pace: their memory is kept for the next one.
void keepMemory(standin::LayerSize layer) {
    constexpr std::size_t kDrawnAtOnce = 3;
    standin::blocks::keep(kDrawnAtOnce * mostBytesOfFrame(layer, standin::Depth::bits8));
    useOneThreadEach();
}

// The picture that every page begins with, while the browser starts. What goes wrong is told to who
// asks for it.
std::future<void> readAhead(panel::Studio& studio) {
    return std::async(std::launch::async, [&studio] {
        try {
            (void)studio.backdrops().picture(panel::Backdrop::kInput, studio.frames()[0], 1);
        } catch (const std::exception&) {
        }
    });
}

void waitForSignal(panel::Panel& panel) {
    constexpr std::chrono::milliseconds kLook(50);
    while (interruptSignal() == 0) {
        std::this_thread::sleep_for(kLook);
        panel.pages().dropSilent(panel::Pages::Clock::now());
    }
}

// A browser may hold a connection, and a frame of the effect may be deaf, for longer than a user
// waits: nothing of theirs is half done.
void endSoon(panel::Panel& panel, panel::Server& server) {
    constexpr std::chrono::milliseconds kPatience(600);
    panel.end();
    if (server.stop(kPatience) && panel.rests()) return;
    (void)flushOutput();
    _exit(0);
}

int serve(PanelTexts& texts) {
    panel::PanelOptions& options = texts.options;
    checkFolder("--output", options.output);
    checkFolder("--page-folder", options.pageFolder);
    panel::Guard guard(panel::chooseToken());
    panel::EffectTexts english(options.studio.module, Language::kEnglish);
    panel::EffectTexts japanese(options.studio.module, Language::kJapanese);
    options.program = std::filesystem::read_symlink("/proc/self/exe").string();
    options.version = "streakfall " STREAKFALL_VERSION;
    panel::Panel panel(options, std::move(guard),
                       {{"en", english.take()}, {"ja", japanese.take()}});
    keepMemory(panel.studio().layer());
    watchSignals();
    const auto firstPicture = readAhead(panel.studio());
    panel::Server server(panel, texts.port);
    print("Panel: {}\n", panel.guard().address());
    (void)flushOutput();
    if (!texts.noOpen) panel::openBrowser(panel.guard().address());
    waitForSignal(panel);
    endSoon(panel, server);
    return 0;
}

}  // namespace

void addPanelCommand(CLI::App& program, int& result) {
    CLI::App* command =
        program.add_subcommand("panel", "Show the effect in the browser while it is dialled");
    const auto texts = std::make_shared<PanelTexts>();
    panel::StudioOptions& studio = texts->options.studio;
    command
        ->add_option("-i,--input", studio.input,
                     "Picture or sequence, as with \"render\"; else opaque black")
        ->type_name("PATTERN");
    command->add_option("-o,--output", texts->options.output, "Where the page may render to")
        ->type_name("FOLDER");
    command->add_option("--look", studio.look, "What the page opens with")->type_name("NAME|FILE");
    command->add_option("--size", studio.size, "Without input: the size of the frame")
        ->type_name("WxH")
        ->capture_default_str();
    command->add_option("--layer", studio.imageLayer, "Of an EXR with several layers or parts")
        ->type_name("NAME");
    command->add_option("--port", texts->port, "At 127.0.0.1; else any that is free")
        ->type_name("N")
        ->check(CLI::Range(1, 65535));
    command->add_flag("--no-open", texts->noOpen, "Print the address and open no browser");
    command->add_option("--page-folder", texts->options.pageFolder)->group("");
    addModuleOption(*command, studio.module);
    command->footer(kExamples);
    command->callback([texts, &result] { result = serve(*texts); });
}

}  // namespace tool
