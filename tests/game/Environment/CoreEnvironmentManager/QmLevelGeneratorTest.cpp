#include "Environment/CoreEnvironmentManager/QmLevelGenerator.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Platform/VeRandom.h"
#include "Support/LogCapture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <set>

namespace {
// The game's generator colours: 1 to 5, and the row of every coloured block recorded in order.
class RecordingWorld : public QmCoreEnvironmentManager {
public:
    BlockId RandomColourBlock() override { return Rand() % 5 + 1; }
    void SetBlock(int x, int y, BlockId id) override {
        if (id >= 1 && id <= 5) {
            pathRows.push_back(y);
        }
        QmCoreEnvironmentManager::SetBlock(x, y, id);
    }
    void ClearMap() override {
        pathRows.clear();
        QmCoreEnvironmentManager::ClearMap();
    }
    std::vector<int> pathRows;
};
} // namespace

TEST(QmLevelGeneratorTest, EveryStartHasAFinishThatFits) {
    for (int n : {10, 20}) {
        for (int sx = 0; sx < n; ++sx) {
            for (int sy = 0; sy < n; ++sy) {
                bool found = false;
                for (int fx = 0; fx < n && !found; ++fx) {
                    for (int fy = 1; fy <= n - 3 && !found; ++fy) {
                        found = QmLevelGenerator::FinishFits(sx, sy, fx, fy);
                    }
                }
                EXPECT_TRUE(found) << "start " << sx << "," << sy << " on " << n;
            }
        }
    }
}

TEST(QmLevelGeneratorTest, FinishRulesKeepItSidewaysAndFarEnough) {
    EXPECT_TRUE(QmLevelGenerator::FinishFits(0, 5, 5, 5));
    EXPECT_FALSE(QmLevelGenerator::FinishFits(0, 5, 4, 5)) << "closer than five cells";
    EXPECT_TRUE(QmLevelGenerator::FinishFits(3, 0, 3, 5)) << "straight below, five rows";
    EXPECT_TRUE(QmLevelGenerator::FinishFits(3, 0, 3, 6));
    EXPECT_FALSE(QmLevelGenerator::FinishFits(3, 0, 3, 7)) << "straight below only five or six rows";
    EXPECT_FALSE(QmLevelGenerator::FinishFits(3, 9, 3, 3)) << "never straight above";
    EXPECT_FALSE(QmLevelGenerator::FinishFits(0, 0, 5, 5)) << "not on a diagonal";
    EXPECT_FALSE(QmLevelGenerator::FinishFits(0, 0, 3, 5)) << "steeper than one in one";
    EXPECT_FALSE(QmLevelGenerator::FinishFits(0, 0, 6, 3)) << "far away: the sideways part must lead by four";
    EXPECT_TRUE(QmLevelGenerator::FinishFits(0, 0, 7, 3));
}

TEST(QmLevelGeneratorTest, GeneratedMapsKeepTheirInvariantsOverManySeeds) {
    LogCapture quiet;
    RecordingWorld world;
    for (int blockSize : {64, 32}) {
        for (uint32_t seed = 1; seed <= 3000; ++seed) {
            world.SetBlockSize(blockSize);
            SeedRand(seed);
            world.GenerateLevel();
            const int n = world.mapSize;
            int starts = 0;
            int finishes = 0;
            for (int x = 0; x < 20; ++x) {
                for (int y = 0; y < 20; ++y) {
                    const BlockId id = world.GetBlock(x, y);
                    const bool inside = x < n && y < n;
                    ASSERT_TRUE(id == 0 || (inside && ((id >= 1 && id <= 5) || id == 254 || id == 255)))
                        << "seed " << seed << ": id " << id << " at " << x << "," << y;
                    if (id == Block::Start) {
                        ++starts;
                        EXPECT_FLOAT_EQ(world.startX, x);
                        EXPECT_FLOAT_EQ(world.startY, y);
                    }
                    if (id == Block::Finish) {
                        ++finishes;
                        ASSERT_GE(y, 1) << "seed " << seed;
                        ASSERT_LE(y, n - 3) << "seed " << seed;
                    }
                }
            }
            ASSERT_EQ(starts, 1) << "seed " << seed;
            ASSERT_EQ(finishes, 1) << "seed " << seed;

            // The path never climbs more than one row from one block to the next.
            for (size_t i = 1; i < world.pathRows.size(); ++i) {
                ASSERT_GE(world.pathRows[i], world.pathRows[i - 1] - 1) << "seed " << seed;
            }
        }
    }
}

// The world's own colour choice is the base colour 1; the generator reports where it put Start
// and Finish.
TEST(QmLevelGeneratorTest, ThePlainWorldBuildsInTheBaseColourAndReportsStartAndFinish) {
    LogCapture log;
    QmCoreEnvironmentManager world;
    SeedRand(11);
    world.GenerateLevel();
    EXPECT_EQ(std::set<BlockId>(world.blocks.begin(), world.blocks.end()),
              (std::set<BlockId>{Block::Blank, 1, Block::Start, Block::Finish}));
    const long finish =
        std::find(world.blocks.begin(), world.blocks.end(), Block::Finish) - world.blocks.begin();
    char expected[160];
    std::snprintf(expected, sizeof expected,
                  "Level Generation Started.\n- Start placed at %f %f and Finish placed at %f %f.\n",
                  static_cast<double>(world.startX), static_cast<double>(world.startY),
                  static_cast<double>(finish / 20), static_cast<double>(finish % 20));
    EXPECT_EQ(log.all, std::string(expected) + "Level Generation Completed.\n");
}
