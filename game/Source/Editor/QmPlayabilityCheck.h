#pragma once
// Whether a map can be finished: a search for a run from Start to Finish through the race's own
// frame update (QmRouteSearch), on a copy of the map, as a job on the worker pool so that the
// editor's frames never wait for it.
//
// Contract:
// - Start copies the map and queues the search; a check still running is stopped first. Poll
//   hands over each finished report once. Destroying the check stops and waits for its job.
// - The search runs on a clock of its worker's own; it seeds only the race's random stream.
// - The search runs on a worker of the check's own, made at the first Start and kept while the
//   check lives: another module's pool (the network's is remade with its connections) could
//   drop or delay the job, and Stop would wait for it.
// - Runs already known to finish the map (its best run) are raced first: one that still finishes
//   answers at once; the search runs only when none does.
// - Find runs the same check on the calling thread (the shared-maps upload uses it too).
#include "Environment/CoreEnvironmentManager/QmBlocks.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Threads/VtJobHolder.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

class QmPlayabilityCheck {
public:
    enum class Outcome { Finishable, NoStart, NoFinish, NoRoute, Stopped };

    struct Report {
        Outcome outcome = Outcome::NoRoute;
        // The run's race time.
        int64_t timeMs = 0;
        // The racer's top-left corner (pixels at blockSize) along the run found.
        std::vector<std::pair<float, float>> path;
        int32_t blockSize = QmCoreEnvironmentManager::kLargeBlockSize;
        size_t statesSearched = 0;
    };

    // The search gives up after this many states (some seconds on a hard map, in the background).
    static constexpr size_t kStateBudget = 200000;
    // and when a run takes longer than this in the race.
    static constexpr float kRaceSeconds = 90.0f;

    void Start(const std::array<BlockId, QmCoreEnvironmentManager::kCellCount>& blocks, int32_t blockSize,
               const std::vector<std::string>& knownRuns = {});
    bool Running() const;
    // True once for each finished check, with its report.
    bool Poll(Report& report);
    // Stops a running check and waits for it (nothing is reported for it).
    void Stop();

    static Report Find(const std::array<BlockId, QmCoreEnvironmentManager::kCellCount>& blocks,
                       int32_t blockSize, const std::vector<std::string>& knownRuns = {},
                       const std::atomic<bool>* cancel = nullptr);
    // "Finishable in about N s" rounds the run's time to whole seconds (at least 1).
    static int RoundedSeconds(int64_t timeMs);

private:
    // Written by the running check, read once it has finished.
    Report finished;
    VtJobHolder holder; // after what its work writes: it stops first
};
