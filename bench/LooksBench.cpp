// Looks as a person dials them: the drawing of each, and Cairo filling the same lines where they
// have no wave.
//
// The lines come from the parameters, outside of the time. Inside of it are the stroke's set-up,
// each line's colour and the drawing: all that a frame takes between its list and its transfer,
// but for clearing the buffer.
#include <string>

#include "Bench.h"
#include "DialledLooks.h"
#include "Drawing.h"
#include "effect/LineSynthesis.h"
#include "effect/StrokeSetup.h"
#include "shareForLines/path/ColorJitter.h"
#if BENCH_CAIRO
#include "CairoLines.h"
#endif

namespace bench {
namespace {

constexpr int kLookCount = 100;
constexpr const FrameSize& kSize = kFrameSizes[0];

// The list of one look, ready to be drawn.
struct LookLines {
    explicit LookLines(const DialledLook& look)
        : params(streakfall::convertParams(look.params, frameInfo(kSize))) {
        streakfall::generateLines(params, frameInfo(kSize), lines);
    }

    template <class Depth>
    typename Depth::Pixel penOf(std::size_t i) const {
        typename Depth::Pixel pen;
        streakfall::jitterColor<Depth>(
            pen, streakfall::framePen<Depth>(params.values), streakfall::jitterAmounts(params),
            static_cast<std::uint32_t>(lines[i].seed), params.values.randomSeed);
        return pen;
    }

    streakfall::ConvertedParams params;
    std::vector<streakfall::LineRecord> lines;
};

benchmark::internal::Benchmark* addLook(const std::string& name, const DialledLook& look,
                                        void (*time)(benchmark::State&, const LookLines&)) {
    return add("look/" + look.name + "/" + name, [&look, time](benchmark::State& state) {
        const LookLines list(look);
        time(state, list);
        state.counters["lines"] = static_cast<double>(list.lines.size());
        state.SetLabel(look.words);
    });
}

template <class Depth, auto kPlay>
void timeDrawing(benchmark::State& state, const LookLines& look) {
    Drawing<Depth> drawing(kSize.width, kSize.height);
    timeWork(
        state, [&] { drawing.clear(); },
        [&] {
            streakfall::setUpStroke(drawing.stroke, look.params.values);
            kPlay(drawing.stroke, drawing.canvas, look.lines,
                  [&](std::size_t i) { return look.penOf<Depth>(i); });
        });
}

#if BENCH_CAIRO
void timeCairo(benchmark::State& state, const LookLines& look) {
    streakfall::StrokeForm form;
    streakfall::setUpStroke(form, look.params.values);
    std::vector<CairoPen> pens;
    for (std::size_t i = 0; i < look.lines.size(); ++i) {
        const PF_Pixel pen = look.penOf<streakfall::Depth8>(i);
        pens.push_back({pen.red / 255.0, pen.green / 255.0, pen.blue / 255.0, pen.alpha / 255.0});
    }
    CairoLines cairo(kSize.width, kSize.height);
    timeWork(
        state, [&] { cairo.clear(); }, [&] { cairo.draw(form, look.lines, pens); });
}
#endif

}  // namespace

void registerLooks(std::uint32_t seed) {
    static const std::vector<DialledLook> looks = dialLooks(seed, kLookCount, kSize);
    constexpr double kLeastTime = 0.01;
    for (const DialledLook& look : looks) {
        using namespace streakfall;
        addLook("8", look, timeDrawing<Depth8, kOurs>)->MinTime(kLeastTime)->Repetitions(3);
        addLook("16", look, timeDrawing<Depth16, kOurs>)->MinTime(kLeastTime);
        addLook("float", look, timeDrawing<DepthFloat, kOurs>)->MinTime(kLeastTime);
        addLook("twin", look, timeDrawing<Depth8, kTwin>)->Iterations(1);
#if BENCH_CAIRO
        if (look.params.enableWave != 0) continue;
        addLook("cairo", look, timeCairo)->MinTime(kLeastTime)->Repetitions(3);
#endif
    }
}

}  // namespace bench
