#include "App/VeApp.h"

#include "App/VeRegistry.h"
#include "Input/VeInput.h"
#include "Screen/VeScreen.h"
#include "Support/LogCapture.h"
#include "Support/TempUserData.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
class TestApp : public VeApp {
public:
    void CreateManagers() override { managersCreated = true; }
    void Frame() override {
        ++frames;
        if (frames == quitAfter) {
            quitRequested = true;
        }
    }
    bool managersCreated = false;
    int frames = 0;
    int quitAfter = 3;
};

// The fingerprint and the progress lines (ending in "..") of start-up and shutdown among the logged
// texts.
std::vector<std::string> Progress(const LogCapture& log) {
    std::vector<std::string> found;
    for (const std::string& text : log.lines) {
        const bool progress = text.size() > 3 && text.compare(text.size() - 3, 3, "..\n") == 0;
        if (progress || text.rfind("App Fingerprint: ", 0) == 0) {
            found.push_back(text);
        }
    }
    return found;
}

void Settings(VeRegistry& registry, int console, int timer, int screen, int input, int audio, int debugInfo) {
    registry.SetInt("VE_USE_CONSOLE", console);
    registry.SetInt("VE_USE_TIMER", timer);
    registry.SetInt("VE_USE_SCREEN", screen);
    registry.SetInt("VE_USE_INPUT", input);
    registry.SetInt("VE_USE_AUDIO", audio);
    registry.SetInt("VE_DEBUG_INFO", debugInfo);
}
} // namespace

TEST(VeAppTest, StartsAndStopsOnlyTheSwitchedOnServicesWithTheirLines) {
    LogCapture log;
    {
        TestApp app;
        Settings(*app.registry, 1, 1, 0, 1, 2, 1); // input without a screen, audio set to 2: neither
        app.Init();
        EXPECT_NE(app.console, nullptr);
        EXPECT_EQ(app.screen, nullptr);
        EXPECT_EQ(app.input, nullptr);
        EXPECT_EQ(app.audio, nullptr);
        EXPECT_FALSE(app.ShouldQuit()); // no input manager to ask
        app.Shutdown();
        app.Shutdown(); // runs once (the lines below would repeat), and so does the destructor's call
    }
    EXPECT_EQ(Progress(log), (std::vector<std::string>{
                                 "App Fingerprint: [PRJ0019::VELNOS::v1.0]\n",
                                 "Creating Console..\n",
                                 "Initializing Timer..\n",
                                 "Shutting down Input..\n", // switched on, though nothing was made
                                 "Shutting down Console..\n",
                                 "Shutting down Registry..\n",
                             }));
}

TEST(VeAppTest, RunLoopsUntilQuitClearsAnEarlierQuitRequestAndWithoutDebugInfoPrintsOnlyTheFingerprint) {
    LogCapture log;
    {
        TestApp app;
        Settings(*app.registry, 1, 1, 0, 0, 0, 2);
        app.quitRequested = true; // Init starts afresh
        app.Run();
        EXPECT_TRUE(app.managersCreated);
        EXPECT_EQ(app.frames, 3);
        EXPECT_TRUE(app.ShouldQuit());
    } // the destructor stops the services
    EXPECT_EQ(Progress(log), (std::vector<std::string>{"App Fingerprint: [PRJ0019::VELNOS::v1.0]\n"}));
}

// Needs a display (the tests run under Xvfb) and SDL's dummy audio driver.
TEST(VeAppTest, FullStartUpConnectsScreenInputAndAudio) {
    TempUserData userData;
    LogCapture log;
    {
        TestApp app;
        app.windowWidth = 640;
        app.windowHeight = 640;
        Settings(*app.registry, 0, 1, 1, 1, 1, 1);
        app.registry->SetString("VE_ERROR_MESSAGE_SUFFIX", "\n\nSuffix.");
        app.Init();
        ASSERT_NE(app.screen, nullptr);
        ASSERT_NE(app.input, nullptr);
        ASSERT_NE(app.audio, nullptr);
        EXPECT_EQ(app.screen->input, app.input);
        EXPECT_EQ(app.screen->width, 640);
        EXPECT_EQ(app.screen->errorSuffix, "\n\nSuffix.");

        // The window's close button reaches ShouldQuit through the input manager.
        EXPECT_FALSE(app.ShouldQuit());
        SDL_Event quit{};
        quit.type = SDL_QUIT;
        SDL_PushEvent(&quit);
        app.input->Update();
        EXPECT_TRUE(app.ShouldQuit());
        app.registry->SetInt("VE_USE_INPUT", 0); // only read while input is switched on
        EXPECT_FALSE(app.ShouldQuit());
        app.registry->SetInt("VE_USE_INPUT", 1);
    }
    EXPECT_EQ(Progress(log), (std::vector<std::string>{
                                 "App Fingerprint: [PRJ0019::VELNOS::v1.0]\n",
                                 "Initializing Timer..\n",
                                 "Creating Screen..\n",
                                 "Initializing Input..\n",
                                 "Initializing Audio..\n",
                                 "Shutting down Audio..\n",
                                 "Shutting down Input..\n",
                                 "Shutting down Screen..\n",
                                 "Shutting down Registry..\n",
                             }));
}
