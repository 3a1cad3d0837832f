// Line drawing alone: the four scenes, a grid of single lines, the plain twin, and the memory's
// own floor.
#include <memory>

#include "Bench.h"
#include "Drawing.h"
#include "Scenes.h"

namespace bench {
namespace {

using streakfall::Depth16;
using streakfall::Depth8;
using streakfall::DepthFloat;

// How the lines of a scene are painted.
struct Paint {
    const char* name;
    bool ownColors;  // each line its own colour, or all of them one
    double opacity;  // ratio
    bool wave;
};

constexpr Paint kOpaque{"own colours", true, 1.0, false};
constexpr Paint kPaints[] = {kOpaque,
                             {"one colour", false, 1.0, false},
                             {"one colour 50 %", false, 0.5, false},
                             {"own colours 50 %", true, 0.5, false},
                             {"wave", true, 1.0, true}};

void setUpStroke(streakfall::StrokeForm& stroke, const Scene& scene, const Paint& paint) {
    setUpRamps(stroke, scene);
    stroke.waveEnabled = paint.wave;
    stroke.wave.amount = 20.0;
    stroke.wave.amountRandom = 0.5;
    stroke.wave.wavelength = 120.0;
    stroke.wave.wavelengthRandom = 0.5;
}

// `scene` outlives the benchmark.
template <class Depth, class Play>
benchmark::internal::Benchmark* addDrawing(const std::string& name, const Scene& scene,
                                           const Paint& paint, Play play) {
    return add(name, [&scene, paint, play](benchmark::State& state) {
        Drawing<Depth> drawing(scene.width, scene.height);
        setUpStroke(drawing.stroke, scene, paint);
        const auto penOf = [&](std::size_t i) -> typename Depth::Pixel {
            const LineColor c = colorOfLine(paint.ownColors ? i : 0);
            return {Depth::penAlpha(paint.opacity), Depth::penColor(c.red),
                    Depth::penColor(c.green), Depth::penColor(c.blue)};
        };
        timeWork(
            state, [&] { drawing.clear(); },
            [&] { play(drawing.stroke, drawing.canvas, scene.lines, penOf); });
        state.counters["lines"] = static_cast<double>(scene.lines.size());
    });
}

template <class Depth>
void addScene(const Scene& scene, const char* depth) {
    for (const Paint& paint : kPaints) {
        // The column that all others are compared with counts most; the wide depths' other looks
        // are for ratios near 2 alone.
        const bool opaque = paint.ownColors && paint.opacity == 1.0 && !paint.wave;
        const bool eightBits = sizeof(typename Depth::Channel) == 1;
        addDrawing<Depth>("draw/" + scene.name + "/" + depth + "/" + paint.name, scene, paint,
                          kOurs)
            ->Repetitions(opaque && eightBits   ? 5
                          : opaque || eightBits ? 3
                                                : 1);
    }
}

// The least that any way of drawing costs: the buffer cleared, and laid once over an opaque frame.
void touchFrame(benchmark::State& state, const Scene& scene) {
    Drawing<Depth8> drawing(scene.width, scene.height);
    std::vector<PF_Pixel> frame(drawing.pixels.size(), PF_Pixel{255, 90, 60, 30});
    const auto mix = [](unsigned over, unsigned under, unsigned alpha) {
        return static_cast<std::uint8_t>((over * alpha + under * (255u - alpha) + 127u) / 255u);
    };
    timeWork(
        state, [] {},
        [&] {
            drawing.clear();
            const PF_Pixel* source = drawing.pixels.data();
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
    return {"", 1300, 430, 1000.0, ramp, {line}};
}

template <class Depth>
void addGridCell(double radius, const char* depth) {
    constexpr Paint kTranslucent{"translucent", true, 0.5, false};
    for (const double ramp : {0.0, 0.3}) {
        static std::vector<std::unique_ptr<Scene>> scenes;
        scenes.push_back(std::make_unique<Scene>(gridScene(radius, ramp)));
        for (const Paint& paint : {kOpaque, kTranslucent}) {
            char name[96];
            std::snprintf(name, sizeof name, "grid/%g/%s/%s/%s", radius, depth,
                          paint.opacity < 1.0 ? "translucent" : "opaque",
                          ramp > 0.0 ? "ramps" : "no ramps");
            addDrawing<Depth>(name, *scenes.back(), paint, kOurs)->MinTime(0.005)->Repetitions(3);
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
