#pragma once
// The system's sound device through SDL: 44100 Hz, 16-bit stereo, 1024-frame periods. SDL's
// callback plays the queued buffers in order and reports each one back as it is used up, which
// drives the mixer's refills from SDL's audio thread.
//
// When the configured driver cannot open a device (no sound card, no sound server) the output
// logs one line and opens SDL's "dummy" driver instead, which consumes buffers at the real rate:
// the game runs silently with channels that still start and end on time. SDL_AUDIODRIVER picks the
// driver as usual ("dummy", "disk" and the others all work).
#include "Audio/VeAudioOutput.h"
#include "Threads/VtMutex.h"

#include <array>
#include <cstdint>
#include <string>

class VeSdlAudioOutput : public VeAudioOutput {
public:
    VeSdlAudioOutput() = default;
    ~VeSdlAudioOutput() override;
    VeSdlAudioOutput(const VeSdlAudioOutput&) = delete;
    VeSdlAudioOutput& operator=(const VeSdlAudioOutput&) = delete;

    bool Open(VeAudioOutputClient* client) override;
    void Resume() override;
    bool Prepare(int index, const int16_t* samples, int bytes) override;
    bool Write(int index) override;
    bool Unprepare(int index) override;
    void Stopping() override {}
    bool Close() override;
    std::string Name() const override { return driver; }

private:
    struct Slot {
        const uint8_t* data = nullptr;
        int bytes = 0;
        bool prepared = false;
        bool queued = false;
    };

    static void Callback(void* self, uint8_t* stream, int length);
    void Fill(uint8_t* stream, int length);
    bool OpenDevice();
    void QuitAudio();

    VeAudioOutputClient* client = nullptr;
    uint32_t device = 0;
    bool subsystemStarted = false; // through SDL_InitSubSystem
    bool driverStarted = false;    // the dummy driver, started directly
    std::string driver;
    VtMutex lock; // guards the slots and the queue
    std::array<Slot, kBufferCount> slots;
    std::array<int, kBufferCount> queue{};
    int queueHead = 0;
    int queueLength = 0;
    int readOffset = 0; // bytes of the front buffer already handed to SDL
};
