#pragma once
// The game's 28 named sounds with their files and load volumes, loaded by the coordinator in
// this order at start. Other parts of the game play them by name ("Jump", "Music", ...).
#include <array>

class VeAudioManager;

class QmSharedSounds {
public:
    struct Entry {
        const char* name;
        const char* file;
        float volume;
    };
    static constexpr int kCount = 28;

    static const std::array<Entry, kCount>& Table();
    // Loads every sound of the table into the manager (a missing or broken file halts).
    static void LoadAll(VeAudioManager& audio);
};
