#pragma once
// One playing (or scheduled) sound on the mixer, and the handle its owner keeps.
#include <cstdint>
#include <string>

class VeWaveSound;

struct VeAudioVector {
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
};

// Designates one channel. The mixer never hands out the same handle twice, so once the channel
// has ended or been stopped the handle designates nothing: the manager then reads it as empty
// (IsPlaying false, Stop/SetPaused/SetSpeed false), and Stop clears it.
class VeAudioHandle {
public:
    VeAudioHandle() = default;
    explicit VeAudioHandle(int32_t id) : id(id) {}

    bool IsEmpty() const { return id == 0; }
    int32_t Id() const { return id; }
    void Clear() { id = 0; }
    bool operator==(const VeAudioHandle& other) const = default;

private:
    int32_t id = 0;
};

struct VeAudioChannel {
    const VeWaveSound* sound = nullptr;
    const std::string* name = nullptr; // the key the sound is loaded under
    double position = 0.0;             // in output frames
    float volume = 1.0f;
    bool loop = false;
    bool positional = false;
    VeAudioVector source;
    int64_t startTime = 0; // GetTimeMs at which mixing begins
    bool paused = false;
    bool stopRequested = false;
    float speed = 1.0f;
    int32_t handle = 0;
};
