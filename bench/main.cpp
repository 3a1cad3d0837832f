// The benchmark program. Takes Google Benchmark's arguments.
#include "Bench.h"
#include "shareForLines/InstructionSet.h"

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    const bool quick = streakfall::instructionSet() != streakfall::InstructionSet::kBaseline;
    benchmark::AddCustomContext("instruction_set", quick ? "avx2" : "baseline");
    bench::registerDrawing();
#if BENCH_CAIRO
    bench::registerCairo();
#endif
    bench::registerGeneration();
    bench::registerFrames();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
