#pragma once
// The game's 28 named sounds with their files and load volumes. The coordinator loads the pages'
// sounds before the first frame, the race's sounds one a frame after it, and reads the two musics
// on a worker thread meanwhile. Other parts of the game play them by name ("Jump", "Music", ...).
#include <array>
#include <functional>

class QmStartupWork;
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
    // Loads one sound of the table.
    static void Load(VeAudioManager& audio, const Entry& entry);
    // Whether the menu pages and dialogs play the sound (the others are the race's and the music).
    static bool ForPages(const Entry& entry);
    // The menu's music ("Music") and the race's ("MusicInGame"), in that order.
    static std::array<const Entry*, 2> Musics();
    // Loads the pages' sounds now and leaves the rest to the start-up work: the race's sounds one
    // a step, the musics read on its worker (the menu's first; menuMusicKept runs once it is kept).
    // A music file that cannot be read halts on the main thread with the message LoadWave gives.
    static void LoadForStartup(VeAudioManager& audio, QmStartupWork& work,
                               std::function<void()> menuMusicKept);
};
