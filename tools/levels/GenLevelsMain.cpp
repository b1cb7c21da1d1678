// gen-levels ROOT: writes the shipped tours under ROOT/Maps from the sources in
// ROOT/tools/levels/tours, then races every map's reference run in the simulator at 60 frames a
// second and, on maps without cows, at 50, 75 and 144 as well. Then measures the maps (see
// LevelMeasures.h): it prints each map's difficulty and, on maps with cows, the cow seeds its run
// survives, names pairs of maps that share too many cells, and writes the table of measures into
// ROOT/docs/levels.md between its two marker lines. Exit status 0 when every map was written and
// every run finishes, 1 otherwise.
//
// gen-levels ROOT --simplify [MAP...] first makes the reference runs of the named maps (every map
// when none is named) easier to follow, and stores them in their sources: a press of left or right
// and its release (or a release and the next press of the same key) are dropped wherever the run
// still finishes without them, then every input is moved to the middle of the times that still work. A run
// must keep finishing at 50, 60, 75 and 144 frames a second, and on a map with cows at every cow seed.
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/QmRaceSimulator.h"
#include "Gameplay/QmRecording.h"
#include "Gameplay/QmRouteSearch.h"
#include "LevelBuilder.h"
#include "LevelMeasures.h"
#include "LevelSource.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace {
const char* const kTableStart = "<!-- measures: written by gen-levels -->";
const char* const kTableEnd = "<!-- end of measures -->";

std::string Fixed(double value, int decimals) {
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

// Whether a run does what a reference run must (see the top of this file).
bool Holds(const LevelTour& tour, size_t m, const std::string& run) {
    if (LevelMeasures::HasCows(tour.maps[m])) {
        for (uint32_t seed = 1; seed <= 6; ++seed) {
            if (!LevelMeasures::Finishes(tour, m, run, seed)) {
                return false;
            }
        }
        return true;
    }
    for (float dt : {1.0f / 60.0f, 1.0f / 50.0f, 1.0f / 75.0f, 1.0f / 144.0f}) {
        if (!LevelMeasures::Finishes(tour, m, run, 1, dt)) {
            return false;
        }
    }
    return true;
}

std::string Text(const std::vector<std::pair<int64_t, int>>& events) {
    QmRecording recording;
    for (const auto& [time, type] : events) {
        recording.Add(time, type);
    }
    return recording.ToText();
}

// The run with the inputs it can do without dropped, in pairs of the same key, then centred.
std::string Simplified(const LevelTour& tour, size_t m) {
    QmRecording recording;
    recording.FromText(tour.maps[m].run);
    std::vector<std::pair<int64_t, int>> events(recording.Events().begin(), recording.Events().end());
    if (!Holds(tour, m, Text(events))) {
        return tour.maps[m].run;
    }
    // The first input starts the race during the countdown and stays.
    for (size_t i = 1; i < events.size(); ++i) {
        for (size_t j = i + 1; j < events.size() && j < i + 8; ++j) {
            // Jumps stay as they are: holding jump longer would hop again on landing, which a
            // player's key does only when the keyboard repeats it.
            const bool sameKey = events[i].second % 3 == events[j].second % 3;
            const bool opposite = (events[i].second < 3) != (events[j].second < 3);
            if (!sameKey || !opposite || events[i].second % 3 == QmRecording::JumpPressed) {
                continue;
            }
            std::vector<std::pair<int64_t, int>> fewer = events;
            fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(j));
            fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(i));
            if (Holds(tour, m, Text(fewer))) {
                events = fewer;
                i = std::max<size_t>(i, 2) - 2;
                break;
            }
        }
    }
    const std::string plain = Text(events);
    const std::string centred = QmRouteSearch::Centre(
        plain, [&](const std::string& run) { return LevelMeasures::Finishes(tour, m, run); });
    return Holds(tour, m, centred) ? centred : plain;
}

// Simplifies the runs of the named maps (all when none is named) in their source files.
bool SimplifyRuns(const std::string& folder, const std::vector<std::string>& names) {
    std::vector<LevelTour> tours;
    std::string error;
    if (!LevelSource::ReadTours(folder, tours, error)) {
        std::fprintf(stderr, "gen-levels: %s\n", error.c_str());
        return false;
    }
    for (const LevelTour& tour : tours) {
        std::string text;
        if (!ReadFileBytes(tour.sourcePath, text)) {
            std::fprintf(stderr, "gen-levels: cannot read %s\n", tour.sourcePath.c_str());
            return false;
        }
        bool changed = false;
        for (size_t m = 0; m < tour.maps.size(); ++m) {
            const LevelMap& map = tour.maps[m];
            if (map.run.empty() ||
                (!names.empty() && std::find(names.begin(), names.end(), map.name) == names.end())) {
                continue;
            }
            const std::string run = Simplified(tour, m);
            QmRecording before;
            QmRecording after;
            before.FromText(map.run);
            after.FromText(run);
            std::printf("%-16s %zu inputs, now %zu\n", map.name.c_str(), before.Size(), after.Size());
            if (run != map.run) {
                changed = true;
                if (!LevelSource::SetRun(text, map.name, run, error)) {
                    std::fprintf(stderr, "gen-levels: %s\n", error.c_str());
                    return false;
                }
            }
        }
        if (changed && !WriteFileAtomic(tour.sourcePath, text)) {
            std::fprintf(stderr, "gen-levels: cannot write %s\n", tour.sourcePath.c_str());
            return false;
        }
    }
    return true;
}

// Prints the measures, reports maps too alike, and puts the table into the levels document.
bool WriteMeasures(const std::vector<LevelTour>& tours, const std::string& documentPath) {
    std::string table = std::string(kTableStart) +
                        "\n\n| Tour | Map | Size | Inputs | Length | Window | Score | Cow seeds |\n"
                        "|---|---|---|---|---|---|---|---|\n";
    std::vector<std::pair<const LevelTour*, size_t>> all;
    for (const LevelTour& tour : tours) {
        for (size_t m = 0; m < tour.maps.size(); ++m) {
            all.emplace_back(&tour, m);
            const LevelMap& map = tour.maps[m];
            const LevelDifficulty d = LevelMeasures::Difficulty(tour, m);
            std::string seeds = "no cows";
            if (LevelMeasures::HasCows(map)) {
                seeds = std::to_string(LevelMeasures::SeedsSurvived(tour, m, 6).size()) + " of 6";
            }
            std::printf("%-16s %3d inputs %6.2f s window %4lld ms (at %.2f s) score %6.1f  %s\n",
                        map.name.c_str(), d.inputs, static_cast<double>(d.lengthMs) / 1000.0,
                        static_cast<long long>(d.windowMs), static_cast<double>(d.windowAtMs) / 1000.0,
                        d.Score(), seeds.c_str());
            table += "| " + std::string(m == 0 ? tour.name : "") + " | " + map.name + " | " +
                     std::to_string(map.size) + " | " + std::to_string(d.inputs) + " | " +
                     Fixed(static_cast<double>(d.lengthMs) / 1000.0, 2) + " s | " +
                     std::to_string(d.windowMs) + " ms | " + Fixed(d.Score(), 1) + " | " + seeds + " |\n";
        }
    }
    table += "\n" + std::string(kTableEnd);
    for (size_t i = 0; i < all.size(); ++i) {
        for (size_t j = i + 1; j < all.size(); ++j) {
            const double overlap =
                LevelMeasures::Overlap(all[i].first->maps[all[i].second], all[j].first->maps[all[j].second]);
            if (overlap > 0.4) {
                std::printf("alike: %s and %s share %.0f %% of their cells\n",
                            all[i].first->maps[all[i].second].name.c_str(),
                            all[j].first->maps[all[j].second].name.c_str(), overlap * 100.0);
            }
        }
    }
    std::string document;
    if (!ReadFileBytes(documentPath, document)) {
        std::fprintf(stderr, "gen-levels: cannot read %s\n", documentPath.c_str());
        return false;
    }
    const size_t start = document.find(kTableStart);
    const size_t end = document.find(kTableEnd);
    if (start == std::string::npos || end == std::string::npos || end < start) {
        std::fprintf(stderr, "gen-levels: %s lacks the marker lines of the table of measures\n",
                     documentPath.c_str());
        return false;
    }
    document.replace(start, end + std::string(kTableEnd).size() - start, table);
    if (!WriteFileAtomic(documentPath, document)) {
        std::fprintf(stderr, "gen-levels: cannot write %s\n", documentPath.c_str());
        return false;
    }
    return true;
}
} // namespace

int main(int argc, char** argv) {
    if (argc < 2 || (argc > 2 && std::string(argv[2]) != "--simplify")) {
        std::fprintf(stderr, "usage: gen-levels REPOSITORY_ROOT [--simplify [MAP...]]\n");
        return 2;
    }
    SetLogSink([](const std::string&) {});
    const std::string root = argv[1];
    if (argc > 2 &&
        !SimplifyRuns(root + "/tools/levels/tours", std::vector<std::string>(argv + 3, argv + argc))) {
        return 1;
    }
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
    if (!WriteMeasures(tours, root + "/docs/levels.md")) {
        ++failures;
    }
    return failures == 0 ? 0 : 1;
}
