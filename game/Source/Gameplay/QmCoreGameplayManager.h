#pragma once
// The race: one run of one map. QmCoreGameplayManager holds the racers and the cows, the
// countdown and race clocks, and advances them once per frame (CoreUpdate); the client manager
// derived from it adds what the player sees and hears around the run.
//
// Contract:
// - Time is the platform's GetTimeMs; the frame time dt is passed to each update. Drive both
//   (SetTimeSource and a fixed dt) and a race replays exactly.
// - racers[0] is the steered racer (physical), racers[1] a non-physical racer the race never moves.
// - The manager registers itself with the world while it lives, so loading a map places the racer
//   at the Start cell and spawns one cow per Enemy cell.
// - The race time (RaceTime) counts from the start of the run and stands still while paused; a
//   finish or a death freezes it (StopClock).
#include "Environment/CoreEnvironmentManager/QmWorldGameplayLink.h"
#include "Gameplay/Entities/ArEnemy.h"
#include "Gameplay/Entities/ArEntityHost.h"
#include "Gameplay/Entities/ArPlayer.h"

#include <cstdint>
#include <memory>
#include <vector>

class QmRaceAudio;
class QmRaceHost;

class QmCoreGameplayManager : public ArEntityHost, public QmWorldGameplayLink {
public:
    static constexpr float kRacerSpeed = 300.0f;
    static constexpr int64_t kCountdownMs = 2000;
    static constexpr int64_t kTutorialCountdownMs = 5000;

    QmCoreGameplayManager(QmCoreEnvironmentManager& world, QmRaceAudio& audio, QmRaceHost& host);
    ~QmCoreGameplayManager() override;
    QmCoreGameplayManager(const QmCoreGameplayManager&) = delete;
    QmCoreGameplayManager& operator=(const QmCoreGameplayManager&) = delete;

    // Starts the countdown (restartClock) and the in-game music; see the client's override.
    virtual void StartRace(bool showIntro, bool restartClock);
    // Party play: wait, without a countdown, until the player confirms.
    void PrepareRace();
    // The in-race menu opened: both clocks stand still until the race resumes.
    void Pause();
    // Resumes after Pause.
    void Resume();
    int64_t RaceTime() const;
    // The countdown time of this moment (standing still while paused).
    int64_t CountdownTime() const;
    // 2 s, or 5 s on the map named "TUTORIAL".
    int64_t CountdownLength() const;
    bool IsTutorial() const;
    // One frame of the race itself: the countdown, then every cow, then the steered racer.
    void CoreUpdate(float dt);

    ArPlayer* Racer() { return racers.empty() ? nullptr : racers[0].get(); }
    const ArPlayer* Racer() const { return racers.empty() ? nullptr : racers[0].get(); }

    // ArEntityHost
    QmCoreEnvironmentManager& World() override { return world; }
    QmRaceAudio& Audio() override { return audio; }
    float FrameTime() const override { return frameTime; }
    bool Paused() const override { return paused != 0; }
    bool RaceRunning() const override { return running != 0; }
    ArPlayer* SteeredRacer() override { return Racer(); }
    const std::vector<std::unique_ptr<ArEnemy>>& Enemies() const override { return enemies; }
    void StopClock() override;
    void ToggleFlip() override { flip = !flip; }
    void SetFinishReached() override { finishReached = 1; }
    void SetConfusion(bool on) override { confusion = on; }
    const uint32_t* FireImage(int index, int blockSize) override;

    // QmWorldGameplayLink
    void PlaceRacerAtCell(float column, float row) override;
    void MapReady(const std::vector<std::pair<float, float>>& enemySpawns, int blockSize) override;
    void MapFileRenamed() override {}

    std::vector<std::unique_ptr<ArPlayer>> racers;
    std::vector<std::unique_ptr<ArEnemy>> enemies;
    int64_t countdownStart = 0;
    int64_t countdownAccum = 0;
    int64_t lastCountdownTime = 0;
    int64_t runStart = 0;
    int64_t finalTime = 0;
    int64_t runAccum = 0;
    uint8_t countingDown = 0;
    uint8_t running = 0;
    uint8_t retryRequested = 0;
    uint8_t paused = 0;
    uint8_t raceOver = 0;
    uint8_t finishReached = 0;
    uint8_t inputHeldLastFrame = 0;
    // The view is upside down (Flip Vision); the colours are confused (Disco Confusion).
    bool flip = false;
    bool confusion = false;

protected:
    // The running race time at this moment.
    int64_t RunningTime(int64_t now) const;
    // Rebuilds the cows from the map's Enemy cells.
    void SpawnEnemies(const std::vector<std::pair<float, float>>& spawns);

    QmCoreEnvironmentManager& world;
    QmRaceAudio& audio;
    QmRaceHost& host;
    float frameTime = 0.0f;

private:
    std::vector<uint32_t> solidFire;
};
