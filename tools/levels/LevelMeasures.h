#pragma once
// How the shipped maps compare, measured from their sources and reference runs:
//   Overlap     of two maps of the same size: of the cells either of them uses, the share that holds
//               the same kind of block in the same place in both. Kinds are what the racer meets:
//               every wall tile is one kind (a new coat of tiles makes no new map), Blank and the
//               decorations are nothing, and each special block is its own kind. Two maps built
//               on one idea share most of their cells; distinct maps share few.
//   Difficulty  of a map, from its reference run raced at 60 frames a second: the inputs it takes
//               (recorded events), its length, and its tightest window (of the run's moments, a
//               group of inputs less than 34 ms apart, the one that can move least and still
//               finish: the span of start times that work, in 16 ms steps up to 128 ms each way).
//               One score orders them: inputs + 2 per second + 1000 / window in milliseconds.
//   Cow seeds   a map with cows raced with its run at each cow seed: which ones reach the finish.
// Kept in one header so that gen-levels and the shipped-level tests measure the same way.
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/QmRaceSimulator.h"
#include "LevelBuilder.h"
#include "LevelSource.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

struct LevelDifficulty {
    int inputs = 0;
    int64_t lengthMs = 0;
    int64_t windowMs = 0;
    // The race time of the moment with the tightest window.
    int64_t windowAtMs = 0;
    bool finished = false;

    double Score() const {
        return inputs + 2.0 * static_cast<double>(lengthMs) / 1000.0 +
               1000.0 / static_cast<double>(std::max<int64_t>(windowMs, 8));
    }
};

class LevelMeasures {
public:
    static constexpr int64_t kWindowStep = 16;
    static constexpr int64_t kWindowReach = 128;
    static constexpr int64_t kMomentGap = 34;

    static bool HasCows(const LevelMap& map) {
        std::array<BlockId, 400> cells{};
        std::string error;
        if (!LevelSource::Cells(map, cells, error)) {
            return false;
        }
        return std::find(cells.begin(), cells.end(), Block::Enemy) != cells.end();
    }

    // What the racer meets in a cell: 1 for any wall tile, 0 for nothing, else the special block.
    static BlockId Kind(BlockId id) {
        if (id >= 1 && id <= 149) {
            return 1;
        }
        return id >= 150 && id <= 245 ? Block::Blank : id;
    }

    // The overlap of two maps as a share from 0 to 1 (0 for maps of different sizes).
    static double Overlap(const LevelMap& a, const LevelMap& b) {
        std::array<BlockId, 400> first{};
        std::array<BlockId, 400> second{};
        std::string error;
        if (a.size != b.size || !LevelSource::Cells(a, first, error) ||
            !LevelSource::Cells(b, second, error)) {
            return 0.0;
        }
        int used = 0;
        int same = 0;
        for (size_t i = 0; i < first.size(); ++i) {
            const BlockId a = Kind(first[i]);
            const BlockId b = Kind(second[i]);
            if (a != Block::Blank || b != Block::Blank) {
                ++used;
                same += a == b ? 1 : 0;
            }
        }
        return used == 0 ? 0.0 : static_cast<double>(same) / used;
    }

    // Races map m of a tour with a recording text; false when the map or the text cannot be read.
    static bool Race(const LevelTour& tour, size_t m, const std::string& run, uint32_t seed, float dt,
                     QmSimResult& result) {
        QmCoreEnvironmentManager world;
        QmSimOptions options;
        options.dt = dt;
        options.seed = seed;
        std::string error;
        if (!LevelBuilder::LoadIntoWorld(tour, m, world, error) || !options.inputs.ParseStrict(run, error)) {
            return false;
        }
        result = QmRaceSimulator::Run(world, options, nullptr);
        return true;
    }

    static bool Finishes(const LevelTour& tour, size_t m, const std::string& run, uint32_t seed = 1,
                         float dt = 1.0f / 60.0f) {
        QmSimResult result;
        return Race(tour, m, run, seed, dt, result) && result.outcome == QmSimResult::Finished;
    }

    // The cow seeds among 1..count at which the map's run reaches the finish.
    static std::vector<uint32_t> SeedsSurvived(const LevelTour& tour, size_t m, uint32_t count) {
        std::vector<uint32_t> survived;
        for (uint32_t seed = 1; seed <= count; ++seed) {
            if (Finishes(tour, m, tour.maps[m].run, seed)) {
                survived.push_back(seed);
            }
        }
        return survived;
    }

    static LevelDifficulty Difficulty(const LevelTour& tour, size_t m) {
        LevelDifficulty difficulty;
        QmRecording recording;
        std::string error;
        QmSimResult result;
        if (!recording.ParseStrict(tour.maps[m].run, error) ||
            !Race(tour, m, tour.maps[m].run, 1, 1.0f / 60.0f, result)) {
            return difficulty;
        }
        difficulty.inputs = static_cast<int>(recording.Size());
        difficulty.lengthMs = result.timeMs;
        difficulty.finished = result.outcome == QmSimResult::Finished;
        std::vector<std::pair<int64_t, int>> events(recording.Events().begin(), recording.Events().end());
        // Moments: inputs closer together than a player could tell apart move as one.
        std::vector<std::pair<size_t, size_t>> moments;
        for (size_t i = 0; i < events.size(); ++i) {
            if (moments.empty() || events[i].first - events[i - 1].first >= kMomentGap) {
                moments.emplace_back(i, i + 1);
            } else {
                moments.back().second = i + 1;
            }
        }
        const auto finishesShifted = [&](size_t moment, int64_t shift) {
            QmRecording shifted;
            for (size_t i = 0; i < events.size(); ++i) {
                const bool moved = i >= moments[moment].first && i < moments[moment].second;
                shifted.Add(events[i].first + (moved ? shift : 0), events[i].second);
            }
            return Finishes(tour, m, shifted.ToText());
        };
        difficulty.windowMs = 2 * kWindowReach;
        // The first moment starts the race during the countdown; it has all the time it wants.
        for (size_t k = 1; k < moments.size(); ++k) {
            const int64_t low = events[moments[k - 1].second - 1].first - events[moments[k].first].first;
            const int64_t high = k + 1 < moments.size() ? events[moments[k + 1].first].first -
                                                              events[moments[k].second - 1].first
                                                        : kWindowReach + 1;
            int64_t earliest = 0;
            while (earliest - kWindowStep > std::max(low, -kWindowReach - 1) &&
                   finishesShifted(k, earliest - kWindowStep)) {
                earliest -= kWindowStep;
            }
            int64_t latest = 0;
            while (latest + kWindowStep < std::min(high, kWindowReach + 1) &&
                   finishesShifted(k, latest + kWindowStep)) {
                latest += kWindowStep;
            }
            if (latest - earliest + kWindowStep < difficulty.windowMs) {
                difficulty.windowMs = latest - earliest + kWindowStep;
                difficulty.windowAtMs = events[moments[k].first].first;
            }
        }
        return difficulty;
    }
};
