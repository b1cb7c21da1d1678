// The soak: a player's long session in one game, every shipped map raced by its recorded run in 2D
// and then in 3D, round after round, for QM_SOAK_SECONDS (registered only when that is set; `make
// bench` runs it in a build with AddressSanitizer and UndefinedBehaviorSanitizer, scripts/build-soak).
// Each race lasts a third of the soak shared among the maps and views (at least kMinFrames frames),
// so a full soak plays everything about three times; it stops when its time is up, but not before
// two whole rounds.
// Judged, each a failure of the benchmark when it does not hold:
// - memory: the resident size after the first round (the warm-up: every map and view once) and its
//   largest growth after it, at most QM_SOAK_GROWTH_MB (default 64); under AddressSanitizer the
//   live heap's growth is reported beside it (the resident size also holds the sanitizer's
//   quarantine of freed blocks);
// - frame times: the wall time of each frame but a race's first kLoadFrames (they load its world),
//   p50 and p99 for 2D and for 3D over the soak; stable when the p99 of the last third of the
//   soak's time is at most QM_SOAK_P99_MARGIN (default 0.5, that is 50 %) above the first third's
//   (judged when each third holds at least kJudgedFrames frames of the kind).
// Leaks are LeakSanitizer's to report when the process ends.
#include "BenchGame.h"
#include "Percentile.h"
#include "ShippedRuns.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
#define QM_SOAK_HEAP 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QM_SOAK_HEAP 1
#endif
#endif
#ifdef QM_SOAK_HEAP
// AddressSanitizer's allocator (its header is not installed with every compiler).
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace {

constexpr int kLoadFrames = 3;
constexpr int kMinFrames = 12;
constexpr size_t kJudgedFrames = 1000;
constexpr double kMb = 1024.0 * 1024.0;

struct TimedFrame {
    double at = 0.0; // seconds since the soak began
    double ms = 0.0;
};

// The p-th percentile of the frames that began in [from, to) seconds.
double PercentileBetween(const std::vector<TimedFrame>& frames, double p, double from, double to) {
    std::vector<double> values;
    for (const TimedFrame& frame : frames) {
        if (frame.at >= from && frame.at < to) {
            values.push_back(frame.ms);
        }
    }
    return Percentile(std::move(values), p);
}

size_t FramesBetween(const std::vector<TimedFrame>& frames, double from, double to) {
    return static_cast<size_t>(
        std::count_if(frames.begin(), frames.end(),
                      [from, to](const TimedFrame& frame) { return frame.at >= from && frame.at < to; }));
}

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
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / kMb;
}

// The bytes the program holds allocated (0 without AddressSanitizer's allocator to ask).
double HeapMb() {
#ifdef QM_SOAK_HEAP
    return static_cast<double>(__sanitizer_get_current_allocated_bytes()) / kMb;
#else
    return 0.0;
#endif
}

double EnvNumber(const char* name, double fallback) {
    const char* text = std::getenv(name);
    return text != nullptr ? std::atof(text) : fallback;
}

void BM_Soak(benchmark::State& state) {
    BenchGame game("soak");
    const std::vector<ShippedRun> runs = ShippedRuns();
    if (runs.empty()) {
        state.SkipWithError("no shipped map with a recorded run");
        return;
    }
    const double seconds = EnvNumber("QM_SOAK_SECONDS", 600.0);
    const double allowedGrowthMb = EnvNumber("QM_SOAK_GROWTH_MB", 64.0);
    const double margin = EnvNumber("QM_SOAK_P99_MARGIN", 0.5);
    const double raceSeconds = seconds / 3.0 / static_cast<double>(runs.size() * 2);
    if (!game.StartRace(runs.front(), true)) {
        state.SkipWithError("the game could not start a race (no window?)");
        return;
    }
    VaApp* app = game.App();
    std::array<std::vector<TimedFrame>, 2> frames; // 2D, 3D
    double residentAfterWarmUp = 0.0;
    double residentPeak = 0.0;
    [[maybe_unused]] double heapAfterWarmUp = 0.0;
    [[maybe_unused]] double heapPeak = 0.0;
    int rounds = 0;
    int races = 0;
    std::string failure;
    const auto begin = std::chrono::steady_clock::now();
    const auto elapsed = [&begin] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    };
    const size_t pairs = runs.size() * 2;
    for (auto _ : state) {
        // Race after race until the time is up (mid-round), but at least two whole rounds.
        for (size_t r = 0; failure.empty() && !game.StopAsked() && (rounds < 2 || elapsed() < seconds); ++r) {
            const ShippedRun& run = runs[(r % pairs) / 2];
            const bool threeD = r % 2 == 1;
            if (!game.RaceAgain(run, threeD)) {
                failure = "the game could not start a race on " + run.name;
                break;
            }
            ++races;
            const double raceEnd = elapsed() + raceSeconds;
            for (int i = 0; failure.empty() && !game.StopAsked() && (i < kMinFrames || elapsed() < raceEnd);
                 ++i) {
                const double at = elapsed();
                app->Frame();
                if (i >= kLoadFrames) {
                    frames[threeD ? 1 : 0].push_back({at, (elapsed() - at) * 1000.0});
                }
                if (app->scene != SceneRace) { // finished: the same map again
                    if (game.RaceAgain(run, threeD)) {
                        ++races;
                    } else {
                        failure = "the game could not start a race again on " + run.name;
                    }
                }
            }
            if (rounds > 0) {
                residentPeak = std::max(residentPeak, ResidentMb());
                heapPeak = std::max(heapPeak, HeapMb());
            }
            if ((r + 1) % pairs == 0) {
                if (rounds++ == 0) {
                    residentAfterWarmUp = ResidentMb();
                    heapAfterWarmUp = HeapMb();
                }
                std::fprintf(stderr, "soak: round %d done at %.0f s, %d races, %.1f MB resident\n", rounds,
                             elapsed(), races, ResidentMb());
            }
        }
    }
    const double total = elapsed();
    if (failure.empty() && game.StopAsked()) {
        failure = "stopped on request after " + std::to_string(total) + " s";
    }
    game.Stop();

    const double growth = std::max(0.0, residentPeak - residentAfterWarmUp);
    state.counters["races"] = races;
    state.counters["rounds"] = rounds;
    state.counters["rss_after_warm_up_mb"] = residentAfterWarmUp;
    state.counters["rss_growth_mb"] = growth;
#ifdef QM_SOAK_HEAP
    state.counters["heap_after_warm_up_mb"] = heapAfterWarmUp;
    state.counters["heap_growth_mb"] = std::max(0.0, heapPeak - heapAfterWarmUp);
#endif
    if (failure.empty() && growth > allowedGrowthMb) {
        failure = "the resident size grew by " + std::to_string(growth) + " MB after the warm-up";
    }
    for (const bool threeD : {false, true}) {
        const std::vector<TimedFrame>& kind = frames[threeD ? 1 : 0];
        const std::string name = threeD ? "3d" : "2d";
        std::vector<double> all;
        for (const TimedFrame& frame : kind) {
            all.push_back(frame.ms);
        }
        const double first = PercentileBetween(kind, 0.99, 0.0, total / 3.0);
        const double last = PercentileBetween(kind, 0.99, total * 2.0 / 3.0, total + 1.0);
        state.counters["p50_" + name + "_ms"] = Percentile(all, 0.50);
        state.counters["p99_" + name + "_ms"] = Percentile(all, 0.99);
        state.counters["p99_" + name + "_first_third_ms"] = first;
        state.counters["p99_" + name + "_last_third_ms"] = last;
        // A p99 of fewer than kJudgedFrames frames rests on a handful of them: a quick check's
        // thirds are reported, not judged.
        const bool judged = FramesBetween(kind, 0.0, total / 3.0) >= kJudgedFrames &&
                            FramesBetween(kind, total * 2.0 / 3.0, total + 1.0) >= kJudgedFrames;
        if (failure.empty() && judged && last > first * (1.0 + margin)) {
            failure = "the " + name + " frames' p99 rose from " + std::to_string(first) +
                      " ms in the first third to " + std::to_string(last) + " ms in the last";
        }
    }
    // A failed benchmark shows no counters: the figures go to the log as well.
    for (const auto& [name, counter] : state.counters) {
        std::fprintf(stderr, "soak: %s = %.1f\n", name.c_str(), static_cast<double>(counter));
    }
    if (!failure.empty()) {
        state.SkipWithError(failure.c_str());
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
