#pragma once
// Test support: the game's application object with its coordinator but without a window or a
// sound device, fed by a scripted keyboard. Time is driven by the test. The game's data is read
// from the source folder; the user data goes to a temporary folder.
#include "Coordinator/QmCommandLine.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Input/VeInput.h"
#include "Platform/VeTime.h"
#include "Screen/VeScreen.h"
#include "Support/TempUserData.h"
#include "engine/Input/FakeInputSource.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

class HeadlessGame : public ::testing::Test {
protected:
    void SetUp() override {
        previousFolder = std::filesystem::current_path();
        std::filesystem::current_path(QM_SOURCE_DIR);
        SetTimeSource([this] { return now; });
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
        std::vector<std::string> line{"quillmaze"};
        line.insert(line.end(), arguments.begin(), arguments.end());
        QmCommandLine commandLine;
        ASSERT_EQ(commandLine.Parse(line), QmCommandLine::Result::Run);
        app = std::make_unique<VaApp>();
        app->UseCommandLine(commandLine);
        app->input = new VeInput(nullptr, std::make_unique<FakeInputSource>(&devices));
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

private:
    std::filesystem::path previousFolder;
};
