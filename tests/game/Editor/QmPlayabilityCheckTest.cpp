// The playability check: why a map cannot be finished, a route on every shipped map, and the
// check as a job beside the frames.
#include "Editor/QmPlayabilityCheck.h"

#include "Platform/VeLog.h"
#include "Platform/VeTime.h"
#include "game/Levels/ShippedTourFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
using Grid = std::array<BlockId, QmCoreEnvironmentManager::kCellCount>;

void Set(Grid& grid, int x, int y, BlockId id) {
    grid[static_cast<size_t>(x * 20 + y)] = id;
}

// A 10 x 10 map: a floor along row 9, Start on the left, Finish on the right.
Grid Corridor() {
    Grid grid{};
    for (int x = 0; x < 10; ++x) {
        Set(grid, x, 9, 1);
    }
    Set(grid, 1, 8, Block::Start);
    Set(grid, 8, 8, Block::Finish);
    return grid;
}

} // namespace

TEST(QmPlayabilityCheckTest, SaysWhyAMapCannotBeFinished) {
    Grid grid = Corridor();
    const auto found = QmPlayabilityCheck::Find(grid, 64);
    ASSERT_EQ(found.outcome, QmPlayabilityCheck::Outcome::Finishable);
    EXPECT_GT(found.timeMs, 0);
    EXPECT_GE(found.path.size(), 2u);
    EXPECT_GT(found.path.back().first, found.path.front().first) << "the route runs right";

    Set(grid, 8, 8, Block::Blank);
    EXPECT_EQ(QmPlayabilityCheck::Find(grid, 64).outcome, QmPlayabilityCheck::Outcome::NoFinish);
    grid = Corridor();
    Set(grid, 1, 8, Block::Blank);
    EXPECT_EQ(QmPlayabilityCheck::Find(grid, 64).outcome, QmPlayabilityCheck::Outcome::NoStart);

    // The Finish walled in on every side.
    grid = Corridor();
    for (int y = 0; y < 9; ++y) {
        Set(grid, 7, y, 2);
    }
    EXPECT_EQ(QmPlayabilityCheck::Find(grid, 64).outcome, QmPlayabilityCheck::Outcome::NoRoute);

    EXPECT_EQ(QmPlayabilityCheck::RoundedSeconds(200), 1);
    EXPECT_EQ(QmPlayabilityCheck::RoundedSeconds(12600), 13);
}

TEST(QmPlayabilityCheckTest, EveryShippedMapIsProvedByItsBestRunAtOnce) {
    const VeLogSink previous = SetLogSink([](const std::string&) {});
    const std::vector<shipped_tours::ShippedMap> maps = shipped_tours::ShippedMaps();
    SetLogSink(previous);
    ASSERT_GE(maps.size(), 10u);
    for (const shipped_tours::ShippedMap& map : maps) {
        ASSERT_FALSE(map.bestRun.empty()) << map.path;
        const auto report =
            QmPlayabilityCheck::Find(map.contents.blocks, map.contents.blockSize, {map.bestRun});
        EXPECT_EQ(report.outcome, QmPlayabilityCheck::Outcome::Finishable) << map.path;
        EXPECT_EQ(report.statesSearched, 0u) << map.path << ": the known run was enough";
        EXPECT_GT(report.path.size(), 2u);
    }
    // A known run that no longer finishes leaves the answer to the search.
    Grid grid = Corridor();
    const auto found = QmPlayabilityCheck::Find(grid, 64, {"0:4"});
    EXPECT_EQ(found.outcome, QmPlayabilityCheck::Outcome::Finishable);
    EXPECT_GT(found.statesSearched, 0u);
}

TEST(QmPlayabilityCheckTest, RunsAsAJobWithoutTouchingTheSharedClock) {
    int64_t now = 5000;
    SetTimeSource([&now] { return now; });
    QmPlayabilityCheck check;
    check.Start(Corridor(), 64);
    QmPlayabilityCheck::Report report;
    int polls = 0;
    while (!check.Poll(report)) {
        EXPECT_EQ(GetTimeMs(), now) << "the search's clock is its own thread's";
        ++polls;
        ASSERT_LT(polls, 2000000);
    }
    SetTimeSource(nullptr);
    EXPECT_EQ(report.outcome, QmPlayabilityCheck::Outcome::Finishable);
    EXPECT_FALSE(check.Running());
    EXPECT_FALSE(check.Poll(report)) << "a report is handed over once";

    // A check stopped midway reports nothing.
    check.Start(Corridor(), 64);
    check.Stop();
    EXPECT_FALSE(check.Poll(report));
}
