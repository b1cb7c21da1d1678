// Long races as a player sees them, frame by frame, through the application's own frame:
// - LongRace2D / LongRace3D: one shipped map raced by its recorded run, started again at each
//   finish, for a minute of game time (3600 frames of 1/60 s, the clock fixed, no frame pacing);
//   the median and the 99th percentile of the frames' wall times.
// (The soak of every shipped map is SoakBench.cpp.)
// Run under Xvfb: SDL_AUDIODRIVER=dummy xvfb-run -a build/bench/qm_coordinator_bench
//   --benchmark_filter=LongRace
#include "ShippedRuns.h"

#include "App/VeRegistry.h"
#include "Coordinator/QmCommandLine.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "FrontEnd/Options/QmOptions.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Screen/VeScreen.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

constexpr double kFrameSeconds = 1.0 / 60.0;

// A user data folder of the benchmark's own, removed at the end.
class RaceFolder {
public:
    RaceFolder() {
        std::filesystem::current_path(QM_SOURCE_DIR);
        setenv("QUILLMAZE_NO_DIALOGS", "1", 1);
        path = (std::filesystem::temp_directory_path() / ("quillmaze-long-race-" + std::to_string(getpid())))
                   .string();
        setenv("QUILLMAZE_USER_DATA", path.c_str(), 1);
        SetLogSink([](const std::string&) {});
    }
    ~RaceFolder() {
        SetLogSink(nullptr);
        DeleteFolder(path);
    }
    RaceFolder(const RaceFolder&) = delete;
    RaceFolder& operator=(const RaceFolder&) = delete;

private:
    std::string path;
};

// The game on a race of the run's map, steered by the run; null without a window.
std::unique_ptr<VaApp> StartRace(const ShippedRun& run, bool threeD) {
    QmCommandLine line;
    const std::vector<std::string> arguments{"quillmaze",
                                             "--play",
                                             std::to_string(run.tour),
                                             std::to_string(run.map),
                                             threeD ? "--3d" : "--2d",
                                             "--autoplay",
                                             run.recording.ToText(),
                                             "--fixed-dt",
                                             "0.016667"};
    if (line.Parse(arguments) != QmCommandLine::Result::Run) {
        return nullptr;
    }
    auto app = std::make_unique<VaApp>();
    app->FillSettings();
    app->registry->SetInt("VE_USE_AUDIO", 0);
    app->registry->SetInt("VE_DEBUG_INFO", 0);
    app->registry->SetInt("VE_DEBUG_AUDIO", 0);
    app->UseCommandLine(line);
    app->Init();
    if (app->screen == nullptr) {
        return nullptr;
    }
    app->screen->SetFramePacing(false);
    app->CreateManagers();
    if (app->coordinator == nullptr || app->scene != SceneRace) {
        app->Shutdown();
        return nullptr;
    }
    app->coordinator->SetOption(QmOptions::kVsync, "0");
    return app;
}

// One frame, timed; a finished race starts again on the same map (counted in starts).
double TimedFrame(VaApp& app, const ShippedRun& run, int& starts) {
    const auto begin = std::chrono::steady_clock::now();
    app.Frame();
    const double ms =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
    if (app.scene != SceneRace) {
        std::string error;
        starts += app.coordinator->PlayMap(run.tour, run.map, error) ? 1 : 0;
    }
    return ms;
}

double Percentile(std::vector<double> values, double p) {
    if (values.empty()) {
        return 0.0;
    }
    std::sort(values.begin(), values.end());
    const size_t at =
        std::min(values.size() - 1, static_cast<size_t>(p * static_cast<double>(values.size())));
    return values[at];
}

void LongRace(benchmark::State& state, bool threeD) {
    RaceFolder folder;
    const std::vector<ShippedRun> runs = ShippedRuns();
    if (runs.empty()) {
        state.SkipWithError("no shipped map with a recorded run");
        return;
    }
    // The map with the longest recorded run: the most of a tour's variety in one race.
    const ShippedRun& run = *std::max_element(runs.begin(), runs.end(), [](const auto& a, const auto& b) {
        return a.recording.Events().rbegin()->first < b.recording.Events().rbegin()->first;
    });
    std::unique_ptr<VaApp> app = StartRace(run, threeD);
    if (!app) {
        state.SkipWithError("the game could not start a race (no window?)");
        return;
    }
    const int frames = static_cast<int>(60.0 / kFrameSeconds);
    std::vector<double> times;
    times.reserve(static_cast<size_t>(frames));
    int starts = 1;
    for (auto _ : state) {
        for (int i = 0; i < frames; ++i) {
            times.push_back(TimedFrame(*app, run, starts));
        }
    }
    state.SetLabel(run.name);
    state.counters["races"] = starts;
    state.counters["p50_ms"] = Percentile(times, 0.50);
    state.counters["p99_ms"] = Percentile(times, 0.99);
    state.counters["max_ms"] = Percentile(times, 1.0);
    app->Shutdown();
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
