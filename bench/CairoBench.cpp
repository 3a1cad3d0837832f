#include "Bench.h"
#include "CairoLines.h"
#include "Scenes.h"

namespace bench {

void registerCairo() {
    static const std::vector<Scene> scenes = makeScenes();
    for (const Scene& scene : scenes) {
        add("cairo/" + scene.name, [&](benchmark::State& state) {
            streakfall::StrokeForm form;
            setUpRamps(form, scene);
            std::vector<CairoPen> pens;
            for (std::size_t i = 0; i < scene.lines.size(); ++i) {
                const LineColor c = colorOfLine(i);
                pens.push_back({c.red / 255.0, c.green / 255.0, c.blue / 255.0, 1.0});
            }
            CairoLines cairo(scene.width, scene.height);
            timeWork(
                state, [&] { cairo.clear(); }, [&] { cairo.draw(form, scene.lines, pens); });
        })->Repetitions(5);
    }
}

}  // namespace bench
