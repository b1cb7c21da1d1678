#include "Environment/ClientEnvironmentManager/QmFinishColour.h"

#include <gtest/gtest.h>

#include <set>

TEST(QmFinishColourTest, WalksTheWheelPhaseByPhaseAndNeverBecomesTheKey) {
    QmFinishColour finish;
    std::set<uint32_t> phaseEnds;
    bool passedNearKey = false;
    int previousPhase = finish.phase;
    for (int frame = 0; frame < 6000; ++frame) {
        // Uneven frame times, some long enough to overshoot a phase's end.
        const float frameTime = (frame % 7 == 0) ? 0.9f : 0.004f + 0.003f * static_cast<float>(frame % 5);
        finish.Step(frameTime);
        ASSERT_NE(finish.colour, 0xFF00FFu) << "frame " << frame;
        passedNearKey = passedNearKey || finish.colour == 0xFE00FFu;
        if (finish.phase != previousPhase) {
            phaseEnds.insert(finish.colour);
            previousPhase = finish.phase;
        }
    }
    EXPECT_TRUE(passedNearKey);
    EXPECT_EQ(phaseEnds, (std::set<uint32_t>{0xFE0000, 0xFEFF00, 0x00FF00, 0x00FFFF, 0x0000FF, 0xFE00FF}));
}

TEST(QmFinishColourTest, MovesOneChannelAt250UnitsASecondAndCarriesFractions) {
    QmFinishColour finish;
    EXPECT_EQ(finish.Step(0.1f), 0xFE0000u) << "Step returns the colour before the step";
    EXPECT_EQ(finish.colour, 0xFE1900u) << "phase 1 moves green up by 25";
    for (int i = 0; i < 100; ++i) {
        finish.Step(0.001f);
    }
    EXPECT_EQ(finish.colour, 0xFE3200u) << "a hundred quarter units make 25 more";
    finish.Step(-1.0f);
    EXPECT_EQ(finish.colour, 0xFE3200u) << "a negative frame time moves nothing";
}
