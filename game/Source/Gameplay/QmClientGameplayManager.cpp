#include "Gameplay/QmClientGameplayManager.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/QmProfile.h"
#include "Gameplay/QmRaceAudio.h"
#include "Gameplay/QmRaceControls.h"
#include "Gameplay/QmRaceDrawer.h"
#include "Gameplay/QmRaceHost.h"
#include "Platform/VeTime.h"

#include <algorithm>

namespace {
constexpr int kCountdownSecondsFrom = 1000;
constexpr int kThreeQuarters = QmRaceDrawer::kScreenSize * 3 / 4;
constexpr int kOneQuarter = QmRaceDrawer::kScreenSize / 4;
constexpr int kTutorialHintTop = 180;
constexpr int kTutorialHintBottom = 181;
constexpr int kTutorialRunHint = 184;
} // namespace

QmClientGameplayManager::QmClientGameplayManager(QmCoreEnvironmentManager& environment, QmRaceAudio& sound,
                                                 QmRaceHost& owner, QmRaceControls& input, QmRaceDrawer& view)
    : QmCoreGameplayManager(environment, sound, owner), controls(input), drawer(view),
      highscores(environment) {
    const float cell = static_cast<float>(world.blockSize);
    ghost = std::make_unique<ArPlayer>(this, false, world.startX * cell, world.startY * cell, kRacerSpeed);
    replayCursor = replay.Events().begin();
    LoadScores();
    character = QmProfile::LoadProfile();
    Racer()->direction = character;
    drawer.SetCharacter(character);
    lastAliveTime = GetTimeMs();
    lastBlink = lastAliveTime;
}

QmClientGameplayManager::~QmClientGameplayManager() = default;

void QmClientGameplayManager::LoadScores() {
    highscores.LoadScores();
    SetReplay(highscores.StoredRecording());
}

void QmClientGameplayManager::SetReplay(const QmRecording& stored) {
    replay = stored;
    replayCursor = replay.Events().begin();
    ghostJump = ghostLeft = ghostRight = false;
}

void QmClientGameplayManager::SaveScores(bool saveRecording, bool clearList, const std::string& name,
                                         bool insert) {
    highscores.SaveScores(recording, saveRecording, clearList, name, insert, finalTime);
}

void QmClientGameplayManager::ResetScoreFile() {
    highscores.ResetScoreFile();
    SetReplay(highscores.StoredRecording());
}

void QmClientGameplayManager::StartRace(bool showIntro, bool restartClock) {
    if (showIntro) {
        drawer.SetIntro(7.0f);
    }
    recording.Clear();
    recordedJump = recordedLeft = recordedRight = false;
    if (restartClock) {
        countdownNumber = CountdownNumber(0);
    }
    QmCoreGameplayManager::StartRace(showIntro, restartClock);
}

std::string QmClientGameplayManager::CountdownNumber(int64_t countdownTime) const {
    return std::to_string(CountdownLength() / 1000 - countdownTime / 1000);
}

void QmClientGameplayManager::Update(float dt) {
    frameTime = dt;
    const int64_t now = GetTimeMs();
    ArPlayer* racer = Racer();
    drawer.BeginFrame();

    // 1. A quarter-second fade-in.
    fade -= dt * 4.0f;
    if (fade < 0.0f) {
        fade = 0.0f;
    }
    drawer.SetFade(1.0f - fade);
    // 2. The upside-down view.
    if (flip) {
        drawer.ReversePixelOrder();
    }
    // 3. Back from the in-race menu: the clocks go on from now.
    const bool menuOpen = host.MenuOpen();
    if (!menuOpen) {
        if (resumePending) {
            Resume();
        }
        resumePending = 0;
    }
    // 4. The finish.
    if (!menuOpen && running && finishReached && !finishHandled) {
        HandleFinish();
    }
    // 5. The player's input, recorded as it changes.
    if (racer->active) {
        controls.BeginFrame();
        RecordInput(controls.Jump(), controls.Left(), controls.Right());
    }
    // 6. The ghost replays the best run.
    if (host.PlayMode() != 3) {
        ReplayInputs();
    }
    // 7. The race itself.
    const bool wasCountingDown = countingDown != 0;
    const int64_t previousCountdownTime = lastCountdownTime;
    CoreUpdate(dt);
    DrawEntities();
    // 8. A prepared race waits for the player.
    if (raceOver && !paused) {
        drawer.DrawText(host.LanguageLine(kDeathLine), kThreeQuarters);
        if (controls.ConfirmOrClick()) {
            StartRace(false, true);
        }
    }
    // 9, 10. The countdown and the tutorial's hints.
    PresentCountdown(wasCountingDown, previousCountdownTime);
    if (IsTutorial() && running && !finishReached && racer->active && !paused) {
        drawer.DrawText(host.LanguageLine(kTutorialRunHint), kThreeQuarters);
    }
    // 11. The music hurries.
    if (running && racer->active) {
        UpdateMusicTempo(dt, now);
    }
    // 12. Death.
    UpdateDeath(now);
    // 13. The head-up display.
    if (host.PlayMode() != 3) {
        drawer.DrawHud(world.mapName, QmHighscoreList::BadgeFor(highscores.Limits(), RaceTime()));
    }
    // 14. The racer's face.
    UpdateFace(now);
    // 15. The in-race menu and the retry.
    HandleMenuAndRetry();
}

void QmClientGameplayManager::HandleFinish() {
    finishHandled = true;
    controls.EndRaceInput();
    const ArPlayer* racer = Racer();
    audio.PlayAt("Finish", racer->x, racer->y);
    StopClock();
    if (host.PlayMode() == 3) {
        host.AddRandomRunLevel();
        retryRequested = 1;
        return;
    }
    finishRank = QmHighscoreList::HighscoreRank(highscores.List(), finalTime);
    host.RaceFinished(finalTime, finishRank);
}

void QmClientGameplayManager::RecordInput(bool jump, bool left, bool right) {
    ArPlayer* racer = Racer();
    const int64_t time = RaceTime();
    const auto record = [&](bool active, bool& state, int pressed, int released, uint8_t& flag) {
        if (active) {
            if (!state) {
                recording.Add(time, pressed);
                state = true;
            }
            flag = 1;
        } else if (state) {
            recording.Add(time, released);
            state = false;
        }
    };
    record(jump, recordedJump, QmRecording::JumpPressed, QmRecording::JumpReleased, racer->jumpHeld);
    record(left, recordedLeft, QmRecording::LeftPressed, QmRecording::LeftReleased, racer->leftHeld);
    record(right, recordedRight, QmRecording::RightPressed, QmRecording::RightReleased, racer->rightHeld);
}

void QmClientGameplayManager::ReplayInputs() {
    const int64_t time = RaceTime();
    const auto end = replay.Events().end();
    while (replayCursor != end && replayCursor->first <= time) {
        switch (replayCursor->second) {
        case QmRecording::JumpPressed:
            ghostJump = true;
            break;
        case QmRecording::LeftPressed:
            ghostLeft = true;
            break;
        case QmRecording::RightPressed:
            ghostRight = true;
            break;
        case QmRecording::JumpReleased:
            ghostJump = false;
            break;
        case QmRecording::LeftReleased:
            ghostLeft = false;
            break;
        case QmRecording::RightReleased:
            ghostRight = false;
            break;
        default:
            break;
        }
        ++replayCursor;
    }
    ghost->jumpHeld = ghostJump ? 1 : 0;
    ghost->leftHeld = ghostLeft ? 1 : 0;
    ghost->rightHeld = ghostRight ? 1 : 0;
    ghost->UpdateRacer();
    ghost->ClearInput();
}

void QmClientGameplayManager::DrawEntities() {
    for (const auto& enemy : enemies) {
        drawer.DrawEntity(*enemy, QmRaceDrawer::EnemyEntity, 1.0f);
    }
    drawer.DrawEntity(*Racer(), QmRaceDrawer::RacerEntity, 1.0f);
    if (host.PlayMode() != 3 && !replay.Empty()) {
        drawer.DrawEntity(*ghost, QmRaceDrawer::GhostEntity, kGhostAlpha);
    }
}

void QmClientGameplayManager::PresentCountdown(bool wasCountingDown, int64_t previousCountdownTime) {
    if (!wasCountingDown || paused) {
        return;
    }
    const int64_t countdownTime = lastCountdownTime;
    const int64_t length = CountdownLength();
    if (countdownTime > length) {
        audio.Play("Start");
    } else if (!raceOver) {
        // A whole second below the length was crossed since the last frame.
        const int64_t crossed = countdownTime / kCountdownSecondsFrom;
        if (crossed > previousCountdownTime / kCountdownSecondsFrom &&
            crossed * kCountdownSecondsFrom < length) {
            countdownNumber = CountdownNumber(countdownTime);
            audio.Play("Countdown");
        }
    }
    if (IsTutorial()) {
        drawer.DrawText(host.LanguageLine(kTutorialHintTop), kOneQuarter);
        drawer.DrawText(host.LanguageLine(kTutorialHintBottom), kThreeQuarters);
    }
    if (countingDown) {
        drawer.DrawCountdown(countdownNumber);
    }
}

void QmClientGameplayManager::UpdateMusicTempo(float dt, int64_t now) {
    const int64_t best = highscores.BestTime();
    const bool hasScore = !highscores.List().empty() && best > 0;
    float step = 0.5f;
    if (hasScore) {
        musicFactor = static_cast<float>(RaceTime()) / static_cast<float>(best) * 0.5f + 1.0f;
        step = best < 10000 ? 0.5f : 0.25f;
    } else {
        musicFactor += dt * 0.025f;
    }
    musicFactor = std::min(musicFactor, 1.5f);
    if (now - lastTempoChange > 700) {
        audio.SetMusicPaused(false);
    }
    const float current = audio.MusicSpeed();
    if (host.MusicEnabled() && musicFactor - current >= step) {
        audio.SetMusicSpeed(current + step);
        audio.SetMusicPaused(true);
        lastTempoChange = now;
        audio.Play(musicFactor == 1.5f && hasScore ? "HurryMore" : "Hurry");
    }
}

void QmClientGameplayManager::UpdateDeath(int64_t now) {
    if (Racer()->active) {
        controls.StopRumble();
        lastAliveTime = now;
        return;
    }
    if (now - lastAliveTime < 200) {
        controls.StartRumble();
    } else {
        controls.StopRumble();
    }
    drawer.GreyFrame();
    drawer.DrawText(host.LanguageLine(kDeathLine), kThreeQuarters);
}

void QmClientGameplayManager::UpdateFace(int64_t now) {
    const ArPlayer* racer = Racer();
    int eyeDX = 0;
    int eyeDY = 0;
    if (!host.InEditor()) {
        eyeDX = (controls.Right() ? 1 : 0) - (controls.Left() ? 1 : 0);
        eyeDY = (racer->falling ? 1 : 0) - (racer->inAir && !racer->falling ? 1 : 0);
    }
    if (!blinking && now - lastBlink > 2000) {
        blinking = true;
        blinkStart = now;
    }
    int frame = 0;
    if (blinking) {
        const int frames = std::max(1, drawer.BodyFrameCount());
        const int64_t elapsed = now - blinkStart;
        if (elapsed >= 200) {
            blinking = false;
            lastBlink = now;
        } else {
            const int64_t rising = elapsed < 100 ? elapsed : 200 - elapsed;
            frame = static_cast<int>(std::min<int64_t>(frames - 1, rising * frames / 100));
        }
    }
    drawer.SetRacerFace(eyeDX, eyeDY, frame);
}

void QmClientGameplayManager::HandleMenuAndRetry() {
    if (host.MenuOpen()) {
        resumePending = 1;
        if (host.UpdateMenu() == kExitCommand) {
            ExitGame();
        }
    } else if (controls.MenuRequested()) {
        host.OpenMenu(kMenuLine, kExitCommand);
        Pause();
    }
    if (!Racer()->active && controls.ConfirmOrClick()) {
        retryRequested = 1;
    }
}

void QmClientGameplayManager::ExitGame() {
    Racer()->Kill();
    audio.StopMusic();
    if (host.MusicEnabled()) {
        audio.StartMusic("Music");
    }
    host.ReturnToPages();
}

void QmClientGameplayManager::PlaceRacerAtCell(float column, float row) {
    QmCoreGameplayManager::PlaceRacerAtCell(column, row);
    if (ghost) {
        const float cell = static_cast<float>(world.blockSize);
        ghost->x = column * cell;
        ghost->y = row * cell;
    }
}

void QmClientGameplayManager::MapReady(const std::vector<std::pair<float, float>>& enemySpawns,
                                       int blockSize) {
    QmCoreGameplayManager::MapReady(enemySpawns, blockSize);
    if (ghost) {
        ghost->width = ghost->height = static_cast<float>(blockSize);
    }
}

void QmClientGameplayManager::MapFileRenamed() {
    highscores.SaveScores(recording, false, false, std::string(), false, finalTime);
}

void QmClientGameplayManager::SetConfusion(bool on) {
    QmCoreGameplayManager::SetConfusion(on);
    drawer.SetConfusion(on);
}

const uint32_t* QmClientGameplayManager::FireImage(int index, int blockSize) {
    const uint32_t* image = drawer.FireImage(index, blockSize);
    return image != nullptr ? image : QmCoreGameplayManager::FireImage(index, blockSize);
}
