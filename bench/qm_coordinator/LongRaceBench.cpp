// Long races as a player sees them, frame by frame, through the application's own frame:
// - LongRace2D / LongRace3D: one shipped map raced by its recorded run, started again at each
//   finish, for a minute of game time (3600 frames of 1/60 s, the clock fixed, no frame pacing);
//   the median and the 99th percentile of the frames' wall times.
// (The soak of every shipped map is SoakBench.cpp.)
// Run under Xvfb: SDL_AUDIODRIVER=dummy xvfb-run -a build/bench/qm_coordinator_bench
//   --benchmark_filter=LongRace
#include "BenchGame.h"
#include "Percentile.h"
#include "ShippedRuns.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace {

constexpr double kFrameSeconds = 1.0 / 60.0;

void LongRace(benchmark::State& state, bool threeD) {
    BenchGame game("long-race");
    const std::vector<ShippedRun> runs = ShippedRuns();
    if (runs.empty()) {
        state.SkipWithError("no shipped map with a recorded run");
        return;
    }
    // The map with the longest recorded run: the most of a tour's variety in one race.
    const ShippedRun& run = *std::max_element(runs.begin(), runs.end(), [](const auto& a, const auto& b) {
        return a.recording.Events().rbegin()->first < b.recording.Events().rbegin()->first;
    });
    if (!game.StartRace(run, threeD)) {
        state.SkipWithError("the game could not start a race (no window?)");
        return;
    }
    VaApp& app = *game.App();
    const int frames = static_cast<int>(60.0 / kFrameSeconds);
    std::vector<double> times;
    times.reserve(static_cast<size_t>(frames));
    int starts = 1;
    for (auto _ : state) {
        for (int i = 0; i < frames && !game.StopAsked(); ++i) {
            const auto begin = std::chrono::steady_clock::now();
            app.Frame();
            times.push_back(
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count());
            if (app.scene != SceneRace) { // finished: the same map again
                starts += game.RaceAgain(run, threeD) ? 1 : 0;
            }
        }
    }
    state.SetLabel(run.name);
    state.counters["races"] = starts;
    state.counters["p50_ms"] = Percentile(times, 0.50);
    state.counters["p99_ms"] = Percentile(times, 0.99);
    state.counters["max_ms"] = Percentile(times, 1.0);
}

void BM_LongRace2D(benchmark::State& state) {
    LongRace(state, false);
}

void BM_LongRace3D(benchmark::State& state) {
    LongRace(state, true);
}

} // namespace

BENCHMARK(BM_LongRace2D)->Iterations(1)->Repetitions(1)->Unit(benchmark::kSecond)->UseRealTime();
BENCHMARK(BM_LongRace3D)->Iterations(1)->Repetitions(1)->Unit(benchmark::kSecond)->UseRealTime();
