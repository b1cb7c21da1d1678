#include "Coordinator/VaApp.h"

#include "App/VeRegistry.h"
#include "Coordinator/VaCoordinator.h"
#include "FrontEnd/Options/QmOptions.h"
#include "Input/VeInput.h"
#include "Network/QmNetworkManager.h"
#include "Platform/VeLog.h"
#include "Platform/VeTime.h"
#include "Screen/VeScreen.h"

#include <cstdio>

VaApp::VaApp() {
    windowWidth = 640;
    windowHeight = 640;
}

VaApp::~VaApp() {
    delete network;
    delete coordinator; // only when Shutdown did not run
    coordinator = nullptr;
}

void VaApp::SetQuickStart(bool on) {
    quickStart = on;
    registry->SetInt("VE_DEFER_SHADERS", on ? 1 : 0);
}

void VaApp::FillSettings() {
    registry->SetString("VE_APP_FINGERPRINT", kAppFingerprint);
    registry->SetInt("VE_USE_TIMER", 1);
    registry->SetInt("VE_USE_SCREEN", 1);
    registry->SetInt("VE_USE_INPUT", 1);
    registry->SetInt("VE_USE_AUDIO", 1);
    registry->SetInt("VE_REQUIRE_OPENGL", 0);
    registry->SetInt("VE_LAUNCH_FULLSCREEN", 0);
    registry->SetInt("VE_LAUNCH_CENTERED", 1);
    registry->SetInt("VE_USE_CONSOLE", 0);
    registry->SetString("VE_WINDOW_ICON", "Assets/Icon.png");
    registry->SetInt("VE_DEBUG_AUDIO", 1);
    registry->SetInt("VE_DEBUG_INFO", 1);
    registry->SetString("VE_ERROR_MESSAGE_SUFFIX", kErrorSuffix);
}

void VaApp::UseCommandLine(const QmCommandLine& line) {
    commandLine = line;
    VeScreen::ForceSoftwarePath(line.software);
    SetFixedFrameDelta(line.fixedDelta);
}

void VaApp::CreateManagers() {
    if (screen != nullptr && !commandLine.screenshot.empty()) {
        screen->SetFrameCapture(true);
    }
    if (commandLine.fixedDelta > 0.0f) {
        frameClock.Install(commandLine.fixedDelta);
    }
    coordinator = new VaCoordinator(this);
    if (!commandLine.Plays() && !commandLine.Edits()) {
        network = new QmNetworkManager();
        network->SetService(QmNetworkManager::ChooseService(commandLine.service));
        network->SetAutoUpdates(coordinator->Option(QmOptions::kAutoUpdates) == "1");
        network->Start();
    }
    if (commandLine.Plays()) {
        std::string error;
        if (!coordinator->PlayMap(commandLine.playTour, commandLine.playMap, error)) {
            std::fprintf(stderr, "quillmaze: --play %d %d: %s.\n", commandLine.playTour, commandLine.playMap,
                         error.c_str());
            playRefused = true;
            quitRequested = true;
        }
    }
    if (commandLine.Edits()) {
        std::string error;
        if (!coordinator->OpenEditor(commandLine.editTour, commandLine.editMap, error)) {
            std::fprintf(stderr, "quillmaze: --edit %d %d: %s.\n", commandLine.editTour, commandLine.editMap,
                         error.c_str());
            playRefused = true;
            quitRequested = true;
        }
    }
}

int VaApp::ExitCode() const {
    if (playRefused) {
        return 2;
    }
    return screenshotWritten ? 0 : 1;
}

void VaApp::SwitchScene(int32_t newScene) {
    previousScene = scene;
    scene = newScene;
    sceneChanged = previousScene != newScene;
}

void VaApp::Frame() {
    const double now = static_cast<double>(GetTicks());
    frameDelta = static_cast<float>((now - lastTicks) * 0.001);
    lastTicks = now;
    if (GetFixedFrameDelta() > 0.0f) {
        frameDelta = GetFixedFrameDelta();
    }

    if (input != nullptr) {
        input->Update();
    }
    if (screen != nullptr) {
        screen->Clear();
        screen->PrepareFrame();
    }
    if (coordinator != nullptr) {
        coordinator->GameFrame();
    }
    if (network != nullptr) {
        network->Update();
    }
    sceneChanged = false;
    if (input != nullptr) {
        input->ClearPressed();
    }
    if (screen != nullptr) {
        screen->Present(frameDelta);
    }

    ++framesRun;
    if (commandLine.frames > 0 && framesRun >= commandLine.frames) {
        quitRequested = true;
    }
    frameClock.Advance();
}

void VaApp::WriteScreenshot() {
    if (commandLine.screenshot.empty()) {
        return;
    }
    screenshotWritten = screen != nullptr && screen->SaveScreenshot(commandLine.screenshot);
    if (!screenshotWritten) {
        Log("Could not write the screenshot %s.\n", commandLine.screenshot.c_str());
    }
}

void VaApp::Shutdown() {
    if (gameShutDown) {
        return;
    }
    gameShutDown = true;
    WriteScreenshot();
    delete network;
    network = nullptr;
    delete coordinator;
    coordinator = nullptr;
    frameClock.Uninstall();
}
