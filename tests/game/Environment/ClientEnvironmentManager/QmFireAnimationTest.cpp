#include "Environment/ClientEnvironmentManager/QmFireAnimation.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"

#include "Platform/VeRandom.h"
#include "Platform/VeTime.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

std::vector<uint32_t> PixelsOf(const VeSurface& surface) {
    return std::vector<uint32_t>(surface.Pixels(), surface.Pixels() + surface.pixelCount);
}

class FireClock : public ::testing::Test {
protected:
    void SetUp() override {
        SetTimeSource([this] { return now; });
        SeedRand(VeRandomStream::Cosmetic, 7);
    }
    void TearDown() override { SetTimeSource(nullptr); }

    int64_t now = 5000;
};

} // namespace

TEST(QmFireAnimationCellTest, NeighbouringCellsShowDifferentFramesInADiagonalPattern) {
    for (int mapSize : {10, 20}) {
        for (int x = 0; x < mapSize; ++x) {
            for (int y = 0; y + 1 < mapSize; ++y) {
                EXPECT_NE(QmFireAnimation::FrameForCell(mapSize, x, y),
                          QmFireAnimation::FrameForCell(mapSize, x, y + 1));
            }
        }
    }
}

TEST(QmFireAnimationCellTest, FlamesAreRedWithAnOrangeCoreStandingOnTheBottomEdge) {
    SeedRand(VeRandomStream::Cosmetic, 3);
    for (int size : {64, 32, 16}) {
        VeSurface surface(size, size);
        QmFireAnimation::DrawFlames(surface, size);
        std::set<uint32_t> colours(surface.Pixels(), surface.Pixels() + surface.pixelCount);
        EXPECT_EQ(colours, (std::set<uint32_t>{kColourKey, QmFireAnimation::kFlame, QmFireAnimation::kCore}))
            << size;
        // Every column that burns reaches the bottom row, and the top row stays clear of the core.
        for (int x = 0; x < size; ++x) {
            bool burns = false;
            for (int y = 0; y < size; ++y) {
                burns = burns || surface.GetXY(x, y) != kColourKey;
            }
            if (burns) {
                EXPECT_NE(surface.GetXY(x, size - 1), kColourKey) << size << " column " << x;
            }
            EXPECT_NE(surface.GetXY(x, 0), QmFireAnimation::kCore);
        }
    }
}

TEST_F(FireClock, RedrawsOneFrameAtATimeAtMostEvery7Milliseconds) {
    QmFireAnimation fire;
    fire.DrawAll();
    const std::vector<uint32_t> before = PixelsOf(*fire.Frame(0).Surface(64));
    const std::vector<uint32_t> otherBefore = PixelsOf(*fire.Frame(1).Surface(64));

    fire.Update(64, false, false);
    EXPECT_NE(PixelsOf(*fire.Frame(0).Surface(64)), before);
    EXPECT_EQ(PixelsOf(*fire.Frame(1).Surface(64)), otherBefore) << "one frame per update";
    // The frame whose turn is next after each update, milliseconds after the one before.
    std::vector<int> turns = {fire.NextFrame()};
    const auto update = [&](int64_t after, int size, bool force, bool dead) {
        now += after;
        fire.Update(size, force, dead);
        turns.push_back(fire.NextFrame());
    };
    update(6, 64, false, false);  // too soon
    update(1, 64, false, false);  // 7 ms
    update(100, 64, false, true); // held while the racer is dead
    update(0, 64, true, true);    // a forced redraw keeps the turn
    EXPECT_EQ(fire.LastRedraw(), now);
    for (int i = 0; i < 4; ++i) {
        update(7, 32, false, false); // wrapping from the sixth frame to the first
    }
    EXPECT_EQ(turns, (std::vector<int>{1, 1, 2, 2, 2, 3, 4, 5, 0}));
}

TEST(QmFireAnimationCellTest, FlamesLeaveTheRaceAlone) {
    // The same seed makes the same level whether or not flames were drawn between the seeding and
    // the level (as a frame would between two race steps). The cipher's filler has a stream of its
    // own too: QmTextCipherTest seeds it alone.
    auto level = [](bool busy) {
        QmCoreEnvironmentManager world;
        world.SetBlockSize(32);
        SeedRand(9);
        if (busy) {
            VeSurface surface(64, 64);
            QmFireAnimation::DrawFlames(surface, 64);
        }
        world.GenerateLevel();
        return world.blocks;
    };
    EXPECT_EQ(level(false), level(true));
}
