// The editor's playability check: on the largest shipped map (its best run proves it) and, for
// comparison, the search alone on a generated large map; and what a frame pays while it runs.
#include "Editor/QmPlayabilityCheck.h"
#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmMapFile.h"
#include "Environment/CoreEnvironmentManager/QmTourFile.h"
#include "Gameplay/QmHighscores.h"
#include "Platform/VeLog.h"
#include "Platform/VeRandom.h"
#include "Platform/VeTime.h"

#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <vector>

namespace {
struct Map {
    QmMapContents contents;
    std::string bestRun;
    size_t filled = 0;
};

// The shipped map with the most filled cells on a 20 x 20 grid, with its best run.
Map LargestShippedMap() {
    SetLogSink([](const std::string&) {});
    const std::string root = std::string(QM_SOURCE_DIR) + "/Maps/";
    std::vector<std::string> lines;
    QmCipherFile::ReadLines(root + "tours.dat", lines);
    Map largest;
    for (const std::string& folder : QmTourFile::ParseTourList(lines)) {
        TourRecord record;
        std::vector<std::string> levels;
        QmCipherFile::ReadLines(root + folder + "/tour.dat", lines);
        QmTourFile::ParseTour(lines, record, levels);
        for (const std::string& level : levels) {
            const std::string path = root + folder + "/" + level;
            QmCipherFile::ReadLines(path, lines);
            Map map;
            map.contents = QmMapFile::Parse(lines);
            const int n = map.contents.blockSize == 32 ? 20 : 10;
            for (int x = 0; x < n; ++x) {
                for (int y = 0; y < n; ++y) {
                    map.filled +=
                        map.contents.blocks[static_cast<size_t>(x * 20 + y)] != Block::Blank ? 1 : 0;
                }
            }
            const size_t score = map.filled + (n == 20 ? 1000 : 0);
            if (score > largest.filled + (largest.contents.blockSize == 32 ? 1000 : 0)) {
                QmCoreEnvironmentManager world;
                world.mapUid = map.contents.uid;
                QmHighscores scores(world);
                scores.LoadScores(path.substr(0, path.size() - 4) + ".dat");
                map.bestRun = scores.StoredRecordingText();
                largest = map;
            }
        }
    }
    return largest;
}

void BM_CheckLargestShippedMap(benchmark::State& state) {
    const Map map = LargestShippedMap();
    for (auto _ : state) {
        const auto report =
            QmPlayabilityCheck::Find(map.contents.blocks, map.contents.blockSize, {map.bestRun});
        if (report.outcome != QmPlayabilityCheck::Outcome::Finishable) {
            state.SkipWithError("the largest shipped map was not proved");
            break;
        }
        benchmark::DoNotOptimize(report.timeMs);
    }
}
BENCHMARK(BM_CheckLargestShippedMap)->Unit(benchmark::kMillisecond);

void BM_SearchGeneratedLargeMap(benchmark::State& state) {
    QmCoreEnvironmentManager world;
    world.SetBlockSize(32);
    SeedRand(7);
    world.GenerateLevel();
    for (auto _ : state) {
        const auto report = QmPlayabilityCheck::Find(world.blocks, world.blockSize);
        state.counters["states"] = static_cast<double>(report.statesSearched);
        state.counters["found"] = report.outcome == QmPlayabilityCheck::Outcome::Finishable ? 1 : 0;
    }
}
BENCHMARK(BM_SearchGeneratedLargeMap)->Unit(benchmark::kMillisecond)->Iterations(3);

// What a frame pays for a check running beside it: one poll (the search itself is on the worker).
void BM_FramePollWhileTheCheckRuns(benchmark::State& state) {
    std::array<BlockId, QmCoreEnvironmentManager::kCellCount> grid{};
    for (int x = 0; x < 20; ++x) {
        grid[static_cast<size_t>(x * 20 + 19)] = 1;
    }
    grid[static_cast<size_t>(1 * 20 + 18)] = Block::Start;
    grid[static_cast<size_t>(18 * 20 + 18)] = Block::Finish;
    for (int y = 0; y < 19; ++y) {
        grid[static_cast<size_t>(17 * 20 + y)] = 2; // a wall before the Finish: a long, vain search
    }
    QmPlayabilityCheck check;
    check.Start(grid, 32);
    QmPlayabilityCheck::Report report;
    for (auto _ : state) {
        benchmark::DoNotOptimize(check.Poll(report));
    }
    state.counters["running"] = check.Running() ? 1 : 0;
    check.Stop();
}
BENCHMARK(BM_FramePollWhileTheCheckRuns)->Unit(benchmark::kMicrosecond);
} // namespace
