// The race as the coordinator runs it: in a real window (the tests run under Xvfb), on the shipped
// tours put into a temporary game folder, with a scripted keyboard and a driven clock, without
// sound.
#include "Audio/VeAudioManager.h"
#include "Controls/QmControls.h"
#include "Coordinator/QmInRaceMenu.h"
#include "Environment/ArEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmBlocks.h"
#include "FrontEnd/Options/QmOptions.h"
#include "FrontEnd/QmHighscoresManager.h"
#include "Gameplay/QmClientGameplayManager.h"
#include "HeadlessGame.h"
#include "Input/VeKey.h"

#include <gtest/gtest.h>

#include <set>

namespace {

class RaceGame : public HeadlessGame {
protected:
    // Frames until the race runs (the countdown is over).
    void RunUntilTheRaceRuns() {
        for (int frame = 0; frame < 400 && coordinator->gameplay->running == 0; ++frame) {
            Frame();
        }
        ASSERT_EQ(coordinator->gameplay->running, 1);
    }

    // The scene and the race's state in one line.
    std::string State() {
        const char* scene = app->scene == SceneRace ? "race" : app->scene == SceneMenu ? "menu" : "other";
        return std::string(scene) + ", countdown " + std::to_string(Race().countingDown) + ", running " +
               std::to_string(Race().running) + ", paused " + std::to_string(Race().paused) + ", active " +
               std::to_string(Race().Racer()->active);
    }

    ArEnvironmentManager& World() { return *coordinator->environment; }
    QmClientGameplayManager& Race() { return *coordinator->gameplay; }
};

// The first pickup cell of the playing area, or false.
bool FindPickup(ArEnvironmentManager& world, int& column, int& row) {
    const std::set<BlockId> pickups{Block::JumpImpulse, Block::SpeedUp, Block::FlipVision, Block::RedGateKey,
                                    Block::DiscoConfusion};
    for (column = 0; column < world.mapSize; ++column) {
        for (row = 0; row < world.mapSize; ++row) {
            if (pickups.count(world.GetBlock(column, row)) > 0) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

TEST_F(RaceGame, PlayStartsTourPlayOnTheChosenMap) {
    StartInWindow({"--play", "7", "0", "--2d"}); // the game folder has no tour 7
    EXPECT_TRUE(app->ShouldQuit());
    EXPECT_EQ(app->ExitCode(), 2);
    Stop();

    StartInWindow({"--play", "0", "1", "--2d"});
    EXPECT_EQ(State(), "race, countdown 1, running 0, paused 0, active 1");
    EXPECT_EQ(coordinator->playMode, VaCoordinator::PlayTour);
    EXPECT_EQ(World().tourIndex, 0);
    EXPECT_EQ(World().levelIndex, 1);
    EXPECT_EQ(World().CurrentMapFile(), World().tourLevels[0][1]);
    EXPECT_FLOAT_EQ(World().cameraZoom, QmClientEnvironmentManager::kIntroZoom); // the intro is shown

    // The racer stands on the Start cell, as the world host tells the renderer.
    const QmRacerView racer = coordinator->Racer();
    ASSERT_TRUE(racer.exists);
    EXPECT_TRUE(racer.active);
    EXPECT_FLOAT_EQ(racer.x, World().startX * static_cast<float>(World().blockSize));
    EXPECT_FLOAT_EQ(racer.y, World().startY * static_cast<float>(World().blockSize));

    // The countdown runs out and the race starts; the flip turns the view only in the race.
    RunUntilTheRaceRuns();
    EXPECT_EQ(app->scene, SceneRace);
    Race().flip = true;
    EXPECT_TRUE(coordinator->Flipped());
    app->SwitchScene(SceneMenu);
    EXPECT_FALSE(coordinator->Flipped());

    // A tour or map the game folder does not have starts nothing.
    std::string error;
    EXPECT_FALSE(coordinator->PlayMap(static_cast<int>(World().tours.size()), 0, error));
    EXPECT_NE(error.find("the game folder has no tour"), std::string::npos) << error;
    EXPECT_FALSE(coordinator->PlayMap(0, 999, error));
    EXPECT_NE(error.find("has no map 999"), std::string::npos) << error;
    EXPECT_FALSE(coordinator->PlayMap(-1, 0, error));
    EXPECT_EQ(app->scene, SceneMenu);
    EXPECT_TRUE(coordinator->PlayMap(0, 0, error)) << error;
    EXPECT_EQ(app->scene, SceneRace);
}

TEST_F(RaceGame, WhatTheIntroDoesNotNeedComesAfterItsFirstFrameAndBeforeAnyRace) {
    const auto ready = [this](const char* sound) { return app->audio->IsLoaded(sound); };
    const auto later = [&] {
        return ready("Music") && ready("MusicInGame") && ready("Countdown") && World().GraphicsPrepared();
    };
    StartInWindow({"--3d"}, true);
    EXPECT_TRUE(ready("Hover"));
    EXPECT_FALSE(ready("Jump"));
    EXPECT_FALSE(ready("Music"));
    EXPECT_FALSE(World().GraphicsPrepared());
    Frame();
    EXPECT_FALSE(ready("Music")); // the first frame waits for nothing
    for (int frame = 0; frame < 40; ++frame) {
        Frame();
    }
    EXPECT_TRUE(later());
    Stop();

    // A race asked for at once has it all before its first frame.
    StartInWindow({"--3d", "--play", "0", "0"}, true);
    EXPECT_EQ(app->scene, SceneRace);
    EXPECT_TRUE(later());
}

TEST_F(RaceGame, TheViewAskedForOnTheCommandLineIsNotStored) {
    for (const bool threeD : {false, true}) {
        const std::string storedView = threeD ? "0" : "1";
        QmOptions stored;
        stored.Set(QmOptions::k3DGraphics, storedView);
        ASSERT_TRUE(stored.SaveOptions());
        StartInWindow({"--play", "0", "0", threeD ? "--3d" : "--2d"});
        EXPECT_EQ(coordinator->Option(QmOptions::k3DGraphics), threeD ? "1" : "0");
        Frame();
        EXPECT_EQ(app->screen->threeD, threeD);
        EXPECT_EQ(World().ThreeDActive(), threeD);
        EXPECT_EQ(World().PassCount(), threeD ? 2 : 1); // in 3D the shadow pass, then the picture
        EXPECT_FALSE(coordinator->shadowPass);
        Stop();
        stored.LoadOptions();
        EXPECT_EQ(stored.Get(QmOptions::k3DGraphics), storedView);
    }
}

TEST_F(RaceGame, CtrlHHidesThePanelRRestartsAndAfterDeathSpaceStartsANewAttempt) {
    StartInWindow({"--play", "0", "0", "--2d"});
    Frame();
    const int x = ArEnvironmentManager::kHudX + 4;
    const int y = ArEnvironmentManager::kHudY + 4;
    const uint32_t withPanel = app->screen->overlay.GetXY(x, y);
    FrameWithKeys({VeKey::LeftCtrl, VeKey::H});
    EXPECT_EQ(coordinator->Option(QmOptions::kHud), "0");
    Frame();
    EXPECT_NE(app->screen->overlay.GetXY(x, y), withPanel);
    FrameWithKeys({VeKey::LeftCtrl, VeKey::H});
    Frame();
    EXPECT_EQ(app->screen->overlay.GetXY(x, y), withPanel);

    // R starts over on the map read again, without leaving the race scene.
    RunUntilTheRaceRuns();
    int column = 0;
    int row = 0;
    ASSERT_TRUE(FindPickup(World(), column, row));
    const BlockId pickup = World().GetBlock(column, row);
    World().SetBlock(column, row, Block::Blank); // as if the racer had taken it
    Race().Racer()->x += 40.0f;
    FrameWithKeys({VeKey::R});
    EXPECT_EQ(State(), "race, countdown 1, running 0, paused 0, active 1");
    EXPECT_EQ(World().GetBlock(column, row), pickup);
    EXPECT_FLOAT_EQ(Race().Racer()->x, World().startX * static_cast<float>(World().blockSize));

    // The world of death is grey all over; the head-up panel over it keeps its colours.
    RunUntilTheRaceRuns();
    Race().Racer()->Kill();
    Frame();
    int coloured = 0;
    int colouredPanel = 0;
    const VeSurface& overlay = app->screen->overlay;
    for (int py = 0; py < overlay.height; py += 2) {
        for (int px = 0; px < overlay.width; px += 2) {
            const uint32_t pixel = overlay.GetXY(px, py);
            const uint32_t red = (pixel >> 16) & 0xFF;
            const bool grey = red == ((pixel >> 8) & 0xFF) && red == (pixel & 0xFF);
            const bool panel =
                px < ArEnvironmentManager::kHudX + 256 && py < ArEnvironmentManager::kHudY + 40;
            (panel ? colouredPanel : coloured) += grey ? 0 : 1;
        }
    }
    EXPECT_EQ(coloured, 0);
    EXPECT_GT(colouredPanel, 20);
    FrameWithKeys({VeKey::Space});
    EXPECT_EQ(State(), "race, countdown 1, running 0, paused 0, active 1");

    // The random-level run has a panel of its level and time in the same place.
    coordinator->playMode = VaCoordinator::PlayRandomRun;
    ASSERT_TRUE(coordinator->StartPlay(false));
    Frame();
    EXPECT_EQ(app->screen->overlay.GetXY(x, y), withPanel);
}

TEST_F(RaceGame, TheInRaceMenuPausesAndLeavingItOrReturningEndsInTheMenu) {
    StartInWindow({"--play", "0", "0", "--2d"});
    RunUntilTheRaceRuns();

    // Escape opens it and the race stands still; Escape again resumes.
    FrameWithKeys({VeKey::Escape});
    ASSERT_TRUE(coordinator->MenuOpen());
    EXPECT_EQ(State(), "race, countdown 0, running 1, paused 1, active 1");
    const int64_t pausedAt = Race().RaceTime();
    for (int frame = 0; frame < 30; ++frame) {
        Frame();
    }
    EXPECT_EQ(Race().RaceTime(), pausedAt);
    FrameWithKeys({VeKey::Escape});
    EXPECT_FALSE(coordinator->MenuOpen());
    EXPECT_EQ(State(), "race, countdown 0, running 1, paused 0, active 1");
    EXPECT_EQ(Race().RaceTime(), pausedAt);
    Frame();
    EXPECT_EQ(Race().RaceTime(), pausedAt + 17);

    // Down and Return leave the race: the menu's first page, with a fresh race on the reloaded map
    // waiting for the next start.
    FrameWithKeys({VeKey::Escape});
    ASSERT_TRUE(coordinator->MenuOpen());
    FrameWithKeys({VeKey::Down});
    EXPECT_EQ(coordinator->InRaceMenu().Selection(), QmInRaceMenu::Leave);
    FrameWithKeys({VeKey::Return});
    EXPECT_EQ(State(), "menu, countdown 0, running 0, paused 0, active 1");
    EXPECT_EQ(app->previousScene, SceneRace);
    EXPECT_EQ(coordinator->CurrentMenuPage(), 0);
    EXPECT_FALSE(coordinator->MenuOpen());
    EXPECT_EQ(Race().RaceTime(), 0); // a new race: the old one's address may well be reused

    // From the random-level run the main menu is next, and the generated map stays. A generated
    // level takes nothing from the map before it (here the tutorial with its long countdown).
    ASSERT_TRUE(Race().IsTutorial());
    coordinator->playMode = VaCoordinator::PlayRandomRun;
    ASSERT_TRUE(coordinator->StartPlay(false));
    EXPECT_EQ(app->scene, SceneRace);
    EXPECT_FALSE(Race().IsTutorial());
    EXPECT_EQ(World().mapName, "MAP 1");
    EXPECT_TRUE(Race().Highscores().List().empty());
    EXPECT_TRUE(Race().Highscores().StoredRecording().Empty());
    const auto blocks = World().blocks;
    coordinator->ReturnToMenu();
    EXPECT_EQ(app->scene, SceneMenu);
    EXPECT_EQ(coordinator->CurrentMenuPage(), 1);
    EXPECT_EQ(World().blocks, blocks);
}
