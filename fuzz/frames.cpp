// What a person writes behind `streakfall render`: frames, file names, rates and values, a line for
// each option,
//
//   -f 1-10x2
//   --key Offset@1=0,@24=200
//
// to the point where the values lie in the host and nothing has been read or written yet. Anything
// else than good values is a failure in words.
#include <cmath>
#include <unordered_set>

#include "Failure.h"
#include "FrameList.h"
#include "RenderOptions.h"
#include "Stage.h"
#include "Text.h"

using namespace fuzz;
using namespace standin;

namespace {

constexpr LayerSize kLayer{640, 360};

Stage& stage() {
    static Stage only;
    return only;
}

tool::RenderTexts readLines(std::string_view text) {
    tool::RenderTexts texts;
    texts.output = "out.####.png";
    texts.size = "64x48";
    for (const std::string_view line : tool::split(text, '\n')) {
        const std::size_t blank = std::min(line.find(' '), line.size());
        const std::string_view option = line.substr(0, blank);
        const std::string value(line.substr(std::min(blank + 1, line.size())));
        if (option == "-f") texts.frames = value;
        if (option == "-i") texts.input = value;
        if (option == "-o") texts.output = value;
        if (option == "--size") texts.size = value;
        if (option == "--depth") texts.depth = value;
        if (option == "--scale") texts.scale = value;
        if (option == "--fps") texts.fps = value;
        if (option == "--road") texts.road = value;
        if (option == "--set") texts.params.sets.push_back(value);
        if (option == "--key") texts.params.keys.push_back(value);
    }
    if (!texts.input.empty()) texts.size.clear();
    return texts;
}

void checkFrames(const std::vector<int>& frames) {
    const std::unordered_set<int> each(frames.begin(), frames.end());
    expect(!frames.empty() && each.size() == frames.size(), "no frames, or one of them twice");
    expect(frames.size() <= static_cast<std::size_t>(tool::kMostFrames), "too many frames");
    const std::string told = tool::describeFrames(frames);
    if (told.ends_with(",...")) return;
    expect(tool::parseFrameList(told.substr(told.find(':') + 1)) == frames,
           "the frames are told as ", told);
}

// A value in words means the same value.
void checkValue(const ParamInfo& param, const Value& value) {
    const bool tooFar = std::abs(value.part[0]) >= 32768 || std::abs(value.part[1]) >= 32768;
    if (param.type == PF_Param_POINT && tooFar) return;  // percents of a layer may go that far
    const std::string words = tool::valueText(param, value);
    expect(tool::ParamValue(param, words).on(kLayer) == value, "\"", param.name, "\" is told as ",
           words);
}

void store(const tool::RenderTexts& texts) {
    const tool::RenderOptions options(texts);
    checkFrames(options.frames);
    for (const int frame : {options.frames.front(), options.frames.back()}) {
        expect(!options.output.fileFor(frame).empty(), "an output file without a name");
    }
    const tool::ParamArguments arguments(tool::ParamLookup(stage().host().params()), "Version=1.5",
                                         texts.params);
    (void)arguments.warnings();
    for (const auto& [index, keys] : arguments.values()) {
        for (const auto& [frame, value] : keys.byFrame)
            checkValue(*keys.param, value.value.on(kLayer));
    }
    Instance instance(stage().host(), kLayer);
    tool::storeValues(instance, arguments, options.rate.value_or(tool::FrameRate{}));
    instance.updatePanel();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        store(readLines(textOf(data, size)));
    } catch (const tool::Failure& failure) {
        expect(failure.what()[0] != '\0', "a failure without words");
    }
    stage().expectTidy();
    return 0;
}
