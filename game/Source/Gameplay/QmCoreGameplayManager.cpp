#include "Gameplay/QmCoreGameplayManager.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/QmRaceAudio.h"
#include "Gameplay/QmRaceHost.h"
#include "Platform/VeLog.h"
#include "Platform/VeTime.h"

QmCoreGameplayManager::QmCoreGameplayManager(QmCoreEnvironmentManager& environment, QmRaceAudio& sound,
                                             QmRaceHost& owner)
    : world(environment), audio(sound), host(owner) {
    const float cell = static_cast<float>(world.blockSize);
    racers.push_back(
        std::make_unique<ArPlayer>(this, true, world.startX * cell, world.startY * cell, kRacerSpeed));
    racers.push_back(
        std::make_unique<ArPlayer>(this, false, world.startX * cell, world.startY * cell, kRacerSpeed));
    SpawnEnemies(world.GetEnemySpawns());
    world.SetGameplayLink(this);
}

QmCoreGameplayManager::~QmCoreGameplayManager() {
    world.SetGameplayLink(nullptr);
}

void QmCoreGameplayManager::StartRace(bool /*showIntro*/, bool restartClock) {
    if (restartClock) {
        raceOver = 0;
        countingDown = 1;
        countdownStart = lastCountdownTime = GetTimeMs();
    }
    world.gatesOpen = false;
    SetConfusion(false);
    audio.Play("Countdown");
    if (host.MusicEnabled() && host.PlayMode() != 3) {
        audio.StartMusic("MusicInGame");
    }
}

void QmCoreGameplayManager::PrepareRace() {
    raceOver = 1;
    flip = false;
    finishReached = 0;
    world.gatesOpen = false;
    Log("prep %i %s %s %s\n", host.PlayMode(), world.mapName.c_str(), world.mapUid.c_str(),
        IsTutorial() ? "tutorial" : "race");
}

void QmCoreGameplayManager::Pause() {
    const int64_t now = GetTimeMs();
    if (countingDown) {
        countdownAccum += now - countdownStart;
    }
    if (running) {
        runAccum += now - runStart;
    }
    paused = 1;
}

void QmCoreGameplayManager::Resume() {
    countdownStart = runStart = GetTimeMs();
    paused = 0;
}

int64_t QmCoreGameplayManager::RunningTime(int64_t now) const {
    if (!running) {
        return runAccum;
    }
    return paused ? runAccum : runAccum + (now - runStart);
}

int64_t QmCoreGameplayManager::RaceTime() const {
    const ArPlayer* racer = Racer();
    const bool randomRun = host.PlayMode() == 3;
    if (racer != nullptr && !racer->active) {
        return finalTime + (randomRun ? host.RandomRunTime() : 0);
    }
    if (running) {
        return RunningTime(GetTimeMs());
    }
    return randomRun ? host.RandomRunTime() : 0;
}

int64_t QmCoreGameplayManager::CountdownTime() const {
    return countdownAccum + (paused ? 0 : GetTimeMs() - countdownStart);
}

bool QmCoreGameplayManager::IsTutorial() const {
    return world.mapName == "TUTORIAL";
}

int64_t QmCoreGameplayManager::CountdownLength() const {
    return IsTutorial() ? kTutorialCountdownMs : kCountdownMs;
}

void QmCoreGameplayManager::StopClock() {
    // The clock stands at the race time of this moment: a racer that dies before the run starts
    // has raced for no time at all.
    finalTime = RunningTime(GetTimeMs());
    const bool randomRun = host.PlayMode() == 3;
    if (randomRun) {
        host.SetRandomRunTime(finalTime);
    }
    if (host.MusicEnabled() && !randomRun) {
        audio.StopMusic();
        audio.StartMusic("Music");
    }
}

void QmCoreGameplayManager::CoreUpdate(float dt) {
    frameTime = dt;
    const int64_t now = GetTimeMs();
    const int64_t elapsed = paused ? 0 : now - countdownStart;
    const int64_t countdownTime = countdownAccum + elapsed;
    ArPlayer* racer = Racer();
    const bool anyInput = racer->AnyInput();
    if (!paused && countingDown) {
        if (countdownTime > CountdownLength() || (anyInput && !inputHeldLastFrame)) {
            runStart = now;
            if (host.PlayMode() == 3) {
                runStart -= host.RandomRunTime();
            }
            countingDown = 0;
            running = 1;
        }
    }
    inputHeldLastFrame = anyInput ? 1 : 0;
    lastCountdownTime = countdownTime;
    for (const auto& enemy : enemies) {
        enemy->UpdateEnemy();
    }
    racer->UpdateRacer();
    racer->ClearInput();
}

const uint32_t* QmCoreGameplayManager::FireImage(int /*index*/, int blockSize) {
    // Without a renderer's animation the whole cell is flame.
    const size_t pixels = static_cast<size_t>(blockSize) * static_cast<size_t>(blockSize);
    if (solidFire.size() < pixels) {
        solidFire.assign(pixels, 0xFFFF0000u);
    }
    return solidFire.data();
}

void QmCoreGameplayManager::PlaceRacerAtCell(float column, float row) {
    const float cell = static_cast<float>(world.blockSize);
    if (ArPlayer* racer = Racer()) {
        racer->x = column * cell;
        racer->y = row * cell;
    }
}

void QmCoreGameplayManager::MapReady(const std::vector<std::pair<float, float>>& enemySpawns, int blockSize) {
    SpawnEnemies(enemySpawns);
    for (const auto& racer : racers) {
        racer->width = racer->height = static_cast<float>(blockSize);
    }
}

void QmCoreGameplayManager::SpawnEnemies(const std::vector<std::pair<float, float>>& spawns) {
    enemies.clear();
    const float cell = static_cast<float>(world.blockSize);
    for (const auto& [spawnX, spawnY] : spawns) {
        enemies.push_back(std::make_unique<ArEnemy>(this, spawnX, spawnY, kRacerSpeed, cell, cell));
    }
}
