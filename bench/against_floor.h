#pragma once
// A report timed against its floor in the same run: reading the files the report reads, once.
// Both are taken in processor time (on a shared machine the wall time of a few milliseconds is
// mostly other programs' turn): the report's median over its runs, the floor's best of a few
// reads taken just before them. The same read taken between the report's runs is shown beside
// it; it costs more, the caches being the report's.
//
// The ratio is reported, not enforced: a busy machine swings it more than the code does. Only
// the time limit is enforced.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <vector>

namespace korvel::bench {

// The processor time of this process, in seconds.
inline double cpu_seconds() {
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return double(t.tv_sec) + double(t.tv_nsec) * 1e-9;
}

inline double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : v[v.size() / 2];
}

// read_floor reads the files once; run runs the report once, after prepare (untimed) sets up
// what it starts from. A report over most_seconds (wall time) fails the benchmark.
template <class Floor, class Run, class Prepare = void (*)()>
void against_floor(
    benchmark::State& state, Floor read_floor, Run run, double most_seconds,
    Prepare prepare = [] {}) {
    const auto timed = [](auto&& f) {
        const double start = cpu_seconds();
        f();
        return cpu_seconds() - start;
    };
    double floor = timed(read_floor);
    for (int i = 0; i < 4; ++i)
        floor = std::min(floor, timed(read_floor));
    std::vector<double> floors, runs;
    double slowest = 0;
    for (auto _ : state) {
        state.PauseTiming();
        floors.push_back(timed(read_floor));
        prepare();
        state.ResumeTiming();
        const auto start = std::chrono::steady_clock::now();
        runs.push_back(timed(run));
        slowest = std::max(
            slowest,
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    state.counters["times_floor"] = median(runs) / floor;
    state.counters["times_floor_between"] = median(runs) / median(floors);
    state.counters["cpu_ms"] = median(runs) * 1e3;
    state.counters["floor_cpu_ms"] = floor * 1e3;
    state.counters["seconds"] = slowest;
    if (slowest > most_seconds)
        state.SkipWithError("the report takes longer than its limit");
}

}  // namespace korvel::bench
