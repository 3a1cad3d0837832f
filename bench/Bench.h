// What the parts of the benchmark program share.
//
// A name is "kind/subject/..."; scripts/bench-table finds its rows by these names.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <ctime>
#include <string>

namespace bench {

// Each part registers its benchmarks. Parts keep what they need in static storage.
void registerDrawing();
void registerCairo();
void registerGeneration();
void registerFrames();
void registerLooks(std::uint32_t seed);  // of the looks

// Processor time of this thread: what other programs of the machine take does not count.
inline double threadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// Runs `prepare` outside and `work` inside of the time taken.
template <class Prepare, class Work>
void timeWork(benchmark::State& state, Prepare prepare, Work work) {
    for ([[maybe_unused]] auto _ : state) {
        prepare();
        const double start = threadSeconds();
        work();
        state.SetIterationTime(threadSeconds() - start);
    }
}

// A benchmark whose times are those that it sets itself.
template <class Body>
benchmark::internal::Benchmark* add(const std::string& name, Body body) {
    return benchmark::RegisterBenchmark(name.c_str(), body)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

}  // namespace bench
