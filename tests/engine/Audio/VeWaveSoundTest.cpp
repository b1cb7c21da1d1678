#include "Audio/VeWaveSound.h"

#include "Support/HaltCapture.h"
#include "Support/LogCapture.h"
#include "Support/TempUserData.h"
#include "engine/Audio/AudioTestKit.h"

#include <gtest/gtest.h>

namespace {
const std::string kSuffix = "\n\nPlease download the latest version.";
}

class VeWaveSoundTest : public ::testing::Test {
protected:
    std::string Write(const std::string& name, const std::string& bytes) {
        const std::string path = data.path + "/" + name;
        WriteFileAtomic(path, bytes);
        return path;
    }
    TempUserData data;
    MixerRig rig{data.path, kSuffix};
};

TEST_F(VeWaveSoundTest, BadFilesHaltWithTheirMessages) {
    // LoadWave halts; ReadWave, for reads on other threads, returns the same message instead.
    auto expectBad = [this](const std::string& path, const std::string& title, const std::string& text) {
        EXPECT_HALT(rig.audio->LoadWave("a", path, 1.0f), title, text);
        VeWaveSound::Failure failure;
        EXPECT_EQ(rig.audio->ReadWave(path, 1.0f, failure), nullptr) << path;
        EXPECT_EQ(failure.title, title) << path;
        EXPECT_EQ(failure.text, text) << path;
    };
    const std::string valid = WaveBytes(44100, 2, Constant(50, 100));
    const std::string missing = data.path + "/Audio/None.wav";
    expectBad(missing, "Error: Audio file not found",
              "Failed to open audio file: '" + missing + "'." + kSuffix);

    const std::string invalid = "Error: Audio file invalid";
    auto invalidFormat = [](const std::string& path) {
        return "Could not load audio file: '" + path + "'. Invalid format." + kSuffix;
    };
    std::string bytes = valid;
    bytes.replace(0, 4, "RIFX");
    std::string path = Write("rifx.wav", bytes);
    expectBad(path, invalid, invalidFormat(path));
    path = Write("empty.wav", "");
    expectBad(path, invalid, invalidFormat(path));

    bytes = valid;
    bytes.replace(8, 4, "AVI ");
    path = Write("avi.wav", bytes);
    expectBad(path, invalid,
              "Could not load audio file: '" + path + "'. The file is not a valid wave file." + kSuffix);

    // Cut inside the header, inside the data, or right after the tags.
    for (size_t length : {size_t{10}, size_t{12}, size_t{30}, size_t{43}, valid.size() - 1}) {
        path = Write("cut" + std::to_string(length) + ".wav", valid.substr(0, length));
        expectBad(path, invalid, invalidFormat(path));
    }
    // A data size with the top bit set is not trusted for an allocation.
    bytes = valid;
    bytes[43] = static_cast<char>(0xFF);
    path = Write("huge.wav", bytes);
    expectBad(path, invalid, invalidFormat(path));
    // Formats the mixer cannot play: no channels, six channels, no sample rate.
    for (auto [offset, value] : {std::pair{22, 0}, std::pair{22, 6}, std::pair{24, 0}}) {
        bytes = valid;
        bytes[static_cast<size_t>(offset)] = static_cast<char>(value);
        bytes[static_cast<size_t>(offset) + 1] = 0;
        if (offset == 24) {
            bytes[26] = bytes[27] = 0;
        }
        path = Write("format.wav", bytes);
        expectBad(path, invalid, invalidFormat(path));
    }
    // Sample formats the mixer does not read: floating point, 8-bit and 24-bit samples.
    for (auto [tag, bits] : {std::pair{3, 32}, std::pair{1, 8}, std::pair{1, 24}}) {
        bytes = valid;
        bytes[20] = static_cast<char>(tag);
        bytes[34] = static_cast<char>(bits);
        path = Write("sampleformat.wav", bytes);
        expectBad(path, invalid,
                  "Could not load audio file: '" + path +
                      "'. Only 16-bit PCM wave files are supported (this one has format " +
                      std::to_string(tag) + " with " + std::to_string(bits) + "-bit samples)." + kSuffix);
    }
    EXPECT_FALSE(rig.audio->IsLoaded("a"));
}

TEST_F(VeWaveSoundTest, MonoFileIsWidenedToStereo) {
    const std::vector<int16_t> mono = {1, -2, 300, -32768, 32767};
    const std::string path = Write("mono.wav", WaveBytes(22050, 1, mono));
    auto log = std::make_unique<LogCapture>();
    std::unique_ptr<VeWaveSound> sound = VeWaveSound::Load(path, 0.64f, kSuffix, true);
    EXPECT_EQ(log->all, "Loading WAV file \"" + path + "\".. Converted to 2 channels. Loaded.\n");
    EXPECT_EQ(sound->Frames(), 5);
    EXPECT_EQ(sound->samples, (std::vector<int16_t>{1, 1, -2, -2, 300, 300, -32768, -32768, 32767, 32767}));

    log = std::make_unique<LogCapture>();
    VeWaveSound::Load(Write("stereo.wav", WaveBytes(44100, 2, {5, 6})), 1.0f, kSuffix, false);
    EXPECT_EQ(log->all, "") << "quiet without debug";
}

TEST_F(VeWaveSoundTest, ChunksBeforeTheDataAreSkipped) {
    std::string bytes = WaveBytes(44100, 2, {7, 8, 9, 10});
    // A list chunk of odd length (padded to even) between the format and the data.
    const std::string list = std::string("LIST") + std::string("\x05\x00\x00\x00", 4) + "hello" + '\0';
    bytes.insert(36, list);
    std::unique_ptr<VeWaveSound> sound = VeWaveSound::Load(Write("list.wav", bytes), 1.0f, kSuffix, false);
    EXPECT_EQ(sound->samples, (std::vector<int16_t>{7, 8, 9, 10}));
    EXPECT_EQ(sound->Frames(), 2);

    // A format chunk with the extension field (18 bytes) is read as well.
    bytes = WaveBytes(44100, 1, {11, 12});
    bytes[16] = 18;
    bytes.insert(36, std::string(2, '\0'));
    sound = VeWaveSound::Load(Write("ext.wav", bytes), 1.0f, kSuffix, false);
    EXPECT_EQ(sound->samples, (std::vector<int16_t>{11, 11, 12, 12}));
}
