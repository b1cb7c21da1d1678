#pragma once
// The race as the player meets it: the countdown display and sounds, the start on a fresh
// movement press, the in-race menu and pause, the music that speeds up against the best time,
// death with its rumble and grey frame, the head-up badge, the racer's face, the recording of
// the run and the ghost that replays the best recorded run at opacity 0.3.
//
// Update(dt) runs once per frame while the race scene is active. Everything outside the race is
// reached through four interfaces: the sounds (QmRaceAudio), the player's controls
// (QmRaceControls), the drawing (QmRaceDrawer) and the application (QmRaceHost).
#include "Gameplay/QmCoreGameplayManager.h"
#include "Gameplay/QmHighscores.h"
#include "Gameplay/QmRecording.h"

#include <map>
#include <memory>
#include <string>

class QmRaceControls;
class QmRaceDrawer;

class QmClientGameplayManager : public QmCoreGameplayManager {
public:
    static constexpr float kGhostAlpha = 0.3f;
    static constexpr int kDeathLine = 13;
    static constexpr int kMenuLine = 12;
    static constexpr const char* kExitCommand = "EXIT_GAME";

    // Sets up the race on the world's current map: racers and ghost at the Start cell, the cows,
    // the map's highscores and best run, and the player's character.
    QmClientGameplayManager(QmCoreEnvironmentManager& world, QmRaceAudio& audio, QmRaceHost& host,
                            QmRaceControls& controls, QmRaceDrawer& drawer);
    ~QmClientGameplayManager() override;

    void StartRace(bool showIntro, bool restartClock) override;
    void Update(float dt);

    // Steps of the frame that others call on their own.
    void RecordInput(bool jump, bool left, bool right);
    void ReplayInputs();
    void DrawEntities();
    // Leaves the race through the in-race menu.
    void ExitGame();

    // Highscores of the current map (read at set-up).
    QmHighscores& Highscores() { return highscores; }
    // Reads the score file again and rewinds the ghost's replay.
    void LoadScores();
    void SaveScores(bool saveRecording, bool clearList, const std::string& name, bool insert);
    void ResetScoreFile();
    // Replaces the run the ghost replays (the stored best run is the default).
    void SetReplay(const QmRecording& replay);

    ArPlayer* Ghost() { return ghost.get(); }
    const QmRecording& Recording() const { return recording; }
    // The rank this run's finish took (HighscoreRank), -1 before a finish or when it does not qualify.
    int FinishRank() const { return finishRank; }
    // The finish has been handled (clock stopped, scene asked to change).
    bool FinishHandled() const { return finishHandled; }
    // The character number from profile.dat.
    int Character() const { return character; }

    // QmWorldGameplayLink
    void PlaceRacerAtCell(float column, float row) override;
    void MapReady(const std::vector<std::pair<float, float>>& enemySpawns, int blockSize) override;
    void MapFileRenamed() override;
    // ArEntityHost
    void SetConfusion(bool on) override;
    const uint32_t* FireImage(int index, int blockSize) override;

    float fade = 1.0f;
    float musicFactor = 1.0f;
    int64_t lastTempoChange = 0;
    uint8_t resumePending = 0;
    int64_t lastAliveTime = 0;

private:
    void HandleFinish();
    void PresentCountdown(bool wasCountingDown, int64_t previousCountdownTime);
    void UpdateMusicTempo(float dt, int64_t now);
    void UpdateDeath(int64_t now);
    void UpdateFace(int64_t now);
    void HandleMenuAndRetry();
    std::string CountdownNumber(int64_t countdownTime) const;

    QmRaceControls& controls;
    QmRaceDrawer& drawer;
    std::unique_ptr<ArPlayer> ghost;
    QmRecording recording;
    QmRecording replay;
    std::map<int64_t, int>::const_iterator replayCursor;
    bool ghostJump = false;
    bool ghostLeft = false;
    bool ghostRight = false;
    bool recordedJump = false;
    bool recordedLeft = false;
    bool recordedRight = false;
    QmHighscores highscores;
    std::string countdownNumber;
    int character = 0;
    int finishRank = -1;
    bool finishHandled = false;
    bool blinking = false;
    int64_t blinkStart = 0;
    int64_t lastBlink = 0;
};
