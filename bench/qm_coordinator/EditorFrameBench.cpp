// The editor's frame in 3D with a picking pass every frame (the mouse moves all the time), beside
// a 3D race frame with shadows on the same busy map, in the same run: the editor's frame must be
// no slower than the race's.
#include "App/VeRegistry.h"
#include "Coordinator/QmCommandLine.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Editor/QmEditor.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "FrontEnd/Options/QmOptions.h"
#include "Input/VeInput.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Screen/VeScreen.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

namespace {
class EditorBenchFolder {
public:
    EditorBenchFolder() {
        std::filesystem::current_path(QM_SOURCE_DIR);
        setenv("QUILLMAZE_NO_DIALOGS", "1", 1);
        path =
            (std::filesystem::temp_directory_path() / ("quillmaze-editor-bench-" + std::to_string(getpid())))
                .string();
        setenv("QUILLMAZE_USER_DATA", path.c_str(), 1);
        SetLogSink([](const std::string&) {});
        // Tour 0, map 0: a full 20 x 20 map of blocks, pickups, fire and a row of cows.
        QmCoreEnvironmentManager world;
        world.programMapsFolder = path + "/NoShippedTours";
        world.NewTour();
        world.ClearMap();
        world.SetBlockSize(32);
        const BlockId specials[4] = {Block::JumpImpulse, Block::SpeedUp, Block::Fire, Block::RedGateKey};
        for (int x = 0; x < 20; ++x) {
            for (int y = 0; y < 20; ++y) {
                BlockId id = Block::Blank;
                if (y % 4 == 0 || (x + y) % 7 < 2) {
                    id = 1 + (x * 3 + y) % 17;
                } else if (x % 3 == 1) {
                    id = specials[(x + y) % 4];
                } else if (y == 3 && x % 4 == 2) {
                    id = Block::Enemy;
                }
                world.SetBlock(x, y, id);
            }
        }
        world.SetBlock(0, 18, Block::Start);
        world.SetBlock(19, 1, Block::Finish);
        world.SaveMapToTour(true);
    }
    ~EditorBenchFolder() {
        SetLogSink(nullptr);
        DeleteFolder(path);
    }
    std::string path;
};

std::unique_ptr<VaApp> Start(const std::vector<std::string>& arguments) {
    QmCommandLine line;
    std::vector<std::string> all{"quillmaze"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    if (line.Parse(all) != QmCommandLine::Result::Run) {
        return nullptr;
    }
    auto app = std::make_unique<VaApp>();
    app->FillSettings();
    app->registry->SetInt("VE_USE_AUDIO", 0);
    app->registry->SetInt("VE_DEBUG_INFO", 0);
    app->UseCommandLine(line);
    app->Init();
    if (app->screen == nullptr) {
        return nullptr;
    }
    app->screen->SetFramePacing(false);
    app->CreateManagers();
    return app;
}

void Frames(benchmark::State& state, bool editor) {
    EditorBenchFolder folder;
    std::unique_ptr<VaApp> app =
        editor ? Start({"--edit", "0", "0", "--3d", "--fixed-dt", "0.016667"})
               : Start({"--play", "0", "0", "--3d", "--autoplay", "0:2", "--fixed-dt", "0.016667"});
    if (!app || app->coordinator->environment == nullptr) {
        state.SkipWithError("the game could not start (no window?)");
        return;
    }
    app->coordinator->SetOption(QmOptions::kVsync, "0");
    for (int i = 0; i < 120; ++i) {
        app->Frame();
    }
    for (auto _ : state) {
        if (editor && app->input != nullptr) {
            app->input->mouseMovePending = true; // a picking pass in every frame
        }
        app->Frame();
    }
    state.counters["editor_scene"] = app->scene == SceneEditor ? 1.0 : 0.0;
    app->Shutdown();
    app.reset();
}

void BM_EditorFrame3DWithPicking(benchmark::State& state) {
    Frames(state, true);
}

void BM_RaceFrame3DSameMap(benchmark::State& state) {
    Frames(state, false);
}
} // namespace

BENCHMARK(BM_EditorFrame3DWithPicking)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);
BENCHMARK(BM_RaceFrame3DSameMap)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);
