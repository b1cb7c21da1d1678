// The race's cost per frame on a busy map, and a whole simulated minute of racing.
//   BM_CoreFrameUpdate   one CoreUpdate: 40 cows and the racer on a 20 x 20 map (goal < 50 us)
//   BM_ClientFrameUpdate one full race frame: input, the ghost's replay, the core update, drawing calls
//   BM_SimulatedRace60s  the countdown and 60 s of race at 60 frames a second (goal < 0.1 s)
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/QmClientGameplayManager.h"
#include "Gameplay/QmRaceAudio.h"
#include "Gameplay/QmRaceControls.h"
#include "Gameplay/QmRaceDrawer.h"
#include "Gameplay/QmRaceHost.h"
#include "Gameplay/QmRaceSimulator.h"
#include "Gameplay/QmRecordedControls.h"
#include "Platform/VeRandom.h"
#include "Platform/VeTime.h"

#include <benchmark/benchmark.h>

namespace {
// Five corridors of eight cows each, walled off from a pocket on the left where the racer and the
// ghost run into the wall and stay alive.
void BuildBusyMap(QmCoreEnvironmentManager& world) {
    world.ClearMap();
    world.SetBlockSize(32);
    world.mapName = "Busy";
    for (int row = 0; row < 20; ++row) {
        world.SetBlock(2, row, 3);
    }
    for (const int floor : {3, 7, 11, 15, 19}) {
        for (int column = 0; column < 20; ++column) {
            world.SetBlock(column, floor, 2);
        }
        for (int column = 3; column < 19; column += 2) {
            world.SetBlock(column, floor - 1, Block::Enemy);
        }
    }
    world.SetBlock(0, 2, Block::Start);
    world.startX = 0.0f;
    world.startY = 2.0f;
}

struct BusyRace {
    BusyRace() : controls(Right(), [this] { return race->RaceTime(); }) {
        SeedRand(7);
        SetTimeSource([this] { return now; });
        BuildBusyMap(world);
        race = std::make_unique<QmClientGameplayManager>(world, audio, host, controls, drawer);
        race->SetReplay(Right());
        race->StartRace(false, true);
    }
    ~BusyRace() {
        race.reset();
        SetTimeSource(nullptr);
    }
    static QmRecording Right() {
        QmRecording recording;
        recording.Add(0, QmRecording::RightPressed);
        return recording;
    }

    int64_t now = 1000;
    QmCoreEnvironmentManager world;
    QmRaceAudio audio;
    QmRaceHost host;
    QmRaceDrawer drawer;
    QmRecordedControls controls;
    std::unique_ptr<QmClientGameplayManager> race;
};
} // namespace

static void BM_CoreFrameUpdate(benchmark::State& state) {
    BusyRace busy;
    busy.race->running = 1;
    busy.race->countingDown = 0;
    int frame = 0;
    for (auto _ : state) {
        busy.now = 1000 + (++frame * 50) / 3;
        busy.race->Racer()->rightHeld = 1;
        busy.race->CoreUpdate(1.0f / 60.0f);
    }
    if (busy.race->enemies.size() != 40 || !busy.race->Racer()->active) {
        state.SkipWithError("the busy map lost its cows or its racer");
    }
}
BENCHMARK(BM_CoreFrameUpdate);

static void BM_ClientFrameUpdate(benchmark::State& state) {
    BusyRace busy;
    int frame = 0;
    for (auto _ : state) {
        busy.now = 1000 + (++frame * 50) / 3;
        busy.race->Update(1.0f / 60.0f);
    }
    if (!busy.race->Racer()->active) {
        state.SkipWithError("the racer died");
    }
}
BENCHMARK(BM_ClientFrameUpdate);

static void BM_SimulatedRace60s(benchmark::State& state) {
    QmCoreEnvironmentManager world;
    BuildBusyMap(world);
    QmSimOptions options;
    options.maxSeconds = 60.0f;
    options.inputs = BusyRace::Right();
    options.ghost = BusyRace::Right();
    for (auto _ : state) {
        const QmSimResult result = QmRaceSimulator::Run(world, options, nullptr);
        if (result.outcome != QmSimResult::Timeout) {
            state.SkipWithError("the race ended early");
            break;
        }
        benchmark::DoNotOptimize(result.timeMs);
    }
}
BENCHMARK(BM_SimulatedRace60s)->Unit(benchmark::kMillisecond);
