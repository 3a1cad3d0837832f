// The benchmark program. Takes Google Benchmark's arguments, and --looks_seed=NUMBER for other
// looks than those of every run.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <string>
#include <string_view>

#include "Bench.h"
#include "shareForLines/simd/InstructionSet.h"

namespace {

constexpr std::string_view kSeedOption = "--looks_seed=";

// Takes the option out of the arguments. False when its value is no number.
bool takeLooksSeed(int& argc, char** argv, std::uint32_t& seed) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (!argument.starts_with(kSeedOption)) continue;
        const std::string_view value = argument.substr(kSeedOption.size());
        const auto [end, error] = std::from_chars(value.begin(), value.end(), seed);
        if (error != std::errc{} || end != value.end()) {
            std::fprintf(stderr, "%s: not a number from 0 to 4294967295\n", argv[i]);
            return false;
        }
        std::copy(argv + i + 1, argv + argc, argv + i);
        --argc;
        return true;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    std::uint32_t looksSeed = 1;
    if (!takeLooksSeed(argc, argv, looksSeed)) return 2;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    const bool quick = streakfall::instructionSet() != streakfall::InstructionSet::kBaseline;
    benchmark::AddCustomContext("looks_seed", std::to_string(looksSeed));
    benchmark::AddCustomContext("instruction_set", quick ? "avx2" : "baseline");
    bench::registerDrawing();
#if BENCH_CAIRO
    bench::registerCairo();
#endif
    bench::registerGeneration();
    bench::registerFrames();
    bench::registerLooks(looksSeed);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
