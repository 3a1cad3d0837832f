// Line drawing alone: the four scenes, a grid of single lines, the plain twin, and the memory's
// own floor.
#include <memory>

#include "Bench.h"
#include "Drawing.h"
#include "reference/PlainStroke.h"
#include "shareForLines/LineTracer.h"

namespace bench {
namespace {

using streakfall::Depth16;
using streakfall::Depth8;
using streakfall::DepthFloat;

constexpr Look kOpaque{"own colours", true, 1.0, false};
constexpr Look kLooks[] = {kOpaque,
                           {"one colour", false, 1.0, false},
                           {"one colour 50 %", false, 0.5, false},
                           {"own colours 50 %", true, 0.5, false},
                           {"wave", true, 1.0, true}};

const auto kOurs = [](auto& stroke, auto& canvas, const auto& line) {
    streakfall::traceLine(stroke, canvas, line);
};
const auto kTwin = [](auto& stroke, auto& canvas, const auto& line) {
    reference::traceLine(stroke, canvas, line);
};

// `scene` outlives the benchmark.
template <class Depth, class Trace>
benchmark::internal::Benchmark* addDrawing(const std::string& name, const Scene& scene,
                                           const Look& look, Trace trace) {
    return add(name, [&scene, look, trace](benchmark::State& state) {
        Drawing<Depth> drawing(scene, look);
        timeWork(
            state, [&] { drawing.clear(); }, [&] { drawing.draw(trace); });
        state.counters["lines"] = static_cast<double>(scene.lines.size());
    });
}

template <class Depth>
void addScene(const Scene& scene, const char* depth) {
    for (const Look& look : kLooks) {
        // The column that all others are compared with counts most; the wide depths' other looks
        // are for ratios near 2 alone.
        const bool opaque = look.ownColors && look.opacity == 1.0 && !look.wave;
        const bool eightBits = sizeof(typename Depth::Channel) == 1;
        addDrawing<Depth>("draw/" + scene.name + "/" + depth + "/" + look.name, scene, look, kOurs)
            ->Repetitions(opaque && eightBits   ? 5
                          : opaque || eightBits ? 3
                                                : 1);
    }
}

// The least that any way of drawing costs: the buffer cleared, and laid once over an opaque frame.
void touchFrame(benchmark::State& state, const Scene& scene) {
    Drawing<Depth8> drawing(scene, kOpaque);
    std::vector<PF_Pixel> frame(drawing.buffer().size(), PF_Pixel{255, 90, 60, 30});
    const auto mix = [](unsigned over, unsigned under, unsigned alpha) {
        return static_cast<std::uint8_t>((over * alpha + under * (255u - alpha) + 127u) / 255u);
    };
    timeWork(
        state, [] {},
        [&] {
            drawing.clear();
            const PF_Pixel* source = drawing.buffer().data();
            for (PF_Pixel& under : frame) {
                under.red = mix(source->red, under.red, source->alpha);
                under.green = mix(source->green, under.green, source->alpha);
                under.blue = mix(source->blue, under.blue, source->alpha);
                ++source;
            }
            benchmark::DoNotOptimize(frame.data());
        });
}

// One line of length 1000, a little askew, in a frame that holds it.
Scene gridScene(double radius, double ramp) {
    const streakfall::LineRecord line{150.3, 170.2, 1146.5, 257.4, 2.0 * radius, 0.0, 1};
    return {"", 1300, 430, ramp, {line}};
}

template <class Depth>
void addGridCell(double radius, const char* depth) {
    constexpr Look kTranslucent{"translucent", true, 0.5, false};
    for (const double ramp : {0.0, 0.3}) {
        static std::vector<std::unique_ptr<Scene>> scenes;
        scenes.push_back(std::make_unique<Scene>(gridScene(radius, ramp)));
        for (const Look& look : {kOpaque, kTranslucent}) {
            char name[96];
            std::snprintf(name, sizeof name, "grid/%g/%s/%s/%s", radius, depth,
                          look.opacity < 1.0 ? "translucent" : "opaque",
                          ramp > 0.0 ? "ramps" : "no ramps");
            addDrawing<Depth>(name, *scenes.back(), look, kOurs)->MinTime(0.005)->Repetitions(3);
        }
    }
}

}  // namespace

void registerDrawing() {
    static const std::vector<Scene> scenes = makeScenes();
    for (const Scene& scene : scenes) {
        addScene<Depth8>(scene, "8");
        addScene<Depth16>(scene, "16");
        addScene<DepthFloat>(scene, "float");
        addDrawing<Depth8>("twin/" + scene.name, scene, kOpaque, kTwin)->Iterations(1);
        add("floor/" + scene.name, [&](benchmark::State& state) {
            touchFrame(state, scene);
        })->Repetitions(5);
    }
    for (const double radius : {1.5, 2.5, 4.9, 5.0, 12.0, 40.0, 60.0, 80.0, 120.0}) {
        addGridCell<Depth8>(radius, "8");
        addGridCell<Depth16>(radius, "16");
        addGridCell<DepthFloat>(radius, "float");
    }
}

}  // namespace bench
