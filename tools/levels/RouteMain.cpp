// quillmaze-route SOURCE.tour [MAP...] [--missing] [--write] [--step FRAMES] [--greed G]
//                 [--max-states N] [--max-seconds S] [--cow-frames N] [--max-refused N] [--exact]
// Searches a reference run for maps of a tour source (every map, the named ones, or with
// --missing those without a run), checks it in the simulator and prints it; --write stores it as
// the map's run line in the source. A run is taken only when it also finishes at 50, 75 and 144
// frames a second (--exact takes any run that finishes at the search's frame time).
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/QmRaceSimulator.h"
#include "Gameplay/QmRouteSearch.h"
#include "LevelBuilder.h"
#include "LevelSource.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {
constexpr const char* kUsage =
    "usage: quillmaze-route SOURCE.tour [MAP...] [--missing] [--write] [--step FRAMES]\n"
    "                       [--greed G] [--max-states N] [--max-seconds S]\n"
    "                       [--cow-frames N] [--max-refused N] [--exact]\n";

int Usage() {
    std::fputs(kUsage, stderr);
    return 2;
}
} // namespace

int main(int argc, char** argv) {
    SetLogSink([](const std::string&) {});
    std::string source;
    std::vector<std::string> names;
    bool missingOnly = false;
    bool write = false;
    bool exact = false;
    QmRouteOptions options;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const bool value = i + 1 < argc;
        if (arg == "--help" || arg == "-h") {
            std::printf(
                "%sSearches a reference run, from Start to Finish with the race's own physics, for the\n"
                "maps of a tour source (all of them, the named ones, or with --missing those without\n"
                "one) and reports each; --write stores the runs found in the source.\n",
                kUsage);
            return 0;
        }
        if (arg == "--missing") {
            missingOnly = true;
        } else if (arg == "--exact") {
            exact = true;
        } else if (arg == "--write") {
            write = true;
        } else if (arg == "--step" && value) {
            options.stepFrames = std::max(1, std::atoi(argv[++i]));
        } else if (arg == "--greed" && value) {
            options.greed = std::atof(argv[++i]);
        } else if (arg == "--max-states" && value) {
            options.maxStates = static_cast<size_t>(std::atol(argv[++i]));
        } else if (arg == "--max-refused" && value) {
            options.maxRefused = static_cast<size_t>(std::atol(argv[++i]));
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
        // A reference run should not hang on the exact frame time: it must also finish when the
        // frames come at other rates, as they do on a player's machine.
        std::string centred;
        if (!exact) {
            const auto finishesAt = [&tour, m](const std::string& run, float dt) {
                QmCoreEnvironmentManager other;
                std::string ignored;
                QmSimOptions sim;
                sim.dt = dt;
                return LevelBuilder::LoadIntoWorld(tour, m, other, ignored) &&
                       sim.inputs.ParseStrict(run, ignored) &&
                       QmRaceSimulator::Run(other, sim, nullptr).outcome == QmSimResult::Finished;
            };
            options.accept = [&](const std::string& run) {
                centred = QmRouteSearch::Centre(
                    run, [&](const std::string& r) { return finishesAt(r, options.dt); });
                for (float dt : {1.0f / 60.0f, 1.0f / 50.0f, 1.0f / 75.0f, 1.0f / 144.0f}) {
                    if (!finishesAt(centred, dt)) {
                        return false;
                    }
                }
                return true;
            };
        }
        const QmRouteResult route = QmRouteSearch::Find(world, options);
        if (!route.found) {
            std::printf("%-16s no run found (%zu states, %zu runs refused)\n", map.name.c_str(),
                        route.expanded, route.refused);
            ++failures;
            continue;
        }
        const std::string run = exact ? route.run : centred;
        LevelBuilder::LoadIntoWorld(tour, m, world, error);
        QmSimOptions sim;
        sim.dt = options.dt;
        std::string reason;
        sim.inputs.ParseStrict(run, reason);
        const QmSimResult result = QmRaceSimulator::Run(world, sim, nullptr);
        std::printf("%-16s %s %.2f s (search %.2f s, %zu states)\nrun %s\n", map.name.c_str(),
                    QmSimResult::OutcomeName(result.outcome), static_cast<double>(result.timeMs) / 1000.0,
                    static_cast<double>(route.timeMs) / 1000.0, route.expanded, run.c_str());
        std::fflush(stdout);
        if (result.outcome != QmSimResult::Finished) {
            ++failures;
            continue;
        }
        if (write && !LevelSource::SetRun(text, map.name, run, error)) {
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
