#pragma once
// A 16-bit PCM wave file held in memory, always as interleaved stereo: mono files are widened to
// two channels when they are loaded. Files at rates other than 44100 Hz keep their rate; the mixer
// steps through them at the right pitch.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class VeWaveSound {
public:
    // Reads the file. Every failure is a halt: a missing file ("Error: Audio file not found"), a
    // file that is not RIFF, or truncated, or has a format the mixer cannot play ("Error: Audio
    // file invalid" ... "Invalid format."), a RIFF file that is not WAVE ("... is not a valid wave
    // file."). Each text ends with errorSuffix. With debug on, the loading is logged.
    static std::unique_ptr<VeWaveSound> Load(const std::string& path, float volume,
                                             const std::string& errorSuffix, bool debug);

    // The title and text of the halt a bad file would cause.
    struct Failure {
        std::string title;
        std::string text;
    };
    // Reads the file as Load does, but a failure returns null with its message in failure instead
    // of halting. Shares nothing but the log, so it may run on any thread.
    static std::unique_ptr<VeWaveSound> Read(const std::string& path, float volume,
                                             const std::string& errorSuffix, bool debug, Failure& failure);

    // Whole stereo frames that can be played.
    int64_t Frames() const { return frames; }

    std::vector<int16_t> samples;
    uint32_t riffSize = 0;
    uint16_t formatTag = 0;
    uint16_t channels = 0;
    uint16_t blockAlign = 0;
    uint16_t bitsPerSample = 0;
    uint32_t formatSize = 0;
    uint32_t sampleRate = 0;
    uint32_t byteRate = 0;
    uint32_t dataSize = 0;
    float volume = 1.0f;

private:
    int64_t frames = 0;
};
