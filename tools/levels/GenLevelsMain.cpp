// gen-levels ROOT: writes the shipped tours under ROOT/Maps from the sources in
// ROOT/tools/levels/tours, then races every map's reference run in the simulator at 60 frames a
// second and, on maps without cows, at 50, 75 and 144 as well. Exit status 0 when every map was
// written and every run finishes, 1 otherwise.
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/QmRaceSimulator.h"
#include "LevelBuilder.h"
#include "LevelSource.h"
#include "Platform/VeLog.h"

#include <array>
#include <cstdio>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: gen-levels REPOSITORY_ROOT\n");
        return 2;
    }
    SetLogSink([](const std::string&) {});
    const std::string root = argv[1];
    std::vector<LevelTour> tours;
    std::string error;
    if (!LevelSource::ReadTours(root + "/tools/levels/tours", tours, error)) {
        std::fprintf(stderr, "gen-levels: %s\n", error.c_str());
        return 1;
    }
    std::vector<std::string> missing;
    if (!LevelBuilder::Write(tours, root + "/Maps", missing, error)) {
        std::fprintf(stderr, "gen-levels: %s\n", error.c_str());
        return 1;
    }
    int failures = static_cast<int>(missing.size());
    for (const std::string& map : missing) {
        std::fprintf(stderr, "gen-levels: %s has no reference run\n", map.c_str());
    }
    int maps = 0;
    for (const LevelTour& tour : tours) {
        for (size_t m = 0; m < tour.maps.size(); ++m) {
            ++maps;
            if (tour.maps[m].run.empty()) {
                continue;
            }
            // The run must finish at the usual frame time and, on a map without cows (which walk
            // their own way at another rate), at the other rates a player's machine may run at.
            QmSimResult result;
            bool allFinish = true;
            bool cows = false;
            std::array<BlockId, 400> cells{};
            if (LevelSource::Cells(tour.maps[m], cells, error)) {
                for (BlockId id : cells) {
                    cows = cows || id == Block::Enemy;
                }
            }
            std::vector<float> frameTimes = {1.0f / 60.0f};
            if (!cows) {
                frameTimes.insert(frameTimes.end(), {1.0f / 50.0f, 1.0f / 75.0f, 1.0f / 144.0f});
            }
            for (float dt : frameTimes) {
                QmCoreEnvironmentManager world;
                QmSimOptions options;
                options.dt = dt;
                std::string reason;
                if (!LevelBuilder::LoadIntoWorld(tour, m, world, error) ||
                    !options.inputs.ParseStrict(tour.maps[m].run, reason)) {
                    std::fprintf(stderr, "gen-levels: %s: %s%s\n", tour.maps[m].name.c_str(), error.c_str(),
                                 reason.c_str());
                    allFinish = false;
                    break;
                }
                const QmSimResult raced = QmRaceSimulator::Run(world, options, nullptr);
                if (dt == 1.0f / 60.0f) {
                    result = raced;
                }
                allFinish = allFinish && raced.outcome == QmSimResult::Finished;
            }
            std::printf("%-22s %-16s %-8s %6.2f s%s\n", tour.name.c_str(), tour.maps[m].name.c_str(),
                        QmSimResult::OutcomeName(result.outcome), static_cast<double>(result.timeMs) / 1000.0,
                        allFinish ? "" : "  (not at every frame rate)");
            if (!allFinish) {
                ++failures;
            }
        }
    }
    std::printf("%zu tours, %d maps, %d without a finishing run\n", tours.size(), maps, failures);
    return failures == 0 ? 0 : 1;
}
