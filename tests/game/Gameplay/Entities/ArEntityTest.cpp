// The racer's movement against the grid: gravity and jumps on both grid sizes, walls, floors and
// ceilings, and the block effects a racer (or the ghost) takes on its way.
#include "game/Gameplay/GameplayTestSupport.h"

#include <gtest/gtest.h>

using namespace gameplay_test;

namespace {
const std::vector<std::string> kFlat = OnFloor({"S........."});

std::vector<std::string> Large(const std::vector<std::string>& rows) {
    // The same layout on a 20 x 20 grid: each character becomes a 2 x 2 block of cells, except the
    // Start and specials, which take the bottom-left cell alone.
    std::vector<std::string> large;
    for (const std::string& row : rows) {
        std::string top;
        std::string bottom;
        for (char c : row) {
            const bool solid = c == '#' || c == '1';
            top += solid ? std::string(2, c) : std::string("..");
            bottom += std::string(1, c) + (solid ? c : '.');
        }
        large.push_back(top);
        large.push_back(bottom);
    }
    return large;
}

} // namespace

// A jump from the ground of a running race; before the race runs a racer neither jumps nor walks, and
// jump held on in the air does nothing until the racer has landed.
TEST(ArEntityTest, JumpRisesAbout95PixelsOnLargeCellsAndHalfThatOnSmallOnesOnlyFromTheGround) {
    struct Grid {
        bool small;
        float impulse;
        float gravity;
    };
    for (const float dt : {1.0f / 1000.0f, 1.0f / 60.0f}) {
        for (const Grid grid : {Grid{false, 534.0f, 1500.0f}, Grid{true, 267.0f, 750.0f}}) {
            RaceRig rig(grid.small ? Large(kFlat) : kFlat);
            rig.Racer().jumpHeld = 1;
            rig.Hold(&ArPlayer::rightHeld, 1, dt); // settles on the floor
            EXPECT_FLOAT_EQ(rig.Racer().x, 0.0f);
            rig.race->running = 1;
            const float start = rig.Racer().y;
            rig.Hold(&ArPlayer::jumpHeld, 1, dt);
            EXPECT_EQ(rig.Racer().inAir, 1);
            EXPECT_FLOAT_EQ(rig.Racer().verticalSpeed, -grid.impulse + grid.gravity * dt);
            float top = start;
            for (int i = 0; i < static_cast<int>(1.5f / dt); ++i) {
                rig.Racer().jumpHeld = i < 20 ? 1 : 0;
                rig.Core(1, dt);
                top = std::min(top, rig.Racer().y);
            }
            // The exact rise (534^2 / (2 x 1500) = 95.05 on large cells) less about half a frame's travel.
            const float rise = grid.impulse * grid.impulse / (2.0f * grid.gravity);
            EXPECT_NEAR(start - top, rise - grid.impulse * dt / 2.0f, 0.5f) << "dt " << dt;
            EXPECT_EQ(rig.audio.Count("Jump"), 1);
            EXPECT_FLOAT_EQ(rig.Racer().y, start) << "lands back on the floor";
            EXPECT_EQ(rig.Racer().inAir, 0);
        }
    }
}

TEST(ArEntityTest, AFallingRacerNeverPassesAOneCellFloorEvenAtOneFramePerSecond) {
    for (const bool large : {false, true}) {
        std::vector<std::string> rows = {
            "S.........", "..........", "..........", "..........", "..........",
            "##########", "..........", "..........", "..........", "..........",
        };
        RaceRig rig(large ? Large(rows) : rows);
        const float cell = static_cast<float>(rig.world.blockSize);
        const float floorTop = 5.0f * (large ? 2.0f : 1.0f) * cell;
        float previous = rig.Racer().y;
        for (int i = 0; i < 12; ++i) {
            rig.Core(1, 1.0f);
            EXPECT_LT(rig.Racer().y - previous, cell) << "less than a cell per frame";
            EXPECT_LE(rig.Racer().y, floorTop - cell);
            previous = rig.Racer().y;
        }
        EXPECT_FLOAT_EQ(rig.Racer().y, floorTop - cell) << "rests on the floor";
        EXPECT_EQ(rig.Racer().verticalContact, 1);
        EXPECT_EQ(rig.Racer().groundBlock, 2);
    }
}

TEST(ArEntityTest, AWallSnapsTheRacerToItsColumnAndHitPlaysOnce) {
    RaceRig rig(OnFloor({"S..#......"}));
    rig.race->running = 1;
    rig.Hold(&ArPlayer::rightHeld, 90);
    EXPECT_FLOAT_EQ(rig.Racer().x, 128.0f);
    EXPECT_EQ(rig.Racer().horizontalContact, 1);
    EXPECT_FLOAT_EQ(rig.Racer().movedX, 0.0f);
    EXPECT_EQ(rig.audio.Count("Hit"), 1);
    // Walking away clears the contact; coming back plays it again.
    rig.Hold(&ArPlayer::leftHeld, 10);
    EXPECT_EQ(rig.Racer().horizontalContact, 0);
    rig.Hold(&ArPlayer::rightHeld, 30);
    EXPECT_EQ(rig.audio.Count("Hit"), 2);
    // The play-field border is a wall too.
    rig.Hold(&ArPlayer::leftHeld, 60);
    EXPECT_FLOAT_EQ(rig.Racer().x, 0.0f);
    EXPECT_EQ(rig.audio.Count("Hit"), 3);
}

TEST(ArEntityTest, ACeilingPlaysRoofHitAndKeepsTheUpwardSpeed) {
    RaceRig rig(OnFloor({"##########", "..........", "S........."}));
    rig.Core(1); // settles on the floor
    rig.race->running = 1;
    rig.Hold(&ArPlayer::jumpHeld, 1);
    for (int frame = 0; rig.audio.Count("RoofHit") == 0 && frame < 60; ++frame) {
        rig.Core(1);
    }
    ASSERT_EQ(rig.audio.Count("RoofHit"), 1);
    EXPECT_LT(rig.Racer().verticalSpeed, 0.0f) << "the upward speed stays";
    EXPECT_EQ(rig.Racer().inAir, 1);
    EXPECT_FLOAT_EQ(rig.Racer().y, 448.0f) << "snapped under the ceiling";
    EXPECT_EQ(rig.Racer().groundBlock, 0) << "no ground under a roof";
    // Pressed against the ceiling until gravity turns the speed; RoofHit does not repeat.
    rig.Core(60);
    EXPECT_EQ(rig.audio.Count("RoofHit"), 1);
    EXPECT_FLOAT_EQ(rig.Racer().y, 512.0f);
    EXPECT_EQ(rig.Racer().inAir, 0);
}

TEST(ArEntityTest, TwoSpeedUpCellsInOneStepAreBothTaken) {
    RaceRig rig(OnFloor({"S.UU......"}));
    rig.Core(1); // settles on the floor
    rig.race->running = 1;
    rig.Racer().x = 150.0f; // one step away from straddling both pickups
    rig.Hold(&ArPlayer::rightHeld, 1);
    EXPECT_EQ(rig.world.GetBlock(2, 8), Block::Blank);
    EXPECT_EQ(rig.world.GetBlock(3, 8), Block::Blank);
    EXPECT_EQ(rig.audio.Count("SpeedUp"), 2);
    // A speed-up is set, not multiplied: the racer now covers 10 pixels per 60th of a second.
    const float before = rig.Racer().x;
    rig.Hold(&ArPlayer::rightHeld, 1);
    EXPECT_NEAR(rig.Racer().x - before, 10.0f, 0.001f);
}

TEST(ArEntityTest, PickupsChangeTheRacerTheMapAndTheRace) {
    RaceRig rig(OnFloor({"SJVDV.KG.."}));
    rig.Core(1); // settles on the floor
    rig.race->running = 1;
    ArPlayer& racer = rig.Racer();
    for (int i = 0; i < 120 && racer.x < 380.0f; ++i) {
        rig.Hold(&ArPlayer::rightHeld, 1);
    }
    EXPECT_FLOAT_EQ(racer.jumpImpulse, 1004.0f);
    EXPECT_FALSE(rig.race->flip) << "two Flip Vision pickups cancel";
    EXPECT_TRUE(rig.race->confusion);
    EXPECT_EQ(rig.audio.sounds,
              (std::vector<std::string>{"SuperJump", "FlipScreen", "Confusion", "FlipScreen", "OpenGates"}));
    std::vector<BlockId> row;
    for (int c = 0; c < 10; ++c) {
        row.push_back(rig.world.GetBlock(c, 8));
    }
    EXPECT_EQ(row, (std::vector<BlockId>{Block::Start, 0, 0, 0, 0, 0, 0, 0, 0, 0}))
        << "pickups, key and gate gone";
    EXPECT_FALSE(rig.world.gatesOpen) << "gates open for the ghost only";
    // The bigger impulse: a jump now rises about 1004^2 / 3000 = 336 pixels.
    const float floorY = racer.y;
    racer.jumpHeld = 1;
    float top = floorY;
    for (int i = 0; i < 90; ++i) {
        rig.Core(1);
        top = std::min(top, racer.y);
    }
    EXPECT_NEAR(floorY - top, 336.0f - 1004.0f / 120.0f, 1.0f);
}

TEST(ArEntityTest, TheGhostOpensGatesOnlyForItselfAndLeavesTheMapAlone) {
    RaceRig rig(OnFloor({"SK.UG....."}));
    ArPlayer& ghost = *rig.race->Ghost();
    ArPlayer& racer = rig.Racer();
    rig.race->running = 1;
    for (int i = 0; i < 120; ++i) {
        ghost.rightHeld = 1;
        ghost.UpdateRacer();
        ghost.ClearInput();
        rig.race->CoreUpdate(1.0f / 60.0f);
    }
    EXPECT_TRUE(rig.world.gatesOpen);
    EXPECT_EQ(rig.world.GetBlock(1, 8), Block::RedGateKey) << "the key stays for the ghost";
    EXPECT_GT(ghost.x, 4.0f * 64.0f) << "the ghost passed the gate";
    EXPECT_FLOAT_EQ(racer.x, 0.0f) << "the racer stands where it was";
    EXPECT_FLOAT_EQ(ghost.speed, 600.0f);
    EXPECT_EQ(rig.world.GetBlock(3, 8), Block::SpeedUp) << "the ghost takes no pickup away";
    EXPECT_EQ(rig.audio.sounds.size(), 0u) << "the ghost is silent";
    // The steered racer meets the gate as a wall although the ghost opened it.
    racer.x = 128.0f;
    rig.Hold(&ArPlayer::rightHeld, 60);
    EXPECT_FLOAT_EQ(racer.x, 192.0f);
    EXPECT_EQ(rig.world.GetBlock(4, 8), Block::RedGate);
}

TEST(ArEntityTest, TheFinishNeedsTheInsetOverlap) {
    for (const bool large : {false, true}) {
        // The Finish cell's left edge lies at x = 256 on both grids.
        const std::vector<std::string> rows = OnFloor({"....F....."});
        RaceRig rig(large ? Large(rows) : rows);
        const float cell = static_cast<float>(rig.world.blockSize);
        const float inset = large ? 10.0f : 20.0f;
        ArPlayer& racer = rig.Racer();
        racer.y = 512.0f + (large ? cell : 0.0f);
        // Touching either edge, or overlapping by exactly the inset, is not yet the finish.
        for (const auto& [x, reached] :
             std::vector<std::pair<float, int>>{{256.0f - cell, 0},
                                                {256.0f - cell + inset, 0},
                                                {256.0f - cell + inset + 0.5f, 1},
                                                {256.0f + cell, 0},
                                                {256.0f + cell - inset, 0},
                                                {256.0f + cell - inset - 0.5f, 1}}) {
            rig.race->finishReached = 0;
            racer.x = x;
            racer.Move(x, racer.y, 0.0f, true);
            EXPECT_EQ(rig.race->finishReached, reached) << "x " << x << (large ? " on large cells" : "");
        }
    }
}

TEST(ArEntityTest, FireKillsOnlyWhereItsImageIsNotTheColourKey) {
    RaceRig rig(OnFloor({"S...f....."}));
    ArPlayer& racer = rig.Racer();
    racer.x = 256.0f;
    racer.y = 512.0f;
    // An image without a single flame pixel never burns, even over the whole cell.
    rig.drawer.fire.assign(64 * 64, 0xFFFF00FFu);
    racer.Move(racer.x, racer.y, 0.0f, true);
    EXPECT_EQ(racer.active, 1);
    // Flames in the bottom half of the cell only: above the cell, overlapping its transparent top
    // half, the racer lives; down into the flames it burns.
    std::fill(rig.drawer.fire.begin() + 32 * 64, rig.drawer.fire.end(), 0xFFFF2000u);
    racer.y = 512.0f - 33.0f;
    racer.Move(racer.x, racer.y, 0.0f, true);
    EXPECT_EQ(racer.active, 1);
    EXPECT_EQ(rig.audio.Count("Fire"), 0);
    racer.Move(racer.x, 512.0f - 20.0f, 0.0f, true);
    EXPECT_EQ(racer.active, 0);
    EXPECT_EQ(rig.audio.Count("Fire"), 1);
}

TEST(ArEntityTest, CollidesScansOnlyTheOverlapOfTheImage) {
    RaceRig rig(kFlat);
    ArPlayer& racer = rig.Racer();
    racer.x = 100.0f;
    racer.y = 100.0f;
    // One visible pixel at column 10, row 5 of the other box's image.
    std::vector<uint32_t> image(64 * 64, 0xFFFF00FFu);
    image[5 * 64 + 10] = 0xFF000000u;
    bool hitX = false;
    bool hitY = false;
    // The other box lies 50 pixels right and 0 down: its columns 0..12 overlap, 0..12 are scanned.
    EXPECT_TRUE(racer.Collides(150.0f, 100.0f, 64.0f, 64.0f, image.data(), hitX, hitY));
    EXPECT_TRUE(hitX && hitY);
    // 55 pixels right: only columns 0..7 are scanned, the pixel at 10 is not.
    EXPECT_FALSE(racer.Collides(155.0f, 100.0f, 64.0f, 64.0f, image.data(), hitX, hitY));
    // Left of the racer: image columns from 64 - overlap on.
    EXPECT_FALSE(racer.Collides(100.0f - 50.0f, 100.0f, 64.0f, 64.0f, image.data(), hitX, hitY));
    // Boxes that only touch do not collide.
    EXPECT_FALSE(racer.Collides(164.0f, 100.0f, 64.0f, 64.0f, nullptr, hitX, hitY));
    EXPECT_FALSE(hitX || hitY);
}

TEST(ArEntityTest, CanMoveToRespectsTheFieldWallsAndCows) {
    RaceRig rig(OnFloor({"S#C......."}));
    ArPlayer& racer = rig.Racer();
    EXPECT_FALSE(racer.CanMoveTo(-1.0f, 0.0f)) << "the border";
    EXPECT_FALSE(racer.CanMoveTo(1.0f, 0.0f)) << "a wall";
    EXPECT_FALSE(racer.CanMoveTo(0.0f, 1.0f)) << "the floor";
    EXPECT_TRUE(racer.CanMoveTo(0.0f, -1.0f));
    racer.x = 192.0f;
    EXPECT_FALSE(racer.CanMoveTo(-1.0f, 0.0f)) << "the cow";
    EXPECT_TRUE(racer.CanMoveTo(1.0f, 0.0f));
}
