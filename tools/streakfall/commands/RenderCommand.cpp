#include <filesystem>
#include <memory>

#include "Commands.h"
#include "FrameList.h"
#include "Interrupt.h"
#include "RenderRun.h"
#include "Say.h"
#include "ValueOptions.h"

namespace tool {

namespace {

constexpr char kExamples[] =
    "Examples:\n"
    "  streakfall render -i photo.jpg -o lines.png --set \"Clear Background=off\"\n"
    "  streakfall render -i in.%04d.png -o out.####.exr -f 1-48 --depth 32 \\\n"
    "      --set \"Taper=60\" --key \"Offset@1=0,@48=800\"\n"
    "  streakfall render --size 1920x1080 -o field.####.png -f 1-24 --params look.json\n"
    "\n"
    "Exit codes: 0 all frames written or validly skipped, 1 some frames failed, 2 usage,\n"
    "3 no input could be read, 4 output (the run stops there), 5 effect or host (likewise),\n"
    "128 + N ended by signal N.";

void addFileOptions(CLI::App& command, RenderTexts& texts) {
    command
        .add_option(
            "-i,--input", texts.input,
            "Picture or sequence: PNG, TIFF, JPEG, EXR;\na frame number as %04d, #### or [####]")
        ->type_name("PATTERN");
    command
        .add_option("-o,--output", texts.output,
                    "By the ending: PNG (8 or 16 bits), TIFF (8, 16 or\nfloat) or EXR (float)")
        ->type_name("PATTERN")
        ->required();
    command
        .add_option("-f,--frames", texts.frames,
                    "5, 1-10, -8--5, 1-10x2 or 1-10:2, 10-1, and lists\nwith commas; else frame 0")
        ->type_name("LIST");
    command.add_option("--size", texts.size, "Without input: an empty opaque frame of this size")
        ->type_name("WxH");
    command
        .add_option("--existing", texts.existing,
                    "For files that are there: overwrite, skip (when whole\nand readable) or error")
        ->type_name("WHAT")
        ->capture_default_str();
    command.add_flag("--dry-run", texts.dryRun, "Print frames and files, and render nothing");
}

void addPictureOptions(CLI::App& command, RenderTexts& texts) {
    constexpr char kGroup[] = "Picture";
    command.add_option("--depth", texts.depth, "Bits a channel: 8, 16 or 32; else the input's own")
        ->type_name("BITS")
        ->group(kGroup);
    command.add_option("--scale", texts.scale, "Render at 1/N of the size")
        ->type_name("1/N")
        ->capture_default_str()
        ->group(kGroup);
    command
        .add_option("--road", texts.road,
                    "The host's way of asking for a frame: smart, or\nlegacy (8 and 16 bits)")
        ->type_name("ROAD")
        ->capture_default_str()
        ->group(kGroup);
    command.add_option("--fps", texts.fps, "Frames a second: 24, 29.97, 30000/1001")
        ->type_name("RATE")
        ->capture_default_str()
        ->group(kGroup);
}

void addTalkOptions(CLI::App& command, RenderTexts& texts) {
    constexpr char kGroup[] = "Progress";
    command
        .add_option("--progress", texts.progress,
                    "On standard error: auto (a bar on a terminal), bar,\nplain, json or none")
        ->type_name("STYLE")
        ->capture_default_str()
        ->group(kGroup);
    command.add_flag("-q,--quiet", texts.quiet, "Nothing but errors")->group(kGroup);
    command.add_flag("-v,--verbose", texts.verbose, "Also the effect's own time for each frame")
        ->group(kGroup);
}

int printPlan(const RenderOptions& options) {
    print("{}\n", describeFrames(options.frames));
    for (const FrameJob& job : planJobs(options)) {
        std::error_code ignored;
        const bool missing = options.input && !std::filesystem::exists(job.input, ignored);
        const bool exists = std::filesystem::exists(job.output, ignored);
        print("frame {}: {}{} -> {}{}\n", job.frame, options.input ? job.input : "(empty)",
              missing ? " (missing)" : "", job.output, exists ? " (exists)" : "");
    }
    return 0;
}

int render(const RenderTexts& texts) {
    const RenderOptions options(texts);
    EffectSession session(texts.module, texts.storedDefaults ? Defaults::kStored : Defaults::kOwn);
    const ParamArguments arguments = session.readArguments(texts.params);
    if (options.dryRun) return printPlan(options);
    watchSignals();
    return RenderRun(options, session, arguments).run();
}

}  // namespace

void addRenderCommand(CLI::App& program, int& result) {
    CLI::App* command = program.add_subcommand("render", "Render pictures and sequences");
    const auto texts = std::make_shared<RenderTexts>();
    addFileOptions(*command, *texts);
    addModuleOption(*command, texts->module);
    addValueOptions(*command, texts->params, true);
    command
        ->add_flag("--stored-defaults", texts->storedDefaults,
                   "Start from the values that \"defaults save\" stored; without\n"
                   "it a render depends on its arguments and files alone")
        ->group("Parameters");
    addPictureOptions(*command, *texts);
    addTalkOptions(*command, *texts);
    command->footer(kExamples);
    command->callback([texts, &result] { result = render(*texts); });
}

}  // namespace tool
