#pragma once
// What the race asks of the sound system. The base class is silent, so the race runs with no
// audio at all (the simulator, a machine without a device); the game plugs in the mixer and
// tests plug in a log of the names played.
#include <string>

class QmRaceAudio {
public:
    virtual ~QmRaceAudio() = default;

    // A sound placed at a play-field position in pixels; a playing instance of the same sound
    // stops first.
    virtual void PlayAt(const std::string& /*name*/, float /*x*/, float /*y*/) {}
    // A sound without position.
    virtual void Play(const std::string& /*name*/) {}

    // The current music: StartMusic stops it and loops the named sound in its place.
    virtual void StartMusic(const std::string& /*name*/) {}
    virtual void StopMusic() {}
    // The current music's playback speed (1.0 when there is no music).
    virtual float MusicSpeed() const { return 1.0f; }
    virtual void SetMusicSpeed(float /*speed*/) {}
    virtual void SetMusicPaused(bool /*paused*/) {}
};
