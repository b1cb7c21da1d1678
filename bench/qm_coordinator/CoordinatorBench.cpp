// The game as the player runs it, measured through the application's own frame:
// - a whole race frame (input, the race, the world's passes, the overlay, composition and
//   presentation, without frame pacing or vertical synchronisation) on a 20 x 20 map full of blocks,
//   pickups and fire with 20 cows walking, the racer running left and right, in 2D and in 3D with
//   shadows; the process's CPU time per frame (llvmpipe's rasterizer threads included) and the
//   wall time;
// - start-up: from creating the application (engine services, sound included, and the coordinator
//   with the world, its art and shaders, the 28 sounds) to the first presented frame of a race.
// Run under Xvfb: SDL_AUDIODRIVER=dummy xvfb-run -a build/bench/qm_coordinator_bench
#include "App/VeRegistry.h"
#include "Coordinator/QmCommandLine.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Environment/CoreEnvironmentManager/QmBlocks.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "FrontEnd/Options/QmOptions.h"
#include "Gameplay/QmClientGameplayManager.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Screen/VeScreen.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

// A user data folder of its own for the benchmark's process, removed at the end.
class BenchFolder {
public:
    BenchFolder() {
        std::filesystem::current_path(QM_SOURCE_DIR);
        setenv("QUILLMAZE_NO_DIALOGS", "1", 1);
        path = (std::filesystem::temp_directory_path() /
                ("quillmaze-coordinator-bench-" + std::to_string(getpid())))
                   .string();
        setenv("QUILLMAZE_USER_DATA", path.c_str(), 1);
        SetLogSink([](const std::string&) {});
        WriteBusyMap();
    }
    ~BenchFolder() {
        SetLogSink(nullptr);
        DeleteFolder(path);
    }

    // Tour 0, map 0: ground and ceilings of default blocks around the racer's corridor, rows of
    // platforms with 20 cows walking on them, pickups and fire between them.
    void WriteBusyMap() {
        QmCoreEnvironmentManager world;
        world.programMapsFolder = path + "/NoShippedTours";
        world.NewTour();
        world.ClearMap();
        world.SetBlockSize(32);
        const BlockId pickups[5] = {Block::JumpImpulse, Block::SpeedUp, Block::FlipVision, Block::RedGateKey,
                                    Block::DiscoConfusion};
        for (int x = 0; x < 20; ++x) {
            for (int y = 0; y < 20; ++y) {
                BlockId id = Block::Blank;
                const bool solidRow = y == 4 || y == 8 || y == 12 || y == 17 || y == 19;
                const bool cowRow = y == 3 || y == 7 || y == 11;
                if (solidRow) {
                    id = 1 + (x * 3 + y) % 17;
                } else if (cowRow) {
                    id = Block::Blank;
                } else if (y == 18) {
                    id = x == 0 ? Block::Start : Block::Blank;
                } else if ((x + y) % 7 < 3) {
                    id = 1 + (x * 5 + y) % 17;
                } else if (x % 3 == 1) {
                    id = pickups[(x + y) % 5];
                } else if (x % 5 == 2) {
                    id = Block::Fire;
                }
                world.SetBlock(x, y, id);
            }
        }
        for (int i = 0; i < 20; ++i) {
            const int row = i < 7 ? 3 : (i < 14 ? 7 : 11);
            world.SetBlock(1 + (i % 7) * 3, row, Block::Enemy);
        }
        world.SetBlock(19, 0, Block::Finish);
        world.SaveMapToTour(true);
    }

    std::string path;
};

// Right for two seconds, then left for two, for ten minutes.
std::string BackAndForth() {
    std::string text = "0:2";
    for (int64_t t = 2000; t < 600000; t += 2000) {
        const bool wasRight = (t / 2000) % 2 == 1;
        text.append(";").append(std::to_string(t)).append(wasRight ? ":5;" : ":4;");
        text.append(std::to_string(t + 1)).append(wasRight ? ":1" : ":2");
    }
    return text;
}

std::unique_ptr<VaApp> StartGame(const std::vector<std::string>& arguments, bool sound) {
    QmCommandLine line;
    std::vector<std::string> all{"quillmaze"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    if (line.Parse(all) != QmCommandLine::Result::Run) {
        return nullptr;
    }
    auto app = std::make_unique<VaApp>();
    app->FillSettings();
    app->registry->SetInt("VE_USE_AUDIO", sound ? 1 : 0);
    app->registry->SetInt("VE_DEBUG_INFO", 0);
    app->registry->SetInt("VE_DEBUG_AUDIO", 0);
    app->UseCommandLine(line);
    app->Init();
    if (app->screen == nullptr) {
        return nullptr;
    }
    app->screen->SetFramePacing(false);
    app->CreateManagers();
    return app;
}

void StopGame(std::unique_ptr<VaApp>& app) {
    app->Shutdown();
    app.reset();
}

void RaceFrames(benchmark::State& state, const char* view) {
    BenchFolder folder;
    std::unique_ptr<VaApp> app =
        StartGame({"--play", "0", "0", view, "--autoplay", BackAndForth(), "--fixed-dt", "0.016667"}, false);
    if (!app || app->coordinator->environment == nullptr) {
        state.SkipWithError("the game could not start a race (no window?)");
        return;
    }
    app->coordinator->SetOption(QmOptions::kVsync, "0");
    for (int i = 0; i < 120; ++i) { // past the intro's zoom
        app->Frame();
    }
    for (auto _ : state) {
        app->Frame();
    }
    const QmClientGameplayManager& race = *app->coordinator->gameplay;
    state.counters["cows"] = static_cast<double>(race.enemies.size());
    state.counters["racer_alive"] = race.Racer()->active;
    state.counters["in_race"] = app->scene == SceneRace ? 1.0 : 0.0;
    StopGame(app);
}

void BM_RaceFrame2D(benchmark::State& state) {
    RaceFrames(state, "--2d");
}

void BM_RaceFrame3DShadows(benchmark::State& state) {
    RaceFrames(state, "--3d");
}

// Launch to the first presented frame of a race on the first shipped map, in a game folder that
// has been set up before (a player's usual start).
void BM_StartUpToFirstFrame(benchmark::State& state) {
    BenchFolder folder;
    DeleteFolder(folder.path);
    {
        std::unique_ptr<VaApp> first = StartGame({"--2d"}, true); // puts the shipped tours in place
        if (!first) {
            state.SkipWithError("the game could not start (no window?)");
            return;
        }
        StopGame(first);
    }
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        std::unique_ptr<VaApp> app = StartGame({"--play", "0", "0", "--3d"}, true);
        if (!app) {
            state.SkipWithError("the game could not start (no window?)");
            return;
        }
        app->Frame();
        const auto end = std::chrono::steady_clock::now();
        state.SetIterationTime(std::chrono::duration<double>(end - begin).count());
        StopGame(app);
    }
}

} // namespace

BENCHMARK(BM_RaceFrame2D)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->MinTime(2.0);
BENCHMARK(BM_RaceFrame3DShadows)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->MinTime(3.0);
BENCHMARK(BM_StartUpToFirstFrame)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(3);
