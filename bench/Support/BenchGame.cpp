#include "BenchGame.h"

#include "App/VeRegistry.h"
#include "Coordinator/QmCommandLine.h"
#include "Coordinator/VaCoordinator.h"
#include "FrontEnd/Options/QmOptions.h"
#include "FrontEnd/QmFrontEnd.h"
#include "FrontEnd/QmMenuPages.h"
#include "Input/VeInput.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Screen/VeScreen.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <unistd.h>

BenchGame::BenchGame(const std::string& name) : name(name) {
    std::filesystem::current_path(QM_SOURCE_DIR);
    setenv("QUILLMAZE_NO_DIALOGS", "1", 1);
    folder = (std::filesystem::temp_directory_path() /
              ("quillmaze-" + name + "-bench-" + std::to_string(getpid())))
                 .string();
    setenv("QUILLMAZE_USER_DATA", folder.c_str(), 1);
    SetLogSink([](const std::string&) {});
}

BenchGame::~BenchGame() {
    Stop();
    SetLogSink(nullptr);
    DeleteFolder(folder);
    if (stopAsked) {
        std::fprintf(stderr, "%s: stopped on request.\n", name.c_str());
        std::exit(EXIT_FAILURE);
    }
}

bool BenchGame::Start(const std::vector<std::string>& arguments, Sound sound, Vsync vsync) {
    Stop();
    if (stopAsked) {
        return false;
    }
    std::vector<std::string> all{"quillmaze"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    QmCommandLine line;
    if (line.Parse(all) != QmCommandLine::Result::Run) {
        return false;
    }
    app = std::make_unique<VaApp>();
    app->FillSettings();
    app->registry->SetInt("VE_USE_AUDIO", sound == Sound::On ? 1 : 0);
    app->registry->SetInt("VE_DEBUG_INFO", 0);
    app->registry->SetInt("VE_DEBUG_AUDIO", 0);
    app->UseCommandLine(line);
    app->Init();
    if (app->screen == nullptr) {
        app.reset();
        return false;
    }
    app->screen->SetFramePacing(false);
    app->CreateManagers();
    if (vsync == Vsync::Off && app->coordinator != nullptr) {
        app->coordinator->SetOption(QmOptions::kVsync, "0");
    }
    return true;
}

bool BenchGame::StartOnMainMenu(const std::vector<std::string>& more) {
    std::vector<std::string> arguments{"--2d", "--fixed-dt", "0.016667"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    if (!Start(arguments) || app->coordinator == nullptr) {
        return false;
    }
    app->coordinator->FrontEnd().MenuPages().SetPage(QmMenuPages::kMainMenu);
    return true;
}

bool BenchGame::StartRace(const ShippedRun& run, bool threeD) {
    return Start({"--play", std::to_string(run.tour), std::to_string(run.map), threeD ? "--3d" : "--2d",
                  "--autoplay", run.recording.ToText(), "--fixed-dt", "0.016667"}) &&
           app->coordinator != nullptr && app->scene == SceneRace;
}

bool BenchGame::RaceAgain(const ShippedRun& run, bool threeD) {
    app->commandLine.autoplay = run.recording;
    app->coordinator->SetOption(QmOptions::k3DGraphics, threeD ? "1" : "0");
    std::string error;
    return app->coordinator->PlayMap(run.tour, run.map, error);
}

bool BenchGame::StopAsked() {
    stopAsked = stopAsked || (app && app->input != nullptr && app->input->QuitRequested());
    return stopAsked;
}

void BenchGame::Stop() {
    if (app) {
        StopAsked();
        app->Shutdown();
        app.reset();
    }
}
