// A whole world frame of the renderer on a 20 x 20 map full of blocks, pickups and 20 cows, with
// the racer running: update, the passes with the entities, composition and presentation (without
// frame pacing or vertical synchronisation), in 2D and in 3D with shadows and multisampling; and
// the 2D frame without the screen's presentation; and the 3D frame of an empty map (the border
// ring, the backdrop and the engine's fixed work: clears, resolve, composition, presentation). Times are the
// process's CPU time per frame (llvmpipe's rasterizer threads included) and the wall time. Run under Xvfb:
// xvfb-run -a build/bench/qm_environment_client_bench
#include "Environment/ArEnvironmentManager.h"
#include "Environment/ClientEnvironmentManager/QmWorldViewHost.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Platform/VeRandom.h"
#include "Screen/Surface/VeImage.h"
#include "Screen/VeScreen.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

class BenchHost : public QmWorldViewHost {
public:
    bool ThreeDEnabled() const override { return threeD; }
    bool ShadowsEnabled() const override { return shadows; }
    bool InRace() const override { return true; }
    QmRacerView Racer() const override { return racer; }
    float FrameTime() const override { return 1.0f / 60.0f; }

    bool threeD = false;
    bool shadows = true;
    QmRacerView racer;
};

struct Scene {
    Scene() {
        std::filesystem::current_path(QM_SOURCE_DIR);
        setenv("QUILLMAZE_NO_DIALOGS", "1", 1);
        folder = (std::filesystem::temp_directory_path() / ("quillmaze-bench-" + std::to_string(getpid())))
                     .string();
        setenv("QUILLMAZE_USER_DATA", folder.c_str(), 1);
        SetLogSink([](const std::string&) {});
        QmCoreEnvironmentManager seed;
        seed.programMapsFolder = folder + "/NoShippedTours";
        seed.NewTour();
        screen = std::make_unique<VeScreen>(640, 640, false, false, true, "", "");
        screen->SetFramePacing(false);
        world = std::make_unique<ArEnvironmentManager>(*screen, host);
        for (int size : {64, 32, 16}) {
            images.push_back(
                std::make_unique<VeImage>("Assets/Characters/Cow/Cow_" + std::to_string(size) + ".png"));
            world->RegisterCowImage(size, images.back().get());
        }
        host.racer.exists = true;
        host.racer.y = 13.0f * 32.0f;
    }

    ~Scene() {
        world.reset();
        screen.reset();
        SetLogSink(nullptr);
        DeleteFolder(folder);
    }

    // Ground and platforms of default blocks, pickups above them, 20 cows on the platforms; or
    // nothing at all.
    void FillMap(bool empty) {
        SeedRand(99);
        world->ClearMap();
        world->SetBlockSize(32);
        if (empty) {
            return;
        }
        const BlockId pickups[5] = {Block::JumpImpulse, Block::SpeedUp, Block::FlipVision, Block::RedGateKey,
                                    Block::DiscoConfusion};
        for (int x = 0; x < 20; ++x) {
            for (int y = 0; y < 20; ++y) {
                BlockId id = Block::Blank;
                if (y >= 14 || (y % 4 == 1 && (x + y) % 7 < 5)) {
                    id = 1 + (x * 3 + y) % 17;
                } else if (y % 4 == 0 && x % 3 == 1) {
                    id = pickups[(x + y) % 5];
                } else if (y % 4 == 3 && x % 5 == 2) {
                    id = Block::Fire;
                }
                world->SetBlock(x, y, id);
            }
        }
        for (int i = 0; i < 20; ++i) {
            cows.emplace_back(static_cast<float>((i * 7) % 20) * 32.0f,
                              static_cast<float>(4 * (i % 3)) * 32.0f);
        }
    }

    void Frame(bool present = true) {
        screen->Clear();
        screen->PrepareFrame();
        screen->overlay.Fill(0);
        screen->threeD = world->ThreeDActive();
        host.racer.x += 2.0f;
        if (host.racer.x > 600.0f) {
            host.racer.x = 0.0f;
        }
        world->Update();
        world->WorldFrame([this](bool) {
            for (const auto& cow : cows) {
                world->DrawEntityAt(QmRaceDrawer::EnemyEntity, cow.first, cow.second, 1.0f);
            }
            world->DrawEntityAt(QmRaceDrawer::RacerEntity, host.racer.x, host.racer.y, 1.0f);
        });
        if (present) {
            screen->Present(1.0f / 60.0f);
        }
    }

    std::string folder;
    BenchHost host;
    std::unique_ptr<VeScreen> screen;
    std::unique_ptr<ArEnvironmentManager> world;
    std::vector<std::unique_ptr<VeImage>> images;
    std::vector<std::pair<float, float>> cows;
};

void RunFrames(benchmark::State& state, bool threeD, bool shadows = true, bool present = true,
               bool empty = false) {
    Scene scene;
    scene.FillMap(empty);
    scene.host.threeD = threeD;
    scene.host.shadows = shadows;
    scene.world->cameraZoom = 0.0f;
    for (int i = 0; i < 3; ++i) {
        scene.Frame();
    }
    const int64_t callsBefore = scene.world->DrawCalls();
    int64_t frames = 0;
    for (auto _ : state) {
        scene.Frame(present);
        ++frames;
    }
    state.counters["draw_calls_per_frame"] =
        frames > 0 ? static_cast<double>(scene.world->DrawCalls() - callsBefore) / static_cast<double>(frames)
                   : 0.0;
}

void BM_WorldFrame2D(benchmark::State& state) {
    RunFrames(state, false);
}

// The renderer's own share of a 2D frame: everything but the screen's upload and presentation.
void BM_World2DWithoutPresent(benchmark::State& state) {
    RunFrames(state, false, true, false);
}

void BM_WorldFrame3DShadows(benchmark::State& state) {
    RunFrames(state, true);
}

void BM_WorldFrame3DNoShadows(benchmark::State& state) {
    RunFrames(state, true, false);
}

void BM_WorldFrame3DShadowsEmptyMap(benchmark::State& state) {
    RunFrames(state, true, true, true, true);
}

} // namespace

BENCHMARK(BM_WorldFrame2D)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->MinTime(2.0);
BENCHMARK(BM_World2DWithoutPresent)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->MinTime(2.0);
BENCHMARK(BM_WorldFrame3DNoShadows)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->MinTime(3.0);
BENCHMARK(BM_WorldFrame3DShadows)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->MinTime(3.0);
BENCHMARK(BM_WorldFrame3DShadowsEmptyMap)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->MinTime(3.0);
