// Mixing cost per buffer: the output is played by hand, so each iteration is one refill of 1024
// frames (about 23 ms of sound) from the playing channels.
#include "Audio/VeAudioManager.h"
#include "Audio/VeManualAudioOutput.h"
#include "Platform/VeFiles.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>

namespace {
std::string WaveFile(const std::string& folder, const std::string& name, uint32_t rate, uint16_t channels,
                     int frames) {
    std::vector<int16_t> samples;
    for (int i = 0; i < frames; ++i) {
        const auto value = static_cast<int16_t>(12000.0 * std::sin(i * 0.031) + 3000.0 * std::sin(i * 0.17));
        for (int c = 0; c < channels; ++c) {
            samples.push_back(value);
        }
    }
    std::string bytes = "RIFF";
    auto put = [&bytes](uint32_t value, int size) {
        for (int i = 0; i < size; ++i) {
            bytes.push_back(static_cast<char>((value >> (8 * i)) & 0xFF));
        }
    };
    const auto dataSize = static_cast<uint32_t>(samples.size() * 2);
    put(36 + dataSize, 4);
    bytes += "WAVEfmt ";
    put(16, 4);
    put(1, 2);
    put(channels, 2);
    put(rate, 4);
    put(rate * channels * 2, 4);
    put(channels * 2u, 2);
    put(16, 2);
    bytes += "data";
    put(dataSize, 4);
    for (int16_t s : samples) {
        put(static_cast<uint16_t>(s), 2);
    }
    const std::string path = folder + "/" + name + ".wav";
    WriteFileAtomic(path, bytes);
    return path;
}

void MixThirtyTwoChannels(benchmark::State& state) {
    std::string folder = (std::filesystem::temp_directory_path() / "quillmaze-bench-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        state.SkipWithError("no temporary folder");
        return;
    }
    auto made = std::make_unique<VeManualAudioOutput>();
    VeManualAudioOutput* output = made.get();
    VeAudioManager audio("", false, std::move(made));
    audio.SetListenerPosition(0.5f, 0.5f, 0.0f);
    audio.SetListenerForward(0.0f, 0.0f, -1.0f);
    audio.SetListenerUp(0.0f, 1.0f, 0.0f);
    audio.LoadWave("music", WaveFile(folder, "music", 44100, 2, 441000), 0.32f);
    audio.LoadWave("effect", WaveFile(folder, "effect", 22050, 1, 44100), 0.64f);
    for (int i = 0; i < 32; ++i) {
        const float speed = 0.5f + 0.25f * static_cast<float>(i % 8); // 0.5 to 2.25
        audio.Play(i % 2 == 0 ? "music" : "effect", true, true, 0.1f * static_cast<float>(i % 11), 0.5f,
                   -0.1f * static_cast<float>(i % 5), 0, 0.8f, 500, 0, speed);
    }
    std::vector<int16_t> frames(2 * VeAudioOutput::kFramesPerBuffer);
    for (auto _ : state) {
        output->PlayNext(frames.data());
        benchmark::DoNotOptimize(frames.data());
    }
    state.counters["channels"] = audio.ChannelCount();
    audio.Shutdown();
    std::filesystem::remove_all(folder);
}
} // namespace

BENCHMARK(MixThirtyTwoChannels)->Unit(benchmark::kMicrosecond)->Repetitions(5)->ReportAggregatesOnly(true);
