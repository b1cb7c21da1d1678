#pragma once
// The game's sound: wave files loaded under a name, and a software mixer that plays them.
//
// The mixer keeps four buffers of 1024 stereo frames (about 23 ms each) queued on its output.
// Whenever the output has played one, that buffer goes straight back to the end of the queue and
// is filled anew from the playing channels, so about three buffers of sound are always ahead of
// the speaker. Mixing runs on the output's thread under the manager's lock; everything else
// (loading, Play, Stop, the setters, Shutdown) runs on the main thread, except ReadWave, which
// reads a file on any thread for AddSound to keep.
//
// Channels can be positional (panned between left and right by where their source lies against
// the listener), looping, paused, sped up or slowed down, and start after a delay. A limiter keeps
// the sum from clipping: its divisor follows a loud peak at once and falls back by at most 0.01
// per mixed channel.
//
// The system's output falls back to a silent device when no sound device can be opened, so channels
// still start, end and stop on time. With no output at all (Open failed), sounds still load but Play
// hands out empty handles.
// Bad or missing wave files, and playing a name that was never loaded, halt with a message.
#include "Audio/VeAudioChannel.h"
#include "Audio/VeAudioOutput.h"
#include "Audio/VeWaveSound.h"
#include "Threads/VtMutex.h"
#include "Threads/VtSemaphore.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

class VeAudioManager : public VeAudioOutputClient {
public:
    // Plays through the system's sound device (see VeSdlAudioOutput).
    VeAudioManager(const std::string& errorSuffix, bool debug);
    // Plays through the given output (a device, or one driven by its owner).
    VeAudioManager(const std::string& errorSuffix, bool debug, std::unique_ptr<VeAudioOutput> output);
    ~VeAudioManager() override;
    VeAudioManager(const VeAudioManager&) = delete;
    VeAudioManager& operator=(const VeAudioManager&) = delete;

    // The text appended to every error message.
    void SetErrorSuffix(const std::string& suffix);

    // Loads a 16-bit PCM wave file and keeps it under name (replacing, and stopping, any sound
    // loaded under that name before).
    void LoadWave(const std::string& name, const std::string& path, float volume);
    // LoadWave in two halves, for files too big to read within a frame: ReadWave reads and
    // converts the file with this manager's error suffix and debug switch, keeping nothing, and
    // may run on any thread (a failure comes back in failure instead of a halt); AddSound then
    // keeps the sound under name on the main thread, as LoadWave does.
    std::unique_ptr<VeWaveSound> ReadWave(const std::string& path, float volume,
                                          VeWaveSound::Failure& failure);
    void AddSound(const std::string& name, std::unique_ptr<VeWaveSound> sound);
    bool IsLoaded(const std::string& name) const;

    // Starts the sound loaded under name; intervalMs × index delays the start. With repeatCount
    // above 0 the sound is repeated every intervalMs until repeatCount starts have been scheduled
    // (only when repeatGate × the sound's volume is not 0); the repetitions take the caller's loop
    // flag and belong to the mixer. Returns the handle of the first start.
    VeAudioHandle Play(const std::string& name, bool loop = false, bool positional = false, float x = 0.0f,
                       float y = 0.0f, float z = 0.0f, int repeatCount = 0, float repeatGate = 0.8f,
                       int intervalMs = 500, int index = 0, float speed = 1.0f);
    // StopByName, then Play.
    VeAudioHandle PlayExclusive(const std::string& name, bool loop = false, bool positional = false,
                                float x = 0.0f, float y = 0.0f, float z = 0.0f, int repeatCount = 0,
                                float repeatGate = 0.8f, int intervalMs = 500, int index = 0,
                                float speed = 1.0f);
    // StopByName, then a positional, non-looping Play at (x, y, z).
    VeAudioHandle PlayAt(const std::string& name, float x, float y, float z);

    // Stops the channel the handle designates and clears the handle; false when it designates
    // nothing that plays (the handle is cleared all the same).
    bool Stop(VeAudioHandle& handle);
    // Stops every channel of that sound; returns how many.
    int StopByName(const std::string& name);
    void StopAll();
    bool SetPaused(const VeAudioHandle& handle, bool paused);
    // Negative speeds become 0 (the channel holds still and is silent).
    bool SetSpeed(const VeAudioHandle& handle, float speed);
    // True while the channel plays or waits for its start time.
    bool IsPlaying(const VeAudioHandle& handle);
    // Channels playing or waiting to start.
    int ChannelCount();

    void SetListenerPosition(float x, float y, float z);
    void SetListenerForward(float x, float y, float z);
    void SetListenerUp(float x, float y, float z);

    // The limiter's divisor of the last mixed channel (1.0 when nothing was loud).
    float LastGain();
    // Whether an output device was opened (false: the manager runs silently).
    bool HasDevice() const { return deviceOpen; }

    // Waits for the output to hand back every queued buffer, then closes it and drops all
    // channels. Runs once; the destructor calls it.
    void Shutdown();

    // The output's report that the oldest queued buffer has been played.
    void BufferDone() override;

private:
    static constexpr int kBufferSamples = VeAudioOutput::kFramesPerBuffer * VeAudioOutput::kChannels;

    void Start();
    void QueueBuffer(int index);
    void Refill();
    double Mix(int16_t* buffer, VeAudioChannel& channel);
    VeAudioChannel* FindChannel(const VeAudioHandle& handle);
    int32_t NextHandle();

    std::map<std::string, std::unique_ptr<VeWaveSound>> sounds;
    std::array<std::vector<int16_t>, VeAudioOutput::kBufferCount> buffers;
    int currentBuffer = 0;
    float lastGain = 1.0f;
    VeAudioVector listenerPosition{0.0f, 0.0f, 0.0f};
    VeAudioVector listenerForward{0.0f, 0.0f, 1.0f};
    VeAudioVector listenerUp{0.0f, -1.0f, 0.0f};
    float masterVolume = 1.0f;
    std::vector<VeAudioChannel> channels;
    VtMutex lock;
    std::unique_ptr<VeAudioOutput> output;
    VtSemaphore doneSignal{0, 99999999};
    std::atomic<bool> stopping{false};
    bool deviceOpen = false;
    bool shutDown = false;
    bool debug = false;
    std::string errorSuffix;
    int32_t lastHandle = 0;
    // One channel's scaled samples for the buffer being mixed; kept to allocate nothing per buffer.
    std::vector<int32_t> scratch;
};
