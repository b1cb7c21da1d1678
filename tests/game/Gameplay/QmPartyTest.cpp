// Party play: the Versus and Marathon rankings with their ties, the turns, and the Marathon's
// draw of three maps from the tours on disk.
#include "Gameplay/QmParty.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Platform/VeFiles.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

namespace {
// Appending rather than concatenating: GCC 12 misreads the concatenation at -O2.
std::string Named(const char* prefix, size_t number) {
    std::string name = prefix;
    name += std::to_string(number);
    return name;
}

QmParty Party(int type, int players) {
    QmParty party;
    party.SetType(type);
    for (int i = 0; i < players; ++i) {
        EXPECT_TRUE(party.AddPlayer(Named("P", static_cast<size_t>(i) + 1), i));
    }
    return party;
}

// A run's outcome as one line: "next map", or the time ranked, its rank and whether more players follow.
std::string Describe(const QmParty::RunOutcome& run) {
    if (run.nextMap) {
        return "next map";
    }
    return std::to_string(run.rankedTime) + " ranked " + std::to_string(run.rank) +
           (run.morePlayers ? ", more players" : ", the end");
}

// Tours on disk: one per entry of sizes, each map of the given block size ("32L" a locked
// 32-pixel map).
class DrawWorld {
public:
    explicit DrawWorld(const std::vector<std::vector<std::string>>& sizes) {
        for (size_t t = 0; t < sizes.size(); ++t) {
            world.tours.emplace_back();
            world.tourFolders.push_back(Named("T", t));
            world.tourLevels.emplace_back();
            CreateFolder(data.GameFolder() + "/Maps/" + Named("T", t));
            world.tourIndex = static_cast<int>(t);
            for (size_t m = 0; m < sizes[t].size(); ++m) {
                const std::string file = Named("M", m) + ".map";
                world.tourLevels.back().push_back(file);
                world.blockSize = sizes[t][m][0] == '3' ? 32 : 64;
                world.locked = sizes[t][m].back() == 'L';
                world.WriteMap("Maps/" + Named("T", t) + "/" + file);
            }
        }
    }
    TempUserData data;
    QmCoreEnvironmentManager world;
};
} // namespace

TEST(QmPartyTest, VersusRanksEachTurnAndEqualTimesKeepTheEarlierPlayerFirst) {
    QmParty party = Party(QmParty::Versus, 3);
    QmCoreEnvironmentManager world;
    ASSERT_TRUE(party.PrepareParty(false, false, world, 1));
    EXPECT_EQ(Describe(party.RunFinished(61234)), "61234 ranked 1, more players");
    EXPECT_EQ(party.Current()->name, "P2");
    EXPECT_EQ(Describe(party.RunFinished(61234)), "61234 ranked 2, more players")
        << "a tie after the earlier";
    EXPECT_EQ(Describe(party.RunFinished(50000)), "50000 ranked 1, the end");
    ASSERT_EQ(party.ShownResults().size(), 3u);
    EXPECT_EQ(party.ShownResults()[0].name, "P3");
    EXPECT_EQ(party.ShownResults()[1].name, "P1");
    EXPECT_EQ(party.ShownResults()[2].name, "P2");
    EXPECT_TRUE(party.PartyResults().empty());
    EXPECT_FALSE(party.Prepared());

    // The next game starts afresh with the first player.
    ASSERT_TRUE(party.PrepareParty(false, false, world, 1));
    EXPECT_EQ(party.CurrentPlayer(), 0u);
    EXPECT_EQ(Describe(party.RunFinished(70000)), "70000 ranked 1, more players");
}

TEST(QmPartyTest, MarathonAddsThreeMapsBeforeRankingTheTotal) {
    DrawWorld disk({{"64", "64", "64", "64"}});
    QmParty party = Party(QmParty::Marathon, 2);
    ASSERT_TRUE(party.PrepareParty(false, false, disk.world, 7));
    ASSERT_EQ(party.Draw().size(), 3u);
    const std::vector<QmPartyMap> draw = party.Draw();
    EXPECT_EQ(Describe(party.RunFinished(20000)), "next map");
    EXPECT_EQ(Describe(party.RunFinished(30000)), "next map");
    EXPECT_EQ(Describe(party.RunFinished(40000)), "90000 ranked 1, more players") << "the total";

    // The second player keeps the draw and starts from nothing.
    ASSERT_TRUE(party.PrepareParty(false, false, disk.world, 99));
    EXPECT_EQ(party.TotalTime(), 0);
    EXPECT_EQ(party.LevelsPlayed(), 0);
    ASSERT_EQ(party.Draw().size(), 3u);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(party.Draw()[i].level, draw[i].level);
    }
    party.RunFinished(30000);
    party.RunFinished(30000);
    EXPECT_EQ(Describe(party.RunFinished(30000)), "90000 ranked 2, the end")
        << "an equal total goes after the first player";
    EXPECT_EQ(party.ShownResults()[1].name, "P2");
    EXPECT_EQ(QmHighscoreList::TimeValue(party.ShownResults()[1].time), 90000);
}

TEST(QmPartyTest, TheDrawTakesThreeDistinctMapIndicesOfTheAllowedSizesOrFails) {
    const std::vector<std::vector<std::string>> sizes = {{"64", "32", "64", "32", "32L"}, {"32", "64", "32"}};
    DrawWorld disk(sizes);
    QmParty party = Party(QmParty::Marathon, 2);
    party.SetAllowedSizes(true, false); // small maps only: 64-pixel blocks and the locked 32
    for (uint32_t seed = 1; seed < 20; ++seed) {
        ASSERT_TRUE(party.PrepareParty(false, true, disk.world, seed));
        std::vector<int> levels;
        for (const QmPartyMap& map : party.Draw()) {
            EXPECT_NE(sizes[static_cast<size_t>(map.tour)][static_cast<size_t>(map.level)], "32")
                << "a large map drawn although only small ones are allowed";
            levels.push_back(map.level);
        }
        ASSERT_EQ(levels.size(), 3u);
        EXPECT_TRUE(levels[0] != levels[1] && levels[1] != levels[2] && levels[0] != levels[2]);
    }

    // It fails when fewer than three indices are allowed: here only 0 and 2 qualify.
    DrawWorld few({{"64", "32", "64"}, {"32"}});
    QmParty fresh = Party(QmParty::Marathon, 2);
    fresh.SetAllowedSizes(true, false);
    EXPECT_FALSE(fresh.PrepareParty(false, false, few.world, 3));
    EXPECT_EQ(fresh.Draw().size(), 2u) << "the maps drawn so far stay";
    EXPECT_FALSE(fresh.Prepared());

    DrawWorld empty({});
    EXPECT_FALSE(fresh.PrepareParty(false, true, empty.world, 3)) << "no tours: no draw, no crash";
}
