#pragma once
// An output without a device, played by its owner: each PlayNext takes the oldest queued buffer,
// hands its samples to the caller and reports it back to the mixer, exactly as a device would.
// Used to render sound off-line (tests, measurements) without waiting on real time. It can also
// stand for a machine without any sound device (available = false: Open fails).
#include "Audio/VeAudioOutput.h"
#include "Threads/VtMutex.h"

#include <array>
#include <cstdint>
#include <string>

class VeManualAudioOutput : public VeAudioOutput {
public:
    explicit VeManualAudioOutput(bool available = true) : available(available) {}

    bool Open(VeAudioOutputClient* client) override;
    void Resume() override {}
    bool Prepare(int index, const int16_t* samples, int bytes) override;
    bool Write(int index) override;
    bool Unprepare(int index) override;
    // Plays out every queued buffer.
    void Stopping() override;
    bool Close() override;
    std::string Name() const override { return "manual"; }

    // Plays the oldest queued buffer: copies its 1024 frames into frames (when given) and reports
    // it done. False when nothing is queued.
    bool PlayNext(int16_t* frames = nullptr);
    int QueuedBuffers();

private:
    bool available;
    VeAudioOutputClient* client = nullptr;
    VtMutex lock;
    std::array<const int16_t*, kBufferCount> slots{};
    std::array<int, kBufferCount> queue{};
    int queueHead = 0;
    int queueLength = 0;
    bool open = false;
};
