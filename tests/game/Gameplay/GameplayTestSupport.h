#pragma once
// Test support for the race: a world built from rows of characters, a driven clock, and fakes of
// the race's four surroundings that remember what the race asked of them.
//
// Map characters: '.' Blank, '#' a default block (id 2), '1' the default block with id 1,
// 'S' Start, 'F' Finish, 'C' an Enemy (cow) cell, 'f' Fire, 'U' Speed Up, 'J' Jump Impulse,
// 'K' Red Gate Key, 'G' Red Gate, 'V' Flip Vision, 'D' Disco Confusion.
// Ten rows make a 64-pixel map, twenty rows a 32-pixel map.
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/QmClientGameplayManager.h"
#include "Gameplay/QmRaceAudio.h"
#include "Gameplay/QmRaceControls.h"
#include "Gameplay/QmRaceDrawer.h"
#include "Gameplay/QmRaceHost.h"
#include "Platform/VeTime.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace gameplay_test {

inline BlockId CellId(char c) {
    // The specials' ids run on from Disco Confusion (246) to Start (255).
    const size_t special = std::string("DGKVUJCfFS").find(c);
    if (special != std::string::npos) {
        return Block::DiscoConfusion + static_cast<BlockId>(special);
    }
    return c == '#' ? 2 : c == '1' ? 1 : Block::Blank;
}

// A 10 x 10 map with a solid bottom row: `above` are the rows just over the floor, the rest is air.
inline std::vector<std::string> OnFloor(const std::vector<std::string>& above) {
    std::vector<std::string> rows(9 - above.size(), std::string(10, '.'));
    rows.insert(rows.end(), above.begin(), above.end());
    rows.emplace_back(10, '#');
    return rows;
}

// Makes the platform clock a number the test moves.
class DrivenClock {
public:
    DrivenClock() {
        SetTimeSource([this] { return now; });
    }
    ~DrivenClock() { SetTimeSource(nullptr); }
    DrivenClock(const DrivenClock&) = delete;
    DrivenClock& operator=(const DrivenClock&) = delete;

    int64_t now = 1000;
};

class FakeAudio : public QmRaceAudio {
public:
    void PlayAt(const std::string& name, float, float) override { sounds.push_back(name); }
    void Play(const std::string& name) override { sounds.push_back(name); }
    void StartMusic(const std::string& name) override {
        music = name;
        musicSpeed = 1.0f;
    }
    void StopMusic() override { music.clear(); }
    float MusicSpeed() const override { return musicSpeed; }
    void SetMusicSpeed(float speed) override { musicSpeed = speed; }
    void SetMusicPaused(bool paused) override { musicPaused = paused; }

    int Count(const std::string& name) const {
        return static_cast<int>(std::count(sounds.begin(), sounds.end(), name));
    }

    std::vector<std::string> sounds;
    std::string music;
    float musicSpeed = 1.0f;
    bool musicPaused = false;
};

class FakeControls : public QmRaceControls {
public:
    bool Jump() override { return jump; }
    bool Left() override { return left; }
    bool Right() override { return right; }
    bool ConfirmOrClick() override { return confirm; }
    bool MenuRequested() override { return menu; }
    void StartRumble() override { rumbling = true; }
    void StopRumble() override { rumbling = false; }
    void EndRaceInput() override { ++endRaceInputs; }

    bool jump = false;
    bool left = false;
    bool right = false;
    bool confirm = false;
    bool menu = false;
    bool rumbling = false;
    int endRaceInputs = 0;
};

class FakeHost : public QmRaceHost {
public:
    int PlayMode() const override { return playMode; }
    bool MusicEnabled() const override { return music; }
    std::string LanguageLine(int line) const override { return "line " + std::to_string(line); }
    bool MenuOpen() const override { return menuOpen; }
    void OpenMenu(int line, const std::string& command) override {
        menuOpen = true;
        menuLine = line;
        menuCommand = command;
    }
    std::string UpdateMenu() override {
        const std::string chosen = choose;
        choose.clear();
        return chosen;
    }
    void RaceFinished(int64_t time, int rank) override {
        ++finishes;
        finishTime = time;
        finishRank = rank;
    }
    void ReturnToPages() override { ++returns; }

    int playMode = 0;
    bool music = false;
    bool menuOpen = false;
    int menuLine = 0;
    std::string menuCommand;
    std::string choose;
    int finishes = 0;
    int64_t finishTime = -1;
    int finishRank = -2;
    int returns = 0;
};

class FakeDrawer : public QmRaceDrawer {
public:
    void DrawText(const std::string& text, int y) override {
        texts.push_back(text + "@" + std::to_string(y));
    }
    void DrawCountdown(const std::string& number) override { countdown = number; }
    void DrawHud(const std::string&, int shown) override { badge = shown; }
    void DrawEntity(const ArEntity& entity, EntityKind kind, float alpha) override {
        (void)entity;
        drawn.push_back({kind, alpha});
    }
    void GreyFrame() override { ++greyFrames; }
    void ReversePixelOrder() override {}
    int BodyFrameCount() const override { return 4; }
    void SetRacerFace(int dx, int dy, int frame) override {
        eyeDX = dx;
        eyeDY = dy;
        bodyFrames.push_back(frame);
    }
    // The test's flame image (a whole cell of pixels) for every fire cell.
    const uint32_t* FireImage(int, int) override { return fire.empty() ? nullptr : fire.data(); }

    struct Drawn {
        EntityKind kind;
        float alpha;
    };
    std::vector<std::string> texts;
    std::vector<Drawn> drawn;
    std::string countdown;
    int badge = -2;
    int greyFrames = 0;
    int eyeDX = 0;
    int eyeDY = 0;
    std::vector<int> bodyFrames;
    std::vector<uint32_t> fire;
};

// A race on a map of rows with every surrounding faked and the clock driven.
class RaceRig {
public:
    explicit RaceRig(const std::vector<std::string>& rows, const std::string& name = "Test") {
        // The world filled from the rows (row 0 on top), the Start cell noted as loading a map does.
        world.SetBlockSize(rows.size() > 10 ? 32 : 64);
        world.mapName = name;
        world.mapUid = "1234";
        for (size_t r = 0; r < rows.size(); ++r) {
            for (size_t c = 0; c < rows[r].size(); ++c) {
                const BlockId id = CellId(rows[r][c]);
                world.SetBlock(static_cast<int>(c), static_cast<int>(r), id);
                if (id == Block::Start) {
                    world.startX = static_cast<float>(c);
                    world.startY = static_cast<float>(r);
                }
            }
        }
        race = std::make_unique<QmClientGameplayManager>(world, audio, host, controls, drawer);
    }

    // One frame of dt seconds: the clock moves on, then the race updates.
    void Frame(float dt = 1.0f / 60.0f) {
        carried += static_cast<double>(dt) * 1000.0;
        const auto whole = static_cast<int64_t>(std::floor(carried));
        clock.now += whole;
        carried -= static_cast<double>(whole);
        race->Update(dt);
    }
    void Frames(int count, float dt = 1.0f / 60.0f) {
        for (int i = 0; i < count; ++i) {
            Frame(dt);
        }
    }
    // Starts the countdown, with right held from the first frame on when asked.
    void Start(bool holdRight = false) {
        race->StartRace(false, true);
        controls.right = holdRight;
    }
    // One frame with the control set, then let go.
    void Tap(bool FakeControls::*control) {
        controls.*control = true;
        Frame();
        controls.*control = false;
    }
    // Steps only the race's core (movement and collisions), without the clock or the countdown.
    void Core(int frames, float dt = 1.0f / 60.0f) {
        for (int i = 0; i < frames; ++i) {
            race->CoreUpdate(dt);
        }
    }
    ArPlayer& Racer() { return *race->Racer(); }
    // Steps the race's core `frames` times with one of the racer's keys held, as the input holds it.
    void Hold(uint8_t ArPlayer::*key, int frames, float dt = 1.0f / 60.0f) {
        for (int i = 0; i < frames; ++i) {
            Racer().*key = 1;
            race->CoreUpdate(dt);
        }
    }

    DrivenClock clock;
    QmCoreEnvironmentManager world;
    FakeAudio audio;
    FakeControls controls;
    FakeHost host;
    FakeDrawer drawer;
    std::unique_ptr<QmClientGameplayManager> race;

private:
    double carried = 0.0;
};

} // namespace gameplay_test
