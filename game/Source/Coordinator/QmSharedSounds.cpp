#include "Coordinator/QmSharedSounds.h"

#include "Audio/VeAudioManager.h"
#include "Coordinator/QmStartupWork.h"
#include "Platform/VeMessageBox.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

const std::array<QmSharedSounds::Entry, QmSharedSounds::kCount>& QmSharedSounds::Table() {
    static const std::array<Entry, kCount> table{{
        {"Countdown", "Audio/Countdown.wav", 0.32f},
        {"Finish", "Audio/Finish.wav", 1.0f},
        {"Hit", "Audio/Hit.wav", 0.64f},
        {"Fire", "Audio/Fire.wav", 1.0f},
        {"EnemyHit", "Audio/EnemyHit.wav", 0.32f},
        {"Jump", "Audio/Jump.wav", 1.0f},
        {"RoofHit", "Audio/RoofHit.wav", 0.64f},
        {"Select", "Audio/Select.wav", 1.0f},
        {"Start", "Audio/Start.wav", 0.32f},
        {"SuperJump", "Audio/SuperJump.wav", 1.0f},
        {"SpeedUp", "Audio/SpeedUp.wav", 1.0f},
        {"FlipScreen", "Audio/FlipScreen.wav", 0.32f},
        {"OpenGates", "Audio/OpenGates.wav", 0.32f},
        {"Disabled", "Audio/Disabled.wav", 0.32f},
        {"Unlocked", "Audio/Unlocked.wav", 1.0f},
        {"UnlockedTour", "Audio/UnlockedTour.wav", 1.0f},
        {"Hurry", "Audio/Hurry.wav", 0.32f},
        {"HurryMore", "Audio/HurryMore.wav", 0.32f},
        {"Cow", "Audio/Cow.wav", 0.64f},
        {"CowHitPlayer", "Audio/CowHitPlayer.wav", 0.32f},
        {"Click", "Audio/Click.wav", 0.32f},
        {"DoubleClick", "Audio/DoubleClick.wav", 0.32f},
        {"Swap", "Audio/Swap.wav", 0.64f},
        {"LongSwap", "Audio/LongSwap.wav", 0.64f},
        {"Hover", "Audio/Hover.wav", 0.64f},
        {"Confusion", "Audio/Confusion.wav", 1.0f},
        {"MusicInGame", "Audio/Music/Suspicious.wav", 0.64f},
        {"Music", "Audio/Music/MainMenu.wav", 0.32f},
    }};
    return table;
}

void QmSharedSounds::LoadAll(VeAudioManager& audio) {
    for (const Entry& entry : Table()) {
        Load(audio, entry);
    }
}

bool QmSharedSounds::ForPages(const Entry& entry) {
    for (const char* name : {"Select", "Disabled", "Hover", "Click", "DoubleClick", "Swap", "LongSwap"}) {
        if (std::strcmp(entry.name, name) == 0) {
            return true;
        }
    }
    return false;
}

std::array<const QmSharedSounds::Entry*, 2> QmSharedSounds::Musics() {
    return {&Table()[kCount - 1], &Table()[kCount - 2]};
}

void QmSharedSounds::Load(VeAudioManager& audio, const Entry& entry) {
    audio.LoadWave(entry.name, entry.file, entry.volume);
}

void QmSharedSounds::LoadForStartup(VeAudioManager& audio, QmStartupWork& work,
                                    std::function<void()> menuMusicKept) {
    for (const Entry& entry : Table()) {
        if (ForPages(entry)) {
            Load(audio, entry);
        }
    }
    // The musics are too big to be read within a frame.
    const std::array<const Entry*, 2> musics = Musics();
    for (const Entry* music : musics) {
        struct Read {
            std::unique_ptr<VeWaveSound> sound;
            VeWaveSound::Failure failure;
        };
        auto read = std::make_shared<Read>();
        std::function<void()> kept = music == musics[0] ? menuMusicKept : nullptr;
        work.AddBackground(
            [&audio, music, read] {
                read->sound = audio.ReadWave(music->file, music->volume, read->failure);
            },
            [&audio, music, read, kept] {
                if (!read->sound) {
                    Halt(read->failure.title, read->failure.text); // as if it had been read here
                }
                audio.AddSound(music->name, std::move(read->sound));
                if (kept) {
                    kept();
                }
            });
    }
    for (const Entry& entry : Table()) {
        if (!ForPages(entry) && std::find(musics.begin(), musics.end(), &entry) == musics.end()) {
            work.Add([&audio, &entry] { Load(audio, entry); });
        }
    }
}
