#pragma once
// Shared set-up of the screen's tests: they run from the source folder (the shaders are read from
// "Shaders/..."), with scripted message boxes and the log captured.
#include "Screen/VeScreen.h"

#include "Support/HaltCapture.h"
#include "Support/LogCapture.h"
#include "Support/Screenshot.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

class ScreenTestBase : public ::testing::Test {
protected:
    void SetUp() override {
        previousFolder = std::filesystem::current_path();
        std::filesystem::current_path(QM_SOURCE_DIR);
        setenv("QUILLMAZE_NO_DIALOGS", "1", 1);
    }

    void TearDown() override {
        screen.reset();
        VeScreen::ForceSoftwarePath(false);
        std::filesystem::current_path(previousFolder);
    }

    VeScreen& OpenScreen(bool software) {
        VeScreen::ForceSoftwarePath(software);
        screen = std::make_unique<VeScreen>(640, 640, false, false, true, "", "\n\nsuffix");
        screen->SetFramePacing(false);
        screen->SetFrameCapture(true);
        return *screen;
    }

    // One frame as the main loop ends it: clear the window, mark the frame prepared, present.
    ScreenshotImage PresentAndRead() {
        screen->Clear();
        screen->PrepareFrame();
        screen->Present(1.0f / 60.0f);
        ScreenshotImage image;
        EXPECT_TRUE(screen->ReadLastFrame(image.pixels, image.width, image.height));
        return image;
    }

    // Puts an event for the screen's window on the system's queue: a window event of that kind, a
    // wheel step, or any other type as it is.
    void Push(Uint32 type, Uint8 windowEvent = 0, Sint32 wheelY = 0) {
        SDL_Event event{};
        event.type = type;
        event.common.timestamp = SDL_GetTicks();
        event.window.windowID = SDL_GetWindowID(screen->window);
        event.window.event = windowEvent;
        if (type == SDL_MOUSEWHEEL) {
            event.wheel.y = wheelY;
            event.wheel.direction = SDL_MOUSEWHEEL_NORMAL;
        }
        ASSERT_EQ(SDL_PushEvent(&event), 1);
    }

    std::unique_ptr<VeScreen> screen;
    LogCapture logged;
    std::string& log = logged.all;

private:
    std::filesystem::path previousFolder;
};

// Whether the action fails an assertion in the engine's source file (its message names the file).
template <typename Action> bool FailsAssertionIn(const std::string& sourceFile, Action action) {
    MessageBoxCapture capture;
    try {
        action();
    } catch (const HaltIntercepted& halt) {
        return halt.title == "Assertion failed" &&
               halt.text.find("engine/Source/Screen/" + sourceFile) != std::string::npos;
    }
    return false;
}
