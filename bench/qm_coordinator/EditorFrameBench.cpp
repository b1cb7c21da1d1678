// The editor's frame in 3D with a picking pass every frame (the mouse moves all the time), beside
// a 3D race frame with shadows on the same busy map, in the same run: the editor's frame must be
// no slower than the race's.
#include "BenchGame.h"
#include "Coordinator/VaCoordinator.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Input/VeInput.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {
// Tour 0, map 0 of the game in folder: a full 20 x 20 map of blocks, pickups, fire and a row of
// cows.
void WriteFullMap(const std::string& folder) {
    QmCoreEnvironmentManager world;
    world.programMapsFolder = folder + "/NoShippedTours";
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

void Frames(benchmark::State& state, bool editor) {
    BenchGame game("editor");
    WriteFullMap(game.Folder());
    const bool started =
        editor ? game.Start({"--edit", "0", "0", "--3d", "--fixed-dt", "0.016667"})
               : game.Start({"--play", "0", "0", "--3d", "--autoplay", "0:2", "--fixed-dt", "0.016667"});
    if (!started || game.App()->coordinator->environment == nullptr) {
        state.SkipWithError("the game could not start (no window?)");
        return;
    }
    VaApp& app = *game.App();
    for (int i = 0; i < 120; ++i) {
        app.Frame();
    }
    for (auto _ : state) {
        if (editor && app.input != nullptr) {
            app.input->mouseMovePending = true; // a picking pass in every frame
        }
        app.Frame();
    }
    state.counters["editor_scene"] = app.scene == SceneEditor ? 1.0 : 0.0;
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
