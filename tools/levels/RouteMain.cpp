// quillmaze-route SOURCE.tour [MAP...] [--missing] [--write] [--step FRAMES] [--greed G]
//                 [--max-states N] [--max-seconds S] [--cow-frames N]
// Searches a reference run for maps of a tour source (every map, the named ones, or with
// --missing those without a run), checks it in the simulator and prints it; --write stores it as
// the map's run line in the source.
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/QmRaceSimulator.h"
#include "LevelBuilder.h"
#include "LevelSource.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "RouteSearch.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {
int Usage() {
    std::fprintf(stderr, "usage: quillmaze-route SOURCE.tour [MAP...] [--missing] [--write] [--step FRAMES]\n"
                         "                       [--greed G] [--max-states N] [--max-seconds S]\n"
                         "                       [--cow-frames N]\n");
    return 2;
}
} // namespace

int main(int argc, char** argv) {
    SetLogSink([](const std::string&) {});
    std::string source;
    std::vector<std::string> names;
    bool missingOnly = false;
    bool write = false;
    RouteOptions options;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const bool value = i + 1 < argc;
        if (arg == "--missing") {
            missingOnly = true;
        } else if (arg == "--write") {
            write = true;
        } else if (arg == "--step" && value) {
            options.stepFrames = std::max(1, std::atoi(argv[++i]));
        } else if (arg == "--greed" && value) {
            options.greed = std::atof(argv[++i]);
        } else if (arg == "--max-states" && value) {
            options.maxStates = static_cast<size_t>(std::atol(argv[++i]));
        } else if (arg == "--cow-frames" && value) {
            options.cowFrames = std::max(1, std::atoi(argv[++i]));
        } else if (arg == "--max-seconds" && value) {
            options.maxSeconds = static_cast<float>(std::atof(argv[++i]));
        } else if (!arg.empty() && arg[0] == '-') {
            return Usage();
        } else if (source.empty()) {
            source = arg;
        } else {
            names.push_back(arg);
        }
    }
    if (source.empty()) {
        return Usage();
    }
    LevelTour tour;
    std::string error;
    if (!LevelSource::ReadTour(source, tour, error)) {
        std::fprintf(stderr, "quillmaze-route: %s\n", error.c_str());
        return 1;
    }
    std::string text;
    ReadFileBytes(source, text);
    int failures = 0;
    for (size_t m = 0; m < tour.maps.size(); ++m) {
        const LevelMap& map = tour.maps[m];
        if (!names.empty() && std::find(names.begin(), names.end(), map.name) == names.end()) {
            continue;
        }
        if (missingOnly && !map.run.empty()) {
            continue;
        }
        QmCoreEnvironmentManager world;
        if (!LevelBuilder::LoadIntoWorld(tour, m, world, error)) {
            std::fprintf(stderr, "quillmaze-route: %s\n", error.c_str());
            return 1;
        }
        const RouteResult route = RouteSearch::Find(world, options);
        if (!route.found) {
            std::printf("%-16s no run found (%zu states)\n", map.name.c_str(), route.expanded);
            ++failures;
            continue;
        }
        LevelBuilder::LoadIntoWorld(tour, m, world, error);
        QmSimOptions sim;
        sim.dt = options.dt;
        std::string reason;
        sim.inputs.ParseStrict(route.run, reason);
        const QmSimResult result = QmRaceSimulator::Run(world, sim, nullptr);
        std::printf("%-16s %s %.2f s (search %.2f s, %zu states)\nrun %s\n", map.name.c_str(),
                    QmSimResult::OutcomeName(result.outcome), static_cast<double>(result.timeMs) / 1000.0,
                    static_cast<double>(route.timeMs) / 1000.0, route.expanded, route.run.c_str());
        std::fflush(stdout);
        if (result.outcome != QmSimResult::Finished) {
            ++failures;
            continue;
        }
        if (write && !LevelSource::SetRun(text, map.name, route.run, error)) {
            std::fprintf(stderr, "quillmaze-route: %s\n", error.c_str());
            return 1;
        }
    }
    if (write && !WriteFileAtomic(source, text)) {
        std::fprintf(stderr, "quillmaze-route: cannot write %s\n", source.c_str());
        return 1;
    }
    return failures == 0 ? 0 : 1;
}
