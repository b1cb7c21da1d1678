// The game as the player runs it, measured through the application's own frame:
// - a whole race frame (input, the race, the world's passes, the overlay, composition and
//   presentation, without frame pacing or vertical synchronisation) on a 20 x 20 map full of blocks,
//   pickups and fire with 20 cows walking, the racer running left and right, in 2D and in 3D with
//   shadows; the process's CPU time per frame (llvmpipe's rasterizer threads included) and the
//   wall time;
// - start-up: from creating the application (engine services, sound included, and the coordinator
//   with the world, its art and shaders, the 28 sounds) to the first presented frame of a race.
// Run under Xvfb: SDL_AUDIODRIVER=dummy xvfb-run -a build/bench/qm_coordinator_bench
#include "BenchGame.h"
#include "Coordinator/VaCoordinator.h"
#include "Environment/CoreEnvironmentManager/QmBlocks.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/QmClientGameplayManager.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <string>

namespace {

// Tour 0, map 0 of the game in folder: ground and ceilings of default blocks around the racer's
// corridor, rows of platforms with 20 cows walking on them, pickups and fire between them.
void WriteBusyMap(const std::string& folder) {
    QmCoreEnvironmentManager world;
    world.programMapsFolder = folder + "/NoShippedTours";
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

void RaceFrames(benchmark::State& state, const char* view) {
    BenchGame game("coordinator");
    WriteBusyMap(game.Folder());
    if (!game.Start({"--play", "0", "0", view, "--autoplay", BackAndForth(), "--fixed-dt", "0.016667"}) ||
        game.App()->coordinator->environment == nullptr) {
        state.SkipWithError("the game could not start a race (no window?)");
        return;
    }
    VaApp& app = *game.App();
    for (int i = 0; i < 120; ++i) { // past the intro's zoom
        app.Frame();
    }
    for (auto _ : state) {
        app.Frame();
    }
    const QmClientGameplayManager& race = *app.coordinator->gameplay;
    state.counters["cows"] = static_cast<double>(race.enemies.size());
    state.counters["racer_alive"] = race.Racer()->active;
    state.counters["in_race"] = app.scene == SceneRace ? 1.0 : 0.0;
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
    using Sound = BenchGame::Sound;
    using Vsync = BenchGame::Vsync;
    BenchGame game("coordinator");
    if (!game.Start({"--2d"}, Sound::On, Vsync::AsSaved)) { // puts the shipped tours in place
        state.SkipWithError("the game could not start (no window?)");
        return;
    }
    game.Stop();
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        if (!game.Start({"--play", "0", "0", "--3d"}, Sound::On, Vsync::AsSaved)) {
            state.SkipWithError("the game could not start (no window?)");
            return;
        }
        game.App()->Frame();
        const auto end = std::chrono::steady_clock::now();
        state.SetIterationTime(std::chrono::duration<double>(end - begin).count());
        game.Stop();
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
