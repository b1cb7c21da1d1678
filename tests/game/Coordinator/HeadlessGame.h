#pragma once
// Test support: the game's application object with its coordinator, without a window and a sound
// device (Start) or in a real window on the X server (StartInWindow), fed by a scripted keyboard.
// Time is driven by the test; what the game logs is kept in `log`. The game's data is read from
// the source folder; the user data goes to a temporary folder.
#include "App/VeRegistry.h"
#include "Coordinator/QmCommandLine.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Input/VeInput.h"
#include "Platform/VeLog.h"
#include "Platform/VeTime.h"
#include "Screen/VeScreen.h"
#include "Support/LogCapture.h"
#include "Support/TempUserData.h"
#include "engine/Input/FakeInputSource.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

class HeadlessGame : public ::testing::Test {
protected:
    void SetUp() override {
        previousFolder = std::filesystem::current_path();
        std::filesystem::current_path(QM_SOURCE_DIR);
        SetTimeSource([this] { return now; });
        setenv("QUILLMAZE_NO_DIALOGS", "1", 1);
    }

    void TearDown() override {
        Stop();
        SetTimeSource(nullptr);
        SetFixedFrameDelta(0.0f);
        VeScreen::ForceSoftwarePath(false);
        std::filesystem::current_path(previousFolder);
    }

    // Creates the application and its coordinator (as CreateManagers does after Init).
    void Start(const std::vector<std::string>& arguments = {}) {
        app = std::make_unique<VaApp>();
        app->UseCommandLine(CommandLine(arguments));
        app->input = new VeInput(nullptr, std::make_unique<FakeInputSource>(&devices));
        app->CreateManagers();
        coordinator = app->coordinator;
    }

    // The game in a real window (the tests run under Xvfb) with this command line, sound only when
    // asked for; the keyboard is still the test's.
    void StartInWindow(const std::vector<std::string>& arguments, bool sound = false) {
        app = std::make_unique<VaApp>();
        app->FillSettings();
        app->registry->SetInt("VE_USE_AUDIO", sound ? 1 : 0);
        app->registry->SetInt("VE_DEBUG_INFO", 0);
        app->UseCommandLine(CommandLine(arguments));
        app->Init();
        ASSERT_NE(app->screen, nullptr);
        app->screen->SetFramePacing(false);
        delete app->input;
        app->input = new VeInput(app->screen, std::make_unique<FakeInputSource>(&devices));
        app->screen->input = app->input;
        app->CreateManagers();
        coordinator = app->coordinator;
    }

    void Stop() {
        if (app) {
            app->Shutdown();
            delete app->input;
            app->input = nullptr;
            app.reset();
            coordinator = nullptr;
        }
    }

    // One frame, 17 ms after the last one.
    void Frame() {
        now += 17;
        app->Frame();
    }

    // A frame with these keys going down, then one with them up again.
    void FrameWithKeys(std::initializer_list<int> keys) {
        for (int key : keys) {
            devices.keys[key] = 1;
        }
        app->Frame();
        for (int key : keys) {
            devices.keys[key] = 0;
        }
        app->Frame();
    }

    TempUserData userData;
    FakeInputSource::Devices devices;
    std::unique_ptr<VaApp> app;
    VaCoordinator* coordinator = nullptr;
    int64_t now = 1000;
    LogCapture log;

private:
    static QmCommandLine CommandLine(const std::vector<std::string>& arguments) {
        std::vector<std::string> line{"quillmaze"};
        line.insert(line.end(), arguments.begin(), arguments.end());
        QmCommandLine commandLine;
        EXPECT_EQ(commandLine.Parse(line), QmCommandLine::Result::Run) << commandLine.Error();
        return commandLine;
    }

    std::filesystem::path previousFolder;
};
