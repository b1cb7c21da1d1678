#include "Editor/QmPlayabilityCheck.h"

#include "Gameplay/QmRouteSearch.h"

#include <algorithm>

void QmPlayabilityCheck::Start(const std::array<BlockId, QmCoreEnvironmentManager::kCellCount>& blocks,
                               int32_t blockSize, const std::vector<std::string>& knownRuns) {
    Stop();
    holder.Start([this, blocks, blockSize, knownRuns](const std::atomic<bool>& cancel) {
        finished = Find(blocks, blockSize, knownRuns, &cancel);
    });
}

bool QmPlayabilityCheck::Running() const {
    return holder.Busy();
}

bool QmPlayabilityCheck::Poll(Report& report) {
    if (!holder.Take()) {
        return false;
    }
    report = std::move(finished);
    return report.outcome != Outcome::Stopped;
}

void QmPlayabilityCheck::Stop() {
    holder.Stop();
}

QmPlayabilityCheck::Report
QmPlayabilityCheck::Find(const std::array<BlockId, QmCoreEnvironmentManager::kCellCount>& blocks,
                         int32_t blockSize, const std::vector<std::string>& knownRuns,
                         const std::atomic<bool>* cancel) {
    Report report;
    report.blockSize = blockSize == QmCoreEnvironmentManager::kSmallBlockSize
                           ? QmCoreEnvironmentManager::kSmallBlockSize
                           : QmCoreEnvironmentManager::kLargeBlockSize;
    QmCoreEnvironmentManager world;
    world.SetBlockSize(report.blockSize);
    world.blocks = blocks;
    world.gatesOpen = false;
    bool start = false;
    bool finish = false;
    // The last Start in reading order counts, as when the map is loaded for a race.
    for (int x = 0; x < world.mapSize; ++x) {
        for (int y = 0; y < world.mapSize; ++y) {
            const BlockId id = world.GetBlock(x, y);
            if (id == Block::Start) {
                world.startX = static_cast<float>(x);
                world.startY = static_cast<float>(y);
                start = true;
            } else if (id == Block::Finish) {
                finish = true;
            }
        }
    }
    if (!start) {
        report.outcome = Outcome::NoStart;
        return report;
    }
    if (!finish) {
        report.outcome = Outcome::NoFinish;
        return report;
    }
    QmRouteOptions options;
    options.maxStates = kStateBudget;
    options.maxSeconds = kRaceSeconds;
    options.cancel = cancel;
    QmRouteResult route;
    for (const std::string& run : knownRuns) {
        route = QmRouteSearch::Replay(world, run, options);
        if (route.found) {
            break;
        }
        world.blocks = blocks; // the race may have opened gates
    }
    if (!route.found) {
        world.blocks = blocks;
        route = QmRouteSearch::Find(world, options);
    }
    report.statesSearched = route.expanded;
    if (cancel != nullptr && cancel->load() && !route.found) {
        report.outcome = Outcome::Stopped;
        return report;
    }
    report.outcome = route.found ? Outcome::Finishable : Outcome::NoRoute;
    report.timeMs = route.timeMs;
    report.path = route.path;
    return report;
}

int QmPlayabilityCheck::RoundedSeconds(int64_t timeMs) {
    return std::max(1, static_cast<int>((timeMs + 500) / 1000));
}
