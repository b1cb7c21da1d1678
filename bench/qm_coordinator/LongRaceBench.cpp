// Long races as a player sees them, frame by frame, through the application's own frame:
// - LongRace2D / LongRace3D: one shipped map raced by its recorded run, started again at each
//   finish, for a minute of game time (3600 frames of 1/60 s, the clock fixed, no frame pacing);
//   the median and the 99th percentile of the frames' wall times.
// - Soak (only when QM_SOAK_SECONDS is set, as `make bench` does in a sanitized build): every
//   shipped map by its recorded run, in 2D and then 3D, a few seconds each, round after round for
//   that long. The resident size is sampled after each race; its growth after the first round
//   (the warm-up: every map and view once) is reported and must stay under QM_SOAK_GROWTH_MB
//   (default 64). Leaks are for the sanitizer to report when the process ends.
// Run under Xvfb: SDL_AUDIODRIVER=dummy xvfb-run -a build/bench/qm_coordinator_bench
//   --benchmark_filter=LongRace
#include "App/VeRegistry.h"
#include "Coordinator/QmCommandLine.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmFileNames.h"
#include "Environment/CoreEnvironmentManager/QmTourFile.h"
#include "FrontEnd/Options/QmOptions.h"
#include "Gameplay/QmHighscores.h"
#include "Gameplay/QmRaceSimulator.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Screen/VeScreen.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

constexpr double kFrameSeconds = 1.0 / 60.0;

struct ShippedRun {
    int tour = 0;
    int map = 0;
    std::string name;
    std::string recording;
    int64_t lengthMs = 0;
};

// Every shipped map with its recorded run, in tour order (the game seeds the same tours, in the
// same order, into its folder).
std::vector<ShippedRun> ShippedRuns() {
    const std::string shipped = std::string(QM_SOURCE_DIR) + "/Maps";
    std::vector<std::string> lines;
    QmCipherFile::ReadLines(shipped + "/tours.dat", lines);
    std::vector<ShippedRun> runs;
    const std::vector<std::string> folders = QmTourFile::ParseTourList(lines);
    for (size_t t = 0; t < folders.size(); ++t) {
        TourRecord record;
        std::vector<std::string> levels;
        lines.clear();
        QmCipherFile::ReadLines(shipped + "/" + folders[t] + "/tour.dat", lines);
        QmTourFile::ParseTour(lines, record, levels);
        for (size_t m = 0; m < levels.size(); ++m) {
            const std::string path = shipped + "/" + folders[t] + "/" + levels[m];
            QmCoreEnvironmentManager world;
            std::string error;
            if (!QmRaceSimulator::LoadMap(world, path, error)) {
                continue;
            }
            QmHighscores scores(world);
            scores.LoadScores(QmFileNames::ScoreFileOf(path));
            const QmRecording& run = scores.StoredRecording();
            if (run.Empty()) {
                continue;
            }
            runs.push_back({static_cast<int>(t), static_cast<int>(m), folders[t] + "/" + levels[m],
                            run.ToText(), run.Events().rbegin()->first});
        }
    }
    return runs;
}

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
                                             run.recording,
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

// The resident size in megabytes.
double ResidentMb() {
    std::FILE* file = std::fopen("/proc/self/statm", "r");
    long pages = 0;
    long resident = 0;
    if (file != nullptr) {
        if (std::fscanf(file, "%ld %ld", &pages, &resident) != 2) {
            resident = 0;
        }
        std::fclose(file);
    }
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

void LongRace(benchmark::State& state, bool threeD) {
    RaceFolder folder;
    const std::vector<ShippedRun> runs = ShippedRuns();
    if (runs.empty()) {
        state.SkipWithError("no shipped map with a recorded run");
        return;
    }
    // The map with the longest recorded run: the most of a tour's variety in one race.
    const ShippedRun& run = *std::max_element(
        runs.begin(), runs.end(), [](const auto& a, const auto& b) { return a.lengthMs < b.lengthMs; });
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

void BM_Soak(benchmark::State& state) {
    RaceFolder folder;
    const std::vector<ShippedRun> runs = ShippedRuns();
    const double seconds = std::atof(std::getenv("QM_SOAK_SECONDS"));
    const char* growthText = std::getenv("QM_SOAK_GROWTH_MB");
    const double allowedGrowthMb = growthText != nullptr ? std::atof(growthText) : 64.0;
    // Each race lasts a share of the soak such that every map and view is raced about three times.
    const double raceSeconds = seconds / 3.0 / static_cast<double>(std::max<size_t>(1, runs.size() * 2));
    std::vector<double> times;
    double afterWarmUpMb = 0.0;
    double peakMb = 0.0;
    int rounds = 0;
    int races = 0;
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    for (auto _ : state) {
        while (std::chrono::steady_clock::now() < end) {
            for (const ShippedRun& run : runs) {
                for (bool threeD : {false, true}) {
                    std::unique_ptr<VaApp> app = StartRace(run, threeD);
                    if (!app) {
                        state.SkipWithError(("the game could not start a race on " + run.name).c_str());
                        return;
                    }
                    const auto raceEnd =
                        std::chrono::steady_clock::now() + std::chrono::duration<double>(raceSeconds);
                    for (int i = 0; i < 60 || std::chrono::steady_clock::now() < raceEnd; ++i) {
                        const double ms = TimedFrame(*app, run, races);
                        if (i >= 10) { // the first frames of a race load its world
                            times.push_back(ms);
                        }
                    }
                    app->Shutdown();
                    app.reset();
                    ++races;
                    if (rounds > 0) {
                        peakMb = std::max(peakMb, ResidentMb());
                    }
                }
            }
            if (rounds++ == 0) {
                afterWarmUpMb = ResidentMb();
            }
        }
    }
    const double growthMb = rounds > 1 ? std::max(0.0, peakMb - afterWarmUpMb) : 0.0;
    state.counters["races"] = races;
    state.counters["rounds"] = rounds;
    state.counters["rss_after_warm_up_mb"] = afterWarmUpMb;
    state.counters["rss_growth_mb"] = growthMb;
    state.counters["p50_ms"] = Percentile(times, 0.50);
    state.counters["p99_ms"] = Percentile(times, 0.99);
    if (rounds < 2) {
        state.SkipWithError("the soak was too short for a round after the warm-up");
    } else if (growthMb > allowedGrowthMb) {
        state.SkipWithError(
            ("the resident size grew by " + std::to_string(growthMb) + " MB after the warm-up").c_str());
    }
}

// The soak only runs when asked for: it takes as long as it is told.
[[maybe_unused]] const bool soakRegistered = [] {
    if (std::getenv("QM_SOAK_SECONDS") != nullptr) {
        benchmark::RegisterBenchmark("BM_Soak", BM_Soak)
            ->Iterations(1)
            ->Repetitions(1)
            ->Unit(benchmark::kSecond);
    }
    return true;
}();

} // namespace

BENCHMARK(BM_LongRace2D)->Iterations(1)->Repetitions(1)->Unit(benchmark::kSecond)->UseRealTime();
BENCHMARK(BM_LongRace3D)->Iterations(1)->Repetitions(1)->Unit(benchmark::kSecond)->UseRealTime();
