#pragma once
// The race's sounds on the game's mixer. Positions are divided by the 640-pixel play field, as
// the mixer's listener sits at (0.5, 0.5). The music is the application's music channel: the race
// replaces it, speeds it up and pauses it through the handle the application keeps.
#include "Audio/VeAudioChannel.h"
#include "Gameplay/QmRaceAudio.h"

class VeAudioManager;

class QmMixerRaceAudio : public QmRaceAudio {
public:
    QmMixerRaceAudio(VeAudioManager& mixer, VeAudioHandle& music);

    void PlayAt(const std::string& name, float x, float y) override;
    void Play(const std::string& name) override;
    void StartMusic(const std::string& name) override;
    void StopMusic() override;
    float MusicSpeed() const override;
    void SetMusicSpeed(float speed) override;
    void SetMusicPaused(bool paused) override;

private:
    VeAudioManager& mixer;
    VeAudioHandle& music;
    // The speed last given to the current music (the mixer does not report it).
    float musicSpeed = 1.0f;
};
