#include "Coordinator/VaApp.h"

#include "HeadlessGame.h"

#include <gtest/gtest.h>

using VaAppTest = HeadlessGame;

TEST_F(VaAppTest, ASceneChangeIsSeenForExactlyOneFrame) {
    Start();
    EXPECT_EQ(app->scene, SceneMenu); // the coordinator's start-up ends in the menu
    EXPECT_EQ(app->previousScene, SceneNone);
    EXPECT_TRUE(app->sceneChanged);
    app->Frame();
    EXPECT_FALSE(app->sceneChanged);

    app->SwitchScene(SceneRace);
    EXPECT_EQ(app->previousScene, SceneMenu);
    EXPECT_EQ(app->scene, SceneRace);
    EXPECT_TRUE(app->sceneChanged);
    app->Frame();
    EXPECT_FALSE(app->sceneChanged);
    EXPECT_EQ(app->scene, SceneRace);

    // Switching to the scene already shown is no change, though previousScene follows.
    app->SwitchScene(SceneRace);
    EXPECT_FALSE(app->sceneChanged);
    EXPECT_EQ(app->previousScene, SceneRace);

    // The race asks to return: the game frame goes back to the menu.
    coordinator->returnToMenuRequested = true;
    coordinator->restartRequested = true;
    app->Frame();
    EXPECT_EQ(app->scene, SceneMenu);
    EXPECT_FALSE(coordinator->returnToMenuRequested);
    EXPECT_FALSE(coordinator->restartRequested);
    EXPECT_FALSE(app->sceneChanged); // lowered again at the end of that frame
}

TEST_F(VaAppTest, FrameTimeComesFromTheTicksUnlessFixed) {
    Start();
    now = 1000;
    app->Frame(); // the first frame counts from the start
    EXPECT_FLOAT_EQ(app->frameDelta, 1.0f);
    now = 1016;
    app->Frame();
    EXPECT_NEAR(app->frameDelta, 0.016f, 1e-6f);
    app->Frame();
    EXPECT_EQ(app->frameDelta, 0.0f);

    SetFixedFrameDelta(0.02f);
    now = 5000;
    app->Frame();
    EXPECT_FLOAT_EQ(app->frameDelta, 0.02f);
    SetFixedFrameDelta(0.0f);
    now = 5010;
    app->Frame();
    EXPECT_NEAR(app->frameDelta, 0.010f, 1e-6f); // the ticks went on underneath
}

TEST_F(VaAppTest, TheCommandLinesFramesAndFrameTimeDriveTheGameClockWithoutDrift) {
    Start({"--frames", "600", "--fixed-dt", "0.016667"});
    const int64_t start = GetTimeMs();
    now += 5000; // the real clock no longer counts
    for (int frame = 1; frame <= 600; ++frame) {
        ASSERT_FALSE(app->ShouldQuit()) << frame;
        app->Frame();
        if (frame == 60) {
            EXPECT_EQ(GetTimeMs(), start + 1000); // 60 frames of 16.667 ms, without rounding drift
        }
    }
    EXPECT_FLOAT_EQ(app->frameDelta, 0.016667f);
    EXPECT_EQ(GetTimeMs(), start + 10000);
    EXPECT_TRUE(app->ShouldQuit());
    EXPECT_EQ(app->framesRun, 600);
    EXPECT_TRUE(app->ScreenshotWritten()); // none asked for
    Stop();
    EXPECT_NE(GetTimeMs(), start + 10000); // given back to the real clock
}

TEST_F(VaAppTest, AScreenshotWithoutAWindowIsReportedAsNotWritten) {
    Start({"--screenshot", userData.path + "/shot.png"});
    app->Frame();
    app->Shutdown();
    EXPECT_FALSE(app->ScreenshotWritten());
    EXPECT_EQ(app->coordinator, nullptr);
}
