#pragma once
// Test support for the mixer: wave files written on the fly, and a manager on an output that the
// test plays buffer by buffer.
#include "Audio/VeAudioManager.h"
#include "Audio/VeManualAudioOutput.h"
#include "Platform/VeFiles.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// A canonical 44-byte-header PCM file around the samples (interleaved when stereo).
inline std::string WaveBytes(uint32_t rate, uint16_t channels, const std::vector<int16_t>& samples) {
    std::string bytes;
    auto put16 = [&bytes](uint32_t v) {
        bytes.push_back(static_cast<char>(v & 0xFF));
        bytes.push_back(static_cast<char>((v >> 8) & 0xFF));
    };
    auto put32 = [&put16](uint32_t v) {
        put16(v & 0xFFFF);
        put16(v >> 16);
    };
    const auto dataSize = static_cast<uint32_t>(samples.size() * 2);
    bytes += "RIFF";
    put32(36 + dataSize);
    bytes += "WAVEfmt ";
    put32(16);
    put16(1);
    put16(channels);
    put32(rate);
    put32(rate * channels * 2);
    put16(channels * 2);
    put16(16);
    bytes += "data";
    put32(dataSize);
    for (int16_t s : samples) {
        put16(static_cast<uint16_t>(s));
    }
    return bytes;
}

// Stereo frames where both sides hold value.
inline std::vector<int16_t> Constant(int frames, int16_t value) {
    return std::vector<int16_t>(static_cast<size_t>(frames) * 2, value);
}

class MixerRig {
public:
    // Buffers between a refill and the moment the speaker plays it.
    static constexpr int kAhead = VeAudioOutput::kBufferCount;
    static constexpr int kFrames = VeAudioOutput::kFramesPerBuffer;

    explicit MixerRig(const std::string& folder, const std::string& suffix = "") : folder(folder) {
        auto made = std::make_unique<VeManualAudioOutput>();
        output = made.get();
        audio = std::make_unique<VeAudioManager>(suffix, false, std::move(made));
        audio->SetListenerPosition(0.5f, 0.5f, 0.0f);
        audio->SetListenerForward(0.0f, 0.0f, -1.0f);
        audio->SetListenerUp(0.0f, 1.0f, 0.0f);
    }

    void Load(const std::string& name, uint32_t rate, uint16_t channels,
              const std::vector<int16_t>& samples) {
        const std::string path = folder + "/" + name + ".wav";
        WriteFileAtomic(path, WaveBytes(rate, channels, samples));
        audio->LoadWave(name, path, 1.0f);
    }

    // Plays count buffers; returns what the speaker got, interleaved.
    std::vector<int16_t> Render(int count) {
        std::vector<int16_t> played(static_cast<size_t>(count) * kFrames * 2);
        for (int i = 0; i < count; ++i) {
            output->PlayNext(played.data() + static_cast<size_t>(i) * kFrames * 2);
        }
        return played;
    }

    // Plays count refills' worth of sound that is mixed from now on (the buffers already ahead are
    // played and dropped first).
    std::vector<int16_t> RenderFresh(int count) {
        Render(kAhead);
        return Render(count);
    }

    std::string folder;
    VeManualAudioOutput* output = nullptr;
    std::unique_ptr<VeAudioManager> audio;
};

// Frames with any sound.
inline int SoundingFrames(const std::vector<int16_t>& samples) {
    int frames = 0;
    for (size_t i = 0; i + 1 < samples.size(); i += 2) {
        frames += samples[i] != 0 || samples[i + 1] != 0;
    }
    return frames;
}
