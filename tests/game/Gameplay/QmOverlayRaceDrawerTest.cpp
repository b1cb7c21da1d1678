// The plain 2D view of a race: cells, entities and the whole-frame effects land in the overlay.
#include "Gameplay/QmOverlayRaceDrawer.h"

#include "Screen/Surface/VeSurface.h"
#include "game/Gameplay/GameplayTestSupport.h"

#include <gtest/gtest.h>

using namespace gameplay_test;

TEST(QmOverlayRaceDrawerTest, ARaceFrameShowsTheMapTheRacerAndTheCow) {
    std::vector<std::string> rows = OnFloor({"S....C..F."});
    rows.back()[0] = '1';
    RaceRig rig(rows);
    VeSurface overlay(640, 640);
    QmOverlayRaceDrawer drawer(overlay, rig.world);
    rig.race =
        std::make_unique<QmClientGameplayManager>(rig.world, rig.audio, rig.host, rig.controls, drawer);
    rig.Start();
    rig.Frame();

    EXPECT_EQ(overlay.GetXY(32, 608) & 0xFFFFFF, 0xE99209u) << "the orange block";
    EXPECT_EQ(overlay.GetXY(96, 608) & 0xFFFFFF, 0x1678D6u) << "the blue block";
    EXPECT_EQ(overlay.GetXY(32, 540) & 0xFFFFFF, 0xFFFFFFu) << "the racer's white body";
    EXPECT_EQ(overlay.GetXY(330, 520) & 0xFFFFFF, 0xF2F2F2u) << "the cow";
    EXPECT_NE(overlay.GetXY(32, 100) & 0xFFFFFF, 0xFFFFFFu) << "the sky";

    // Flipped, the racer's corner is on the other side of the screen.
    rig.race->flip = true;
    rig.Frame();
    EXPECT_EQ(overlay.GetXY(640 - 1 - 32, 640 - 1 - 540) & 0xFFFFFF, 0xFFFFFFu);

    // A grey frame keeps no colour.
    drawer.GreyFrame();
    const uint32_t grey = overlay.GetXY(640 - 1 - 32, 640 - 1 - 608);
    EXPECT_EQ(grey & 0xFF, (grey >> 8) & 0xFF);
    EXPECT_EQ(grey & 0xFF, (grey >> 16) & 0xFF);
}
