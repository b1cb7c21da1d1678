#include "Coordinator/VaCoordinator.h"

#include "App/VeRegistry.h"
#include "Audio/VeAudioManager.h"
#include "Environment/ArEnvironmentManager.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/Options/QmOptions.h"
#include "HeadlessGame.h"
#include "Input/VeKey.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"

#include <gtest/gtest.h>

#include <cstdio>

using Hotkey = VaCoordinator::Hotkey;
using VaCoordinatorTest = HeadlessGame;

namespace {
VaCoordinator::HotkeyKeys Keys(bool ctrl, char key) {
    VaCoordinator::HotkeyKeys keys;
    keys.ctrl = ctrl;
    keys.f = key == 'F';
    keys.m = key == 'M';
    keys.h = key == 'H';
    keys.u = key == 'U';
    keys.f8 = key == '8';
    keys.f10 = key == '0';
    return keys;
}
} // namespace

TEST_F(VaCoordinatorTest, RegistersItselfForTheWholeGameAndEmptiesTheCacheOnRelease) {
    Start();
    EXPECT_EQ(VaAppCommander::C(), coordinator);
    EXPECT_TRUE(IsDirectory(userData.GameFolder()));
    EXPECT_EQ(coordinator->CurrentMenuPage(), 0);
    EXPECT_EQ(coordinator->Language().Name(), "English");

    const std::string cache = userData.GameFolder() + "/Cache";
    ASSERT_TRUE(CreateFolder(cache + "/Maps"));
    ASSERT_TRUE(WriteFileAtomic(cache + "/list.txt", "stale"));
    Stop();
    EXPECT_FALSE(VaAppCommander::Registered());
    EXPECT_TRUE(IsDirectory(cache));
    EXPECT_TRUE(ListFiles(cache).empty());
    EXPECT_TRUE(ListFolders(cache).empty());
}

TEST(VaAppCommanderTest, AskingBeforeTheCoordinatorExistsEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            SetLogSink([](const std::string& text) { std::fputs(text.c_str(), stderr); });
            VaAppCommander::C();
        },
        "Error: Appcommander Coordinator not initialized! Use VaAppCommander::C\\(\\) to initialize.");
}

TEST_F(VaCoordinatorTest, StartUpAlwaysEnablesShadowsAndHonoursTheFpsSwitch) {
    QmOptions stored;
    stored.Set(QmOptions::k3DGraphics, "0");
    ASSERT_TRUE(stored.SaveOptions());
    Start({"--fps"});
    EXPECT_EQ(coordinator->Option(QmOptions::kShadowsEnabled), "1");
    EXPECT_EQ(coordinator->Option(QmOptions::k3DGraphics), "0");
    EXPECT_EQ(coordinator->Option(QmOptions::kFps), "1");
    Stop();
    Start();
    EXPECT_EQ(coordinator->Option(QmOptions::kFps), "0"); // the switch is not stored
    EXPECT_EQ(coordinator->Option(QmOptions::kVsync), "1");
}

TEST_F(VaCoordinatorTest, FrameRateHotkeysFollowTheirTable) {
    Start();
    struct Case {
        char key; // '8' F8, '0' F10
        const char* vsyncBefore;
        const char* fpsBefore;
        const char* vsyncAfter;
        const char* fpsAfter;
    };
    const Case cases[] = {
        {'8', "0", "0", "1", "1"}, {'8', "0", "1", "1", "1"}, {'8', "1", "0", "1", "1"},
        {'8', "1", "1", "1", "0"}, {'0', "0", "0", "0", "1"}, {'0', "0", "1", "1", "0"},
        {'0', "1", "0", "0", "1"}, {'0', "1", "1", "0", "1"},
    };
    for (const Case& test : cases) {
        coordinator->SetOption(QmOptions::kVsync, test.vsyncBefore);
        coordinator->SetOption(QmOptions::kFps, test.fpsBefore);
        const Hotkey ran = coordinator->HandleHotkeys(Keys(false, test.key));
        EXPECT_EQ(ran, test.key == '8' ? Hotkey::FpsWithVsync : Hotkey::FpsWithoutVsync);
        const std::string label = std::string(test.key == '8' ? "F8" : "F10") + " from VSYNC " +
                                  test.vsyncBefore + " FPS " + test.fpsBefore;
        EXPECT_EQ(coordinator->Option(QmOptions::kVsync), test.vsyncAfter) << label;
        EXPECT_EQ(coordinator->Option(QmOptions::kFps), test.fpsAfter) << label;
    }

    // Through the keyboard: F10 pressed once acts once, however long it is held.
    coordinator->SetOption(QmOptions::kVsync, "0");
    coordinator->SetOption(QmOptions::kFps, "1");
    devices.keys[VeKey::F10] = 1;
    app->Frame();
    app->Frame();
    devices.keys[VeKey::F10] = 0;
    app->Frame();
    EXPECT_EQ(coordinator->Option(QmOptions::kFps), "0");
    EXPECT_EQ(coordinator->Option(QmOptions::kVsync), "1");
}

TEST_F(VaCoordinatorTest, OnlyTheFirstMatchingHotkeyRuns) {
    Start();
    // Ctrl+H and Ctrl+U toggle their options.
    EXPECT_EQ(coordinator->HandleHotkeys(Keys(true, 'H')), Hotkey::Hud);
    EXPECT_EQ(coordinator->Option(QmOptions::kHud), "0");
    EXPECT_EQ(coordinator->HandleHotkeys(Keys(true, 'H')), Hotkey::Hud);
    EXPECT_EQ(coordinator->Option(QmOptions::kHud), "1");
    EXPECT_EQ(coordinator->HandleHotkeys(Keys(true, 'U')), Hotkey::Ui);
    EXPECT_EQ(coordinator->Option(QmOptions::kUi), "0");

    // Without Ctrl the letters do nothing.
    EXPECT_EQ(coordinator->HandleHotkeys(Keys(false, 'H')), Hotkey::None);
    EXPECT_EQ(coordinator->Option(QmOptions::kHud), "1");

    // Ctrl+H with F8 in the same frame: only the HUD switch.
    VaCoordinator::HotkeyKeys both = Keys(true, 'H');
    both.f8 = true;
    coordinator->SetOption(QmOptions::kFps, "0");
    EXPECT_EQ(coordinator->HandleHotkeys(both), Hotkey::Hud);
    EXPECT_EQ(coordinator->Option(QmOptions::kFps), "0");

    // Ctrl+F switches the window, never the stored option; without a window there is nothing to
    // switch and no later hotkey runs in its place.
    VaCoordinator::HotkeyKeys fullscreen = Keys(true, 'F');
    fullscreen.u = true;
    EXPECT_EQ(coordinator->HandleHotkeys(fullscreen), Hotkey::Fullscreen);
    EXPECT_EQ(coordinator->Option(QmOptions::kFullscreen), "0");
    EXPECT_EQ(coordinator->Option(QmOptions::kUi), "0");

    // Without sound, Ctrl+M leaves the music option alone.
    EXPECT_EQ(coordinator->HandleHotkeys(Keys(true, 'M')), Hotkey::Music);
    EXPECT_EQ(coordinator->Option(QmOptions::kMusic), "1");

    // Through the keyboard, with the right Control key.
    FrameWithKeys({VeKey::RightCtrl, VeKey::U});
    EXPECT_EQ(coordinator->Option(QmOptions::kUi), "1");
}

TEST_F(VaCoordinatorTest, EscapeQuitsOnlyFromTheIntroPageOfTheMenu) {
    Start();
    coordinator->SetMenuPage(1);
    FrameWithKeys({VeKey::Escape});
    EXPECT_FALSE(app->ShouldQuit());

    coordinator->SetMenuPage(0);
    app->SwitchScene(SceneRace);
    FrameWithKeys({VeKey::Escape});
    EXPECT_FALSE(app->ShouldQuit());

    app->SwitchScene(SceneMenu);
    FrameWithKeys({VeKey::Escape});
    EXPECT_TRUE(app->ShouldQuit());
}

TEST_F(VaCoordinatorTest, PulseAndBlinkSwingWithinTheirRanges) {
    Start();
    // From the bottom of both swings, at 60 frames a second for almost ten seconds, both stay
    // inside and keep turning.
    coordinator->pulse = 0.8f;
    coordinator->pulseRising = true;
    coordinator->blink = 0.0f;
    coordinator->blinkRising = true;
    int pulseTurns = 0;
    int blinkTurns = 0;
    for (int frame = 0; frame < 590; ++frame) {
        const bool pulseWasRising = coordinator->pulseRising;
        const bool blinkWasRising = coordinator->blinkRising;
        coordinator->AnimatePulseBlink(1.0f / 60.0f);
        ASSERT_GE(coordinator->pulse, 0.8f);
        ASSERT_LE(coordinator->pulse, 1.1f);
        ASSERT_GE(coordinator->blink, 0.0f);
        ASSERT_LE(coordinator->blink, 1.0f);
        pulseTurns += pulseWasRising != coordinator->pulseRising;
        blinkTurns += blinkWasRising != coordinator->blinkRising;
    }
    EXPECT_EQ(pulseTurns, 6); // 0.3 at 0.2 a second: a turn every 1.5 s
    EXPECT_EQ(blinkTurns, 9); // a turn every second

    // The game frame drives them with the frame time.
    coordinator->pulse = 1.0f;
    coordinator->pulseRising = true;
    SetFixedFrameDelta(0.25f);
    app->Frame();
    EXPECT_FLOAT_EQ(coordinator->pulse, 1.05f);
}

TEST_F(VaCoordinatorTest, ScaleColourFollowsThePulse) {
    Start();
    coordinator->pulse = 1.1f;
    EXPECT_EQ(coordinator->ScaleColour(0x00FF00), 0x00FF00u); // 1.3 times, clamped
    EXPECT_EQ(coordinator->ScaleColour(0x646464), 0x6E6E6Eu);
    EXPECT_EQ(coordinator->ScaleColour(0xFF646464), 0x6E6E6Eu); // alpha dropped
    EXPECT_EQ(coordinator->ScaleColour(0xF0F0F0), 0xFFFFFFu);
    coordinator->pulse = 0.8f;
    EXPECT_EQ(coordinator->ScaleColour(0x00FF00), 0x006600u); // 0.4 times
}

// With a sound device (SDL's dummy driver in the tests) the menu music, read while the intro
// shows, starts once it is there if "Music" is on, and Ctrl+M switches it.
TEST_F(VaCoordinatorTest, TheMenuMusicFollowsItsOptionAndCtrlMSwitchesIt) {
    const auto startWithSound = [this] {
        app = std::make_unique<VaApp>();
        app->registry->SetInt("VE_USE_AUDIO", 1);
        app->registry->SetInt("VE_DEBUG_AUDIO", 0);
        app->Init();
        ASSERT_NE(app->audio, nullptr);
        app->input = new VeInput(nullptr, std::make_unique<FakeInputSource>(&devices));
        app->CreateManagers();
        coordinator = app->coordinator;
    };
    startWithSound();
    Stop(); // quitting while the musics are read waits for the read and leaves nothing behind

    for (const bool on : {true, false}) {
        QmOptions stored;
        stored.Set(QmOptions::kMusic, on ? "1" : "0");
        ASSERT_TRUE(stored.SaveOptions());
        startWithSound();
        EXPECT_FALSE(app->audio->IsLoaded("Music"));
        for (int frame = 0; frame < 30; ++frame) { // more than the start-up has steps
            app->Frame();
        }
        EXPECT_TRUE(app->audio->IsLoaded("MusicInGame"));
        EXPECT_EQ(app->audio->IsPlaying(coordinator->musicChannel), on);
        EXPECT_EQ(app->audio->ChannelCount(), on ? 1 : 0);
        if (on) {
            Stop();
        }
    }
    // Silent so far; Ctrl+M starts it and stops it again.
    FrameWithKeys({VeKey::LeftCtrl, VeKey::M});
    EXPECT_EQ(coordinator->Option(QmOptions::kMusic), "1");
    EXPECT_TRUE(app->audio->IsPlaying(coordinator->musicChannel));
    FrameWithKeys({VeKey::LeftCtrl, VeKey::M});
    EXPECT_EQ(coordinator->Option(QmOptions::kMusic), "0");
    EXPECT_FALSE(app->audio->IsPlaying(coordinator->musicChannel));
}

// The game in a real window (the tests run under Xvfb), without sound.
class VaCoordinatorWindowTest : public HeadlessGame {
protected:
    void StartWindowed(bool software, bool quickStart = false) {
        VeScreen::ForceSoftwarePath(software);
        app = std::make_unique<VaApp>();
        app->FillSettings();
        app->registry->SetInt("VE_USE_AUDIO", 0);
        app->registry->SetInt("VE_DEBUG_INFO", 0);
        app->SetQuickStart(quickStart);
        app->Init();
        ASSERT_NE(app->screen, nullptr);
        app->CreateManagers();
        coordinator = app->coordinator;
    }
};

TEST_F(VaCoordinatorWindowTest, CtrlFSwitchesTheWindowButNotTheOption) {
    StartWindowed(false);
    VeScreen& screen = *app->screen;
    EXPECT_FALSE(screen.fullscreen);
    EXPECT_EQ(coordinator->HandleHotkeys(Keys(true, 'F')), Hotkey::Fullscreen);
    EXPECT_TRUE(screen.fullscreen);
    EXPECT_EQ(coordinator->Option(QmOptions::kFullscreen), "0");
    app->Frame();
    EXPECT_EQ(coordinator->HandleHotkeys(Keys(true, 'F')), Hotkey::Fullscreen);
    EXPECT_FALSE(screen.fullscreen);
    EXPECT_EQ(coordinator->Option(QmOptions::kFullscreen), "0");
}

TEST_F(VaCoordinatorWindowTest, DisplayOptionsReachTheScreenEveryFrame) {
    StartWindowed(false);
    VeScreen& screen = *app->screen;
    screen.screenDisplaySize = 0.5f;
    screen.screenColorMultiplier = 0.25f;
    screen.overlay.Fill(0x123456);
    app->Frame();
    EXPECT_FALSE(screen.fpsShown);
    EXPECT_EQ(screen.screenDisplaySize, 1.0f); // reset by every game frame
    EXPECT_EQ(screen.screenColorMultiplier, 1.0f);
    EXPECT_NE(screen.overlay.GetXY(320, 600), 0x123456u); // the menu's backdrop, drawn anew

    coordinator->HandleHotkeys(Keys(false, '0')); // F10: the display without vertical sync
    app->Frame();
    EXPECT_TRUE(screen.fpsShown);
    EXPECT_EQ(screen.fpsColours, VaCoordinator::kFpsColours);
    coordinator->SetOption(QmOptions::k3DGraphics, "0");
    app->Frame();
    EXPECT_FALSE(screen.threeD);
}

TEST_F(VaCoordinatorWindowTest, WithoutOpenGLThe3DViewIsSwitchedOffAndSaved) {
    StartWindowed(true);
    EXPECT_FALSE(app->screen->glEnabled);
    EXPECT_EQ(coordinator->Option(QmOptions::k3DGraphics), "0");
    EXPECT_EQ(coordinator->Option(QmOptions::kShadowsEnabled), "1");
    QmOptions stored;
    stored.LoadOptions();
    EXPECT_EQ(stored.Get(QmOptions::k3DGraphics), "0");
}

TEST_F(VaCoordinatorWindowTest, AQuickStartShowsTheIntroFirstAndMakesTheWorldAFewFramesLater) {
    StartWindowed(false, true);
    app->Frame();
    EXPECT_EQ(coordinator->CurrentMenuPage(), 0);
    EXPECT_NE(app->screen->overlay.GetXY(320, 600), 0u); // the intro is drawn without the world
    EXPECT_EQ(coordinator->environment, nullptr);
    EXPECT_EQ(app->screen->basicShader, nullptr) << "nor any shader";
    // The screen's shaders, one a frame, the tours, the art, the world.
    for (int frame = 0; frame < 5; ++frame) {
        app->Frame();
    }
    EXPECT_NE(app->screen->basicShader, nullptr);
    ASSERT_NE(coordinator->environment, nullptr);
    EXPECT_FALSE(coordinator->environment->tours.empty()); // the shipped tours, put into a new folder
    Stop();

    // Whatever needs the world at once makes it first.
    StartWindowed(false, true);
    std::string error;
    EXPECT_TRUE(coordinator->PlayMap(0, 0, error)) << error;
    EXPECT_EQ(app->scene, SceneRace);
}
