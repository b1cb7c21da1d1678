// gen-levels ROOT: writes the shipped tours under ROOT/Maps from the sources in
// ROOT/tools/levels/tours, then races every map's reference run in the simulator. Exit status 0
// when every map was written and finishes, 1 otherwise.
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/QmRaceSimulator.h"
#include "LevelBuilder.h"
#include "LevelSource.h"
#include "Platform/VeLog.h"

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
            QmCoreEnvironmentManager world;
            QmSimOptions options;
            std::string reason;
            if (!LevelBuilder::LoadIntoWorld(tour, m, world, error) ||
                !options.inputs.ParseStrict(tour.maps[m].run, reason)) {
                std::fprintf(stderr, "gen-levels: %s: %s%s\n", tour.maps[m].name.c_str(), error.c_str(),
                             reason.c_str());
                ++failures;
                continue;
            }
            const QmSimResult result = QmRaceSimulator::Run(world, options, nullptr);
            std::printf("%-22s %-16s %-8s %6.2f s\n", tour.name.c_str(), tour.maps[m].name.c_str(),
                        QmSimResult::OutcomeName(result.outcome),
                        static_cast<double>(result.timeMs) / 1000.0);
            if (result.outcome != QmSimResult::Finished) {
                ++failures;
            }
        }
    }
    std::printf("%zu tours, %d maps, %d without a finishing run\n", tours.size(), maps, failures);
    return failures == 0 ? 0 : 1;
}
