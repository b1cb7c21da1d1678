// The race as the coordinator runs it: in a real window (the tests run under Xvfb), on the shipped
// tours put into a temporary game folder, with a scripted keyboard and a driven clock, without
// sound.
#include "App/VeRegistry.h"
#include "Audio/VeAudioManager.h"
#include "Controls/QmControls.h"
#include "Coordinator/QmInRaceMenu.h"
#include "Coordinator/QmResultsFlow.h"
#include "Environment/ArEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmBlocks.h"
#include "FrontEnd/Options/QmOptions.h"
#include "FrontEnd/QmHighscoresManager.h"
#include "Gameplay/QmClientGameplayManager.h"
#include "HeadlessGame.h"
#include "Input/VeKey.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

class RaceGame : public HeadlessGame {
protected:
    void SetUp() override {
        HeadlessGame::SetUp();
        setenv("QUILLMAZE_NO_DIALOGS", "1", 1);
        previousSink = SetLogSink([this](const std::string& text) { log += text; });
    }

    void TearDown() override {
        HeadlessGame::TearDown();
        SetLogSink(previousSink);
    }

    // The game with its window and the given command line; the keyboard is the test's.
    void StartGame(const std::vector<std::string>& arguments, bool sound = false) {
        std::vector<std::string> line{"quillmaze"};
        line.insert(line.end(), arguments.begin(), arguments.end());
        QmCommandLine commandLine;
        ASSERT_EQ(commandLine.Parse(line), QmCommandLine::Result::Run) << commandLine.Error();
        app = std::make_unique<VaApp>();
        app->FillSettings();
        app->registry->SetInt("VE_USE_AUDIO", sound ? 1 : 0);
        app->registry->SetInt("VE_DEBUG_INFO", 0);
        app->UseCommandLine(commandLine);
        app->Init();
        ASSERT_NE(app->screen, nullptr);
        app->screen->SetFramePacing(false);
        delete app->input;
        app->input = new VeInput(app->screen, std::make_unique<FakeInputSource>(&devices));
        app->screen->input = app->input;
        app->CreateManagers();
        coordinator = app->coordinator;
        ASSERT_NE(coordinator->environment, nullptr);
    }

    // One frame, 17 ms after the last one.
    void Frame() {
        now += 17;
        app->Frame();
    }

    // Frames until the race runs (the countdown is over).
    void RunUntilTheRaceRuns() {
        for (int frame = 0; frame < 400 && coordinator->gameplay->running == 0; ++frame) {
            Frame();
        }
        ASSERT_EQ(coordinator->gameplay->running, 1);
    }

    ArEnvironmentManager& World() { return *coordinator->environment; }
    QmClientGameplayManager& Race() { return *coordinator->gameplay; }

    std::string log;

private:
    VeLogSink previousSink;
};

// The first pickup cell of the playing area, or false.
bool FindPickup(ArEnvironmentManager& world, int& column, int& row) {
    for (int x = 0; x < world.mapSize; ++x) {
        for (int y = 0; y < world.mapSize; ++y) {
            const BlockId id = world.GetBlock(x, y);
            if (id == Block::JumpImpulse || id == Block::SpeedUp || id == Block::FlipVision ||
                id == Block::RedGateKey || id == Block::DiscoConfusion) {
                column = x;
                row = y;
                return true;
            }
        }
    }
    return false;
}

} // namespace

TEST_F(RaceGame, PlayStartsTourPlayOnTheChosenMap) {
    StartGame({"--play", "0", "1", "--2d"});
    EXPECT_EQ(app->scene, SceneRace);
    EXPECT_EQ(coordinator->playMode, VaCoordinator::PlayTour);
    EXPECT_EQ(World().tourIndex, 0);
    EXPECT_EQ(World().levelIndex, 1);
    EXPECT_EQ(World().CurrentMapFile(), World().tourLevels[0][1]);
    EXPECT_FALSE(World().mapName.empty());
    EXPECT_EQ(Race().countingDown, 1);
    EXPECT_FLOAT_EQ(World().cameraZoom, QmClientEnvironmentManager::kIntroZoom); // the intro is shown

    // The racer stands on the Start cell, as the world host tells the renderer.
    const QmRacerView racer = coordinator->Racer();
    ASSERT_TRUE(racer.exists);
    EXPECT_TRUE(racer.active);
    EXPECT_FLOAT_EQ(racer.x, World().startX * static_cast<float>(World().blockSize));
    EXPECT_FLOAT_EQ(racer.y, World().startY * static_cast<float>(World().blockSize));
    EXPECT_TRUE(coordinator->InRace());
    EXPECT_FALSE(coordinator->InEditor());
    EXPECT_FALSE(coordinator->ThreeDEnabled());

    // The countdown runs out and the race starts; the flip turns the view only in the race.
    RunUntilTheRaceRuns();
    EXPECT_EQ(app->scene, SceneRace);
    Race().flip = true;
    EXPECT_TRUE(coordinator->Flipped());
    app->SwitchScene(SceneMenu);
    EXPECT_FALSE(coordinator->Flipped());
}

TEST_F(RaceGame, WhatTheIntroDoesNotNeedComesAfterItsFirstFrameAndBeforeAnyRace) {
    const auto ready = [this](const char* sound) { return app->audio->IsLoaded(sound); };
    StartGame({"--3d"}, true);
    EXPECT_TRUE(ready("Hover"));
    EXPECT_FALSE(ready("Jump"));
    EXPECT_FALSE(ready("Music"));
    EXPECT_FALSE(World().GraphicsPrepared());
    Frame();
    EXPECT_FALSE(ready("Music")); // the first frame waits for nothing
    for (int frame = 0; frame < 40; ++frame) {
        Frame();
    }
    EXPECT_TRUE(ready("Music"));
    EXPECT_TRUE(ready("MusicInGame"));
    EXPECT_TRUE(ready("Countdown"));
    EXPECT_TRUE(World().GraphicsPrepared());
    Stop();

    // A race asked for at once has it all before its first frame.
    StartGame({"--3d", "--play", "0", "0"}, true);
    EXPECT_EQ(app->scene, SceneRace);
    EXPECT_TRUE(ready("Countdown"));
    EXPECT_TRUE(ready("MusicInGame"));
    EXPECT_TRUE(World().GraphicsPrepared());
}

TEST_F(RaceGame, AMapTheGameFolderDoesNotHaveIsRefused) {
    StartGame({"--play", "7", "0", "--2d"});
    EXPECT_TRUE(app->ShouldQuit());
    EXPECT_EQ(app->ExitCode(), 2);

    std::string error;
    EXPECT_FALSE(coordinator->PlayMap(static_cast<int>(World().tours.size()), 0, error));
    EXPECT_NE(error.find("the game folder has no tour"), std::string::npos) << error;
    EXPECT_FALSE(coordinator->PlayMap(0, 999, error));
    EXPECT_NE(error.find("has no map 999"), std::string::npos) << error;
    EXPECT_FALSE(coordinator->PlayMap(-1, 0, error));
    EXPECT_EQ(app->scene, SceneMenu); // nothing started

    EXPECT_TRUE(coordinator->PlayMap(0, 0, error)) << error;
    EXPECT_EQ(app->scene, SceneRace);
}

TEST_F(RaceGame, RRestartsTheRaceOnTheReloadedMapWithoutLeavingTheRaceScene) {
    StartGame({"--play", "0", "0", "--2d"});
    RunUntilTheRaceRuns();
    int column = 0;
    int row = 0;
    ASSERT_TRUE(FindPickup(World(), column, row));
    const BlockId pickup = World().GetBlock(column, row);
    World().SetBlock(column, row, Block::Blank); // as if the racer had taken it
    const QmClientGameplayManager* before = coordinator->gameplay.get();
    Race().Racer()->x += 40.0f;

    FrameWithKeys({VeKey::R});
    EXPECT_EQ(app->scene, SceneRace);
    EXPECT_NE(coordinator->gameplay.get(), before);
    EXPECT_EQ(Race().countingDown, 1);
    EXPECT_EQ(Race().running, 0);
    EXPECT_EQ(World().GetBlock(column, row), pickup); // the map was read again
    EXPECT_FLOAT_EQ(Race().Racer()->x, World().startX * static_cast<float>(World().blockSize));
}

TEST_F(RaceGame, AfterDeathSpaceStartsANewAttempt) {
    StartGame({"--play", "0", "0", "--2d"});
    RunUntilTheRaceRuns();
    Race().Racer()->Kill();
    Frame();
    // The world of death is grey all over; the head-up panel over it keeps its colours.
    int coloured = 0;
    int colouredPanel = 0;
    const VeSurface& overlay = app->screen->overlay;
    for (int y = 0; y < overlay.height; y += 2) {
        for (int x = 0; x < overlay.width; x += 2) {
            const uint32_t pixel = overlay.GetXY(x, y);
            const uint32_t red = (pixel >> 16) & 0xFF;
            const bool grey = red == ((pixel >> 8) & 0xFF) && red == (pixel & 0xFF);
            const bool panel = x < ArEnvironmentManager::kHudX + 256 && y < ArEnvironmentManager::kHudY + 40;
            (panel ? colouredPanel : coloured) += grey ? 0 : 1;
        }
    }
    EXPECT_EQ(coloured, 0);
    EXPECT_GT(colouredPanel, 20);
    const QmClientGameplayManager* before = coordinator->gameplay.get();

    FrameWithKeys({VeKey::Space});
    EXPECT_EQ(app->scene, SceneRace);
    EXPECT_NE(coordinator->gameplay.get(), before);
    EXPECT_EQ(Race().Racer()->active, 1);
    EXPECT_EQ(Race().countingDown, 1);
}

TEST_F(RaceGame, TheInRaceMenuPausesAndLeavingItReturnsToTheMenu) {
    StartGame({"--play", "0", "0", "--2d"});
    RunUntilTheRaceRuns();

    // Escape opens it and the race stands still.
    FrameWithKeys({VeKey::Escape});
    ASSERT_TRUE(coordinator->MenuOpen());
    EXPECT_EQ(Race().paused, 1);
    EXPECT_EQ(app->scene, SceneRace);
    const int64_t pausedAt = Race().RaceTime();
    for (int frame = 0; frame < 30; ++frame) {
        Frame();
    }
    EXPECT_EQ(Race().RaceTime(), pausedAt);

    // Escape again resumes.
    FrameWithKeys({VeKey::Escape});
    EXPECT_FALSE(coordinator->MenuOpen());
    EXPECT_EQ(Race().paused, 0);
    EXPECT_EQ(Race().RaceTime(), pausedAt);
    Frame();
    EXPECT_EQ(Race().RaceTime(), pausedAt + 17);

    // Down and Return leave the race: the menu scene with a fresh race on the reloaded map.
    FrameWithKeys({VeKey::Escape});
    ASSERT_TRUE(coordinator->MenuOpen());
    FrameWithKeys({VeKey::Down});
    EXPECT_EQ(coordinator->InRaceMenu().Selection(), QmInRaceMenu::Leave);
    const QmClientGameplayManager* before = coordinator->gameplay.get();
    FrameWithKeys({VeKey::Return});
    EXPECT_EQ(app->scene, SceneMenu);
    EXPECT_FALSE(coordinator->MenuOpen());
    EXPECT_NE(coordinator->gameplay.get(), before);
    EXPECT_EQ(Race().Racer()->active, 1);
    EXPECT_EQ(Race().paused, 0);
    EXPECT_FALSE(app->ShouldQuit());

    // The menu scene shows nothing yet: Escape there (the intro page) quits.
    FrameWithKeys({VeKey::Escape});
    EXPECT_TRUE(app->ShouldQuit());
}

TEST_F(RaceGame, ReturnToMenuEndsInTheMenuScene) {
    StartGame({"--play", "0", "0", "--2d"});
    RunUntilTheRaceRuns();
    coordinator->ReturnToMenu();
    EXPECT_EQ(app->scene, SceneMenu);
    EXPECT_EQ(app->previousScene, SceneRace);
    EXPECT_EQ(coordinator->CurrentMenuPage(), 0);
    EXPECT_EQ(Race().countingDown, 0); // a fresh race waits for the next start

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

TEST_F(RaceGame, FinishingUnlocksTheNextMapAndAsksForTheNameTheTimeIsKeptUnder) {
    // The map's stored best run, replayed on the frame-locked clock, reaches the finish.
    StartGame({"--play", "0", "0", "--2d"});
    const std::string best = Race().Highscores().StoredRecording().ToText();
    ASSERT_FALSE(best.empty());
    const std::string next = World().tourLevels[0][1];
    ASSERT_EQ(World().GetMapField('l', next), "1");
    Stop();

    StartGame({"--play", "0", "0", "--2d", "--autoplay", best, "--fixed-dt", "0.016667"});
    for (int frame = 0; frame < 1200 && app->scene == SceneRace; ++frame) {
        app->Frame();
    }
    ASSERT_EQ(app->scene, SceneAfterRace) << "the best run did not finish";
    EXPECT_EQ(World().GetMapField('l', next), "0");
    EXPECT_NE(log.find("Notice: "), std::string::npos);
    // The highscores page offers the player's name; confirming keeps the run, Escape leaves.
    ASSERT_TRUE(coordinator->Results().Highscores().NameEntryOpen());
    FrameWithKeys({VeKey::Return});
    EXPECT_FALSE(coordinator->Results().Highscores().NameEntryOpen());
    FrameWithKeys({VeKey::Escape});
    ASSERT_EQ(app->scene, SceneMenu);
    // The fresh race read the score file again: the run is in first place under the player's name.
    ASSERT_FALSE(Race().Highscores().List().empty());
    EXPECT_EQ(Race().Highscores().List()[0].name, coordinator->PlayerName());
    EXPECT_EQ(coordinator->PlayerName(), "PLAYER");
    EXPECT_GT(Race().Highscores().BestTime(), 0);
}

TEST_F(RaceGame, TheViewAskedForOnTheCommandLineIsNotStored) {
    QmOptions stored;
    stored.Set(QmOptions::k3DGraphics, "1");
    ASSERT_TRUE(stored.SaveOptions());
    StartGame({"--play", "0", "0", "--2d"});
    EXPECT_EQ(coordinator->Option(QmOptions::k3DGraphics), "0");
    Frame();
    EXPECT_FALSE(app->screen->threeD);
    EXPECT_FALSE(World().ThreeDActive());
    Stop();
    stored.LoadOptions();
    EXPECT_EQ(stored.Get(QmOptions::k3DGraphics), "1");

    stored.Set(QmOptions::k3DGraphics, "0");
    ASSERT_TRUE(stored.SaveOptions());
    StartGame({"--play", "0", "0", "--3d"});
    Frame();
    EXPECT_TRUE(app->screen->threeD);
    EXPECT_TRUE(World().ThreeDActive());
    EXPECT_EQ(World().PassCount(), 2); // the shadow pass, then the picture
    EXPECT_FALSE(coordinator->shadowPass);
    Stop();
    stored.LoadOptions();
    EXPECT_EQ(stored.Get(QmOptions::k3DGraphics), "0");
}

TEST_F(RaceGame, CtrlHHidesTheHeadUpPanelAndTheRandomRunShowsItsOwn) {
    StartGame({"--play", "0", "0", "--2d"});
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

    // The random-level run has a panel of its level and time in the same place.
    coordinator->playMode = VaCoordinator::PlayRandomRun;
    ASSERT_TRUE(coordinator->StartPlay(false));
    Frame();
    EXPECT_EQ(app->screen->overlay.GetXY(x, y), withPanel);
}
