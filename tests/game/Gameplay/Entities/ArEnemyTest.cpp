// Cows: falling, walking and turning at walls and at each other, mooing, freezing with a dead
// racer, and killing the racer on contact, countdown or not.
#include "game/Gameplay/GameplayTestSupport.h"

#include <gtest/gtest.h>

using namespace gameplay_test;

TEST(ArEnemyTest, ACowFallsButStandsDuringTheCountdownThenWalksBetweenWallsAndTurnsAtEach) {
    RaceRig rig(OnFloor({"...C......", "..........", "S.........", "#......#.."}));
    ASSERT_EQ(rig.race->enemies.size(), 1u);
    ArEnemy& cow = *rig.race->enemies[0];
    rig.Start();
    rig.Frames(60);
    ASSERT_EQ(rig.race->countingDown, 1);
    EXPECT_FLOAT_EQ(cow.x, 192.0f) << "no walking before the race runs";
    EXPECT_FLOAT_EQ(cow.y, 512.0f) << "fallen onto the floor";
    rig.race->running = 1;
    float low = cow.x;
    float high = cow.x;
    int turns = 0;
    int direction = cow.direction;
    for (int i = 0; i < 600; ++i) {
        rig.Core(1);
        low = std::min(low, cow.x);
        high = std::max(high, cow.x);
        turns += cow.direction != direction ? 1 : 0;
        direction = cow.direction;
    }
    EXPECT_FLOAT_EQ(low, 64.0f);
    EXPECT_FLOAT_EQ(high, 384.0f);
    EXPECT_GE(turns, 4) << "ten seconds of 64-pixel legs at 300 px/s";
    EXPECT_GE(rig.audio.Count("Hit"), 4) << "cows are physical: walls sound";
}

TEST(ArEnemyTest, CowsThatMeetStopTurnAndMooOnce) {
    RaceRig rig(OnFloor({"S.........", ".C.....C.."}));
    ASSERT_EQ(rig.race->enemies.size(), 2u);
    ArEnemy& left = *rig.race->enemies[0];
    ArEnemy& right = *rig.race->enemies[1];
    left.direction = 1;
    right.direction = 0;
    left.horizontalContact = right.horizontalContact = 0;
    rig.race->running = 1;
    for (int frame = 0; rig.audio.Count("Cow") == 0 && frame < 120; ++frame) {
        rig.Core(1);
    }
    ASSERT_GT(rig.audio.Count("Cow"), 0) << "they met";
    EXPECT_EQ(rig.audio.Count("Cow"), 2) << "each moos once at the meeting";
    EXPECT_LE(left.x + 64.0f, right.x) << "put back: no overlap";
    EXPECT_EQ(left.horizontalContact, 1);
    EXPECT_EQ(right.horizontalContact, 1);
    ASSERT_EQ(left.touching.size(), 1u);
    EXPECT_EQ(left.touching[0], &right);
    const float gap = right.x - left.x;
    rig.Core(1);
    EXPECT_EQ(left.direction, 0) << "turned round";
    EXPECT_EQ(right.direction, 1);
    rig.Core(10);
    EXPECT_GT(right.x - left.x, gap + 90.0f);
    EXPECT_EQ(rig.audio.Count("Cow"), 2);
    EXPECT_TRUE(left.touching.empty());
}

TEST(ArEnemyTest, ACowKillsTheRacerEvenDuringTheCountdown) {
    RaceRig rig(OnFloor({"C.........", "S........."}));
    rig.Start();
    rig.Frames(3);
    EXPECT_EQ(rig.race->running, 0) << "still counting down";
    EXPECT_EQ(rig.Racer().active, 0);
    EXPECT_EQ(rig.audio.Count("CowHitPlayer"), 1);
    EXPECT_EQ(rig.audio.Count("EnemyHit"), 1);
    EXPECT_EQ(rig.race->RaceTime(), 0) << "a racer dead before the start raced no time";
    // A dead racer freezes every cow.
    const float cowY = rig.race->enemies[0]->y;
    rig.Frames(30);
    EXPECT_FLOAT_EQ(rig.race->enemies[0]->y, cowY);
}

TEST(ArEnemyTest, ACowSpawnsOnEachEnemyCellWhenAMapIsReady) {
    RaceRig rig(OnFloor({"S.........", "C.C.C....."}));
    EXPECT_EQ(rig.race->enemies.size(), 3u);
    rig.race->MapReady({{0.0f, 0.0f}}, 64);
    ASSERT_EQ(rig.race->enemies.size(), 1u) << "the old cows are gone";
    EXPECT_FLOAT_EQ(rig.race->enemies[0]->width, 64.0f);
}
