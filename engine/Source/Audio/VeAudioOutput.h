#pragma once
// What the mixer plays through: a device that takes the mixer's buffers in order, plays them one
// after the other and reports each one back when it has finished with it. The mixer keeps four
// buffers queued at all times and refills each one as it comes back, so the device never runs dry.
//
// Every buffer holds 1024 frames of 16-bit stereo at 44100 Hz (4096 bytes). BufferDone runs on
// whatever thread the device plays on; the device may call Write from inside BufferDone.
#include <cstdint>
#include <string>

class VeAudioOutputClient {
public:
    virtual ~VeAudioOutputClient() = default;
    // The oldest queued buffer has been played and may be written again.
    virtual void BufferDone() = 0;
};

class VeAudioOutput {
public:
    static constexpr int kSampleRate = 44100;
    static constexpr int kChannels = 2;
    static constexpr int kBitsPerSample = 16;
    static constexpr int kFramesPerBuffer = 1024;
    static constexpr int kBufferBytes = kFramesPerBuffer * kChannels * kBitsPerSample / 8;
    static constexpr int kBufferCount = 4;

    virtual ~VeAudioOutput() = default;

    // Opens the device; from then on it reports finished buffers to the client. False when no
    // device could be opened (the mixer then runs silently).
    virtual bool Open(VeAudioOutputClient* client) = 0;
    // Starts playing (called once the first buffers are queued).
    virtual void Resume() = 0;
    // Binds buffer slot index (0 to 3) to its sample memory.
    virtual bool Prepare(int index, const int16_t* samples, int bytes) = 0;
    // Queues the slot behind the ones already queued.
    virtual bool Write(int index) = 0;
    virtual bool Unprepare(int index) = 0;
    // The client is stopping and waits for every queued buffer to come back: a device keeps
    // playing by itself; one driven by its owner plays out what it holds.
    virtual void Stopping() = 0;
    virtual bool Close() = 0;
    // A short description for the log ("dummy", "pulseaudio", ...).
    virtual std::string Name() const = 0;
};
