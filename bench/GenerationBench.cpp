// From parameters to the list of lines, without drawing.
#include "Bench.h"
#include "FieldCases.h"
#include "effect/LineSynthesis.h"

namespace bench {

void registerGeneration() {
    for (const FrameSize& size : kFrameSizes) {
        for (const FieldCase& field : fieldCases()) {
            add(std::string("generate/") + field.name + "/" + size.name,
                [&](benchmark::State& state) {
                    const streakfall::ConvertedParams params = paramsOf(field, size);
                    std::vector<streakfall::LineRecord> lines;
                    timeWork(
                        state, [&] { lines.clear(); },
                        [&] { streakfall::generateLines(params, frameInfo(size), lines); });
                    state.counters["lines"] = static_cast<double>(lines.size());
                })
                ->Repetitions(5);
        }
    }
}

}  // namespace bench
