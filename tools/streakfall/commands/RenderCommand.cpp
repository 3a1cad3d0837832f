#include <filesystem>
#include <memory>

#include "Commands.h"
#include "ExitMeanings.h"
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
    "      --set \"Taper=60\" --key \"Offset@1=0,@48=800:ease\"\n"
    "  streakfall render -i in.####.exr -o out.####.exr --existing skip --chunk 2/8\n"
    "  streakfall render --size 1920x1080 -f 1-24 -o - --format rgba | ffmpeg ...\n"
    "\n"
    "Memory, at most: jobs x (4 x width x height x (4, 8 or 16 bytes, by the depth)\n"
    "+ 2 x the file that is written), and 200 MB for the rest.\n"
    "\n";

// An option with a text behind it.
CLI::Option* add(CLI::App& command, const char* group, const char* name, std::string& text,
                 const char* form, const char* help) {
    CLI::Option* option = command.add_option(name, text, help)->type_name(form)->group(group);
    if (!text.empty()) option->capture_default_str();
    return option;
}

void addFileOptions(CLI::App& command, RenderTexts& texts) {
    constexpr char kGroup[] = "Files";
    add(command, kGroup, "-i,--input", texts.input, "PATTERN",
        "Picture or sequence: PNG, TIFF, JPEG, EXR; a frame\n"
        "number in the name as %04d, ####, [####] or @@@@");
    add(command, kGroup, "-o,--output", texts.output, "PATTERN",
        "By the ending: PNG (8 or 16 bits), TIFF (8, 16 or\n"
        "float) or EXR (float or half); - for a stream")
        ->required();
    add(command, kGroup, "--format", texts.format, "png|rgba",
        "Of a stream: PNGs one behind another, or raw samples\n"
        "of 8 bits, 16 (little end first) above that");
    add(command, kGroup, "-f,--frames", texts.frames, "LIST",
        "5, 1-10, -8--5, 1-10x2 or 1-10:2, 10-1, and lists\n"
        "with commas; else all that the input pattern finds");
    add(command, kGroup, "--chunk", texts.chunk, "I/N",
        "Of N contiguous parts of the list the I-th, from 1");
    add(command, kGroup, "--size", texts.size, "WxH",
        "Without input: an empty opaque frame of this size");
    add(command, kGroup, "--layer", texts.layer, "NAME", "Of an EXR with several layers or parts");
    add(command, kGroup, "--missing", texts.missing, "error|black|hold|skip",
        "Input files that are not there; hold takes the\n"
        "nearest before");
    add(command, kGroup, "--existing", texts.existing, "overwrite|skip|error",
        "Output files that are there; skip those that are\n"
        "whole and made from the same");
    add(command, kGroup, "--report", texts.report, "FILE",
        "Writes what became of each frame, as JSON");
    command.add_flag("--dry-run", texts.dryRun, "Print frames and files, and render nothing")
        ->group(kGroup);
}

void addPictureOptions(CLI::App& command, RenderTexts& texts) {
    constexpr char kGroup[] = "Picture (what is not given comes from the input)";
    add(command, kGroup, "--depth", texts.depth, "8|16|32", "Bits a channel");
    command.add_flag("--half", texts.half, "EXR: half floats in place of floats")->group(kGroup);
    add(command, kGroup, "--alpha", texts.alpha, "straight|premultiplied",
        "Colour in EXR and TIFF, read and written; IN:OUT where\n"
        "they differ. Else EXR is premultiplied, TIFF as its tag\n"
        "says, and straight when it is new");
    add(command, kGroup, "--compression", texts.compression, "NAME[:LEVEL]",
        "PNG: zip:0 to zip:9 [zip:1]; TIFF: none, lzw, zip,\n"
        "packbits [zip]; EXR: none, rle, zip, zips, piz, pxr24,\n"
        "b44, b44a, dwaa:LEVEL, dwab:LEVEL [zip]");
    add(command, kGroup, "--scale", texts.scale, "1/N", "Render at 1/N of the size");
    add(command, kGroup, "--fps", texts.fps, "RATE",
        "Frames a second: 24, 29.97, 30000/1001; else the\ninput's, or 24");
    add(command, kGroup, "--road", texts.road, "smart|legacy",
        "The host's way of asking for a frame; legacy has\n8 and 16 bits");
}

void addRunOptions(CLI::App& command, RenderTexts& texts) {
    constexpr char kGroup[] = "Run";
    add(command, kGroup, "-j,--jobs", texts.jobs, "N",
        "Frames at once, the machine's cores by default; the\n"
        "files are the same for every N. See Memory below");
    add(command, kGroup, "--progress", texts.progress, "auto|bar|plain|json|none",
        "On standard error; auto is a bar on a terminal, else\nplain");
    command
        .add_flag("-q,--quiet", texts.quiet, "Nothing but errors, and values that are out of range")
        ->group(kGroup);
    command
        .add_flag("-v,--verbose", texts.verbose,
                  "Also the effect's and the encoder's time for each frame")
        ->group(kGroup);
}

std::string sourceText(const FrameJob& job) {
    switch (job.source) {
        case Source::kEmpty:
            return "(empty)";
        case Source::kBlack:
            return job.input + " (missing: black)";
        case Source::kNone:
            return job.input + " (missing: skipped)";
        case Source::kFile:
            break;
    }
    std::error_code ignored;
    return job.input + (std::filesystem::exists(job.input, ignored) ? "" : " (missing)");
}

int printPlan(const RenderOptions& options) {
    print("{}\n", describeFrames(options.frames));
    for (const FrameJob& job : planJobs(options)) {
        std::error_code ignored;
        const bool exists = std::filesystem::exists(job.output, ignored);
        print("frame {}: {} -> {}{}\n", job.frame, sourceText(job), job.output,
              exists ? " (exists)" : "");
    }
    return 0;
}

int render(const RenderTexts& texts) {
    const RenderOptions options(texts);
    EffectSession session(texts.module, texts.storedDefaults ? Defaults::kStored : Defaults::kOwn);
    const ParamArguments arguments = session.readArguments(texts.params);
    if (options.dryRun) return printPlan(options);
    watchSignals();
    return RenderRun(options, session, arguments, "streakfall " STREAKFALL_VERSION).run();
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
    addRunOptions(*command, *texts);
    command->footer(kExamples + exitCodesText());
    command->callback([texts, &result] { result = render(*texts); });
}

}  // namespace tool
