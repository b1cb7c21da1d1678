#include "Audio/VeWaveSound.h"

#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Platform/VeMessageBox.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace {
uint16_t Read16(const std::string& bytes, size_t at) {
    return static_cast<uint16_t>(static_cast<uint8_t>(bytes[at]) | static_cast<uint8_t>(bytes[at + 1]) << 8);
}

uint32_t Read32(const std::string& bytes, size_t at) {
    return static_cast<uint32_t>(Read16(bytes, at)) | static_cast<uint32_t>(Read16(bytes, at + 2)) << 16;
}

bool TagAt(const std::string& bytes, size_t at, const char* tag) {
    return bytes.size() >= at + 4 && bytes.compare(at, 4, tag) == 0;
}

// The data chunk normally follows the format chunk directly (the 44-byte canonical header); files
// with other chunks in between (lists, facts) are walked chunk by chunk. Without any chunk named
// "data" the canonical place is taken as it is.
size_t FindDataChunk(const std::string& bytes, uint32_t formatSize) {
    constexpr size_t kCanonical = 36;
    size_t at = 20 + static_cast<size_t>(formatSize) + (formatSize & 1u);
    while (formatSize >= 16 && at + 8 <= bytes.size()) {
        if (TagAt(bytes, at, "data")) {
            return at;
        }
        const uint32_t size = Read32(bytes, at + 4);
        at += 8 + static_cast<size_t>(size) + (size & 1u);
    }
    return kCanonical;
}
} // namespace

std::unique_ptr<VeWaveSound> VeWaveSound::Load(const std::string& path, float volume,
                                               const std::string& errorSuffix, bool debug) {
    Failure failure;
    std::unique_ptr<VeWaveSound> sound = Read(path, volume, errorSuffix, debug, failure);
    if (!sound) {
        Halt(failure.title, failure.text);
    }
    return sound;
}

std::unique_ptr<VeWaveSound> VeWaveSound::Read(const std::string& path, float volume,
                                               const std::string& errorSuffix, bool debug, Failure& failure) {
    auto fail = [&failure](const std::string& title, const std::string& text) {
        failure = {title, text};
        return nullptr;
    };
    std::string bytes;
    if (!FileExists(path) || !ReadFileBytes(path, bytes)) {
        return fail("Error: Audio file not found",
                    "Failed to open audio file: '" + path + "'." + errorSuffix);
    }
    const std::string invalidTitle = "Error: Audio file invalid";
    const std::string invalid = "Could not load audio file: '" + path + "'. Invalid format." + errorSuffix;
    if (!TagAt(bytes, 0, "RIFF") || bytes.size() < 12) {
        return fail(invalidTitle, invalid);
    }
    if (!TagAt(bytes, 8, "WAVE")) {
        return fail(invalidTitle, "Could not load audio file: '" + path +
                                      "'. The file is not a valid wave file." + errorSuffix);
    }
    if (bytes.size() < 44) {
        return fail(invalidTitle, invalid);
    }

    auto sound = std::make_unique<VeWaveSound>();
    sound->volume = volume;
    sound->riffSize = Read32(bytes, 4);
    sound->formatSize = Read32(bytes, 16);
    sound->formatTag = Read16(bytes, 20);
    sound->channels = Read16(bytes, 22);
    sound->sampleRate = Read32(bytes, 24);
    sound->byteRate = Read32(bytes, 28);
    sound->blockAlign = Read16(bytes, 32);
    sound->bitsPerSample = Read16(bytes, 34);
    const size_t dataChunk = FindDataChunk(bytes, sound->formatSize);
    if (dataChunk + 8 > bytes.size() || sound->channels < 1 || sound->channels > 2 ||
        sound->sampleRate == 0) {
        return fail(invalidTitle, invalid);
    }
    // The mixer reads 16-bit integer samples only; anything else (8-bit, 24-bit, floating point,
    // compressed) would play as noise, so it is refused with what was found.
    if (sound->formatTag != 1 || sound->bitsPerSample != 16) {
        return fail(invalidTitle, "Could not load audio file: '" + path +
                                      "'. Only 16-bit PCM wave files are supported (this one has format " +
                                      std::to_string(sound->formatTag) + " with " +
                                      std::to_string(sound->bitsPerSample) + "-bit samples)." + errorSuffix);
    }
    sound->dataSize = Read32(bytes, dataChunk + 4);

    const size_t sampleCount = (sound->dataSize & 0x7FFFFFFFu) / 2;
    const size_t dataStart = dataChunk + 8;
    if (bytes.size() - dataStart < sampleCount * 2) {
        return fail(invalidTitle, invalid);
    }
    const bool mono = sound->channels == 1;
    sound->samples.resize(mono ? sampleCount * 2 : sampleCount);
    if (sampleCount > 0) {
        std::memcpy(sound->samples.data(), bytes.data() + dataStart, sampleCount * 2);
    }
    // One line, logged whole at the end: reads on other threads do not cut into each other's lines.
    std::string logged = "Loading WAV file \"" + path + "\"..";
    if (mono) {
        sound->channels = 2;
        for (size_t i = sampleCount; i-- > 0;) {
            sound->samples[2 * i] = sound->samples[i];
            sound->samples[2 * i + 1] = sound->samples[i];
        }
        sound->dataSize *= 2;
        logged += " Converted to 2 channels.";
    }
    if (debug) {
        Log("%s Loaded.\n", logged.c_str());
    }

    const int64_t stored = static_cast<int64_t>(sound->samples.size() / 2);
    const int bytesPerSample = sound->bitsPerSample / 8;
    const int64_t declared =
        bytesPerSample > 0 ? static_cast<int64_t>(sound->dataSize) / bytesPerSample / 2 : stored;
    sound->frames = std::min(declared, stored);
    return sound;
}
