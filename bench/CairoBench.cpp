#include "Bench.h"
#include "CairoLines.h"
#include "shareForLines/Stroke.h"

namespace bench {

void registerCairo() {
    static const std::vector<Scene> scenes = makeScenes();
    for (const Scene& scene : scenes) {
        add("cairo/" + scene.name, [&](benchmark::State& state) {
            const streakfall::StrokeForm form;
            CairoLines lines(scene);
            timeWork(
                state, [&] { lines.clear(); }, [&] { lines.draw(form.inShape); });
        })->Repetitions(5);
    }
}

}  // namespace bench
