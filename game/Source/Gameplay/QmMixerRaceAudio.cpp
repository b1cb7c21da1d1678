#include "Gameplay/QmMixerRaceAudio.h"

#include "Audio/VeAudioManager.h"

namespace {
constexpr float kField = 640.0f;
}

QmMixerRaceAudio::QmMixerRaceAudio(VeAudioManager& audio, VeAudioHandle& musicChannel)
    : mixer(audio), music(musicChannel) {}

void QmMixerRaceAudio::PlayAt(const std::string& name, float x, float y) {
    mixer.PlayAt(name, x / kField, y / kField, 0.0f);
}

void QmMixerRaceAudio::Play(const std::string& name) {
    mixer.Play(name);
}

void QmMixerRaceAudio::StartMusic(const std::string& name) {
    mixer.Stop(music);
    music = mixer.Play(name, true);
    musicSpeed = 1.0f;
}

void QmMixerRaceAudio::StopMusic() {
    mixer.Stop(music);
}

float QmMixerRaceAudio::MusicSpeed() const {
    return music.IsEmpty() ? 1.0f : musicSpeed;
}

void QmMixerRaceAudio::SetMusicSpeed(float speed) {
    if (mixer.SetSpeed(music, speed)) {
        musicSpeed = speed < 0.0f ? 0.0f : speed;
    }
}

void QmMixerRaceAudio::SetMusicPaused(bool paused) {
    mixer.SetPaused(music, paused);
}
