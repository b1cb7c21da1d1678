#include "Audio/VeSdlAudioOutput.h"

#include "Audio/VeAudioManager.h"
#include "Platform/VeTime.h"
#include "Support/LogCapture.h"
#include "Support/ScopedEnv.h"
#include "Support/TempUserData.h"
#include "engine/Audio/AudioTestKit.h"

#include <gtest/gtest.h>

namespace {
// Waits (in real time, three seconds at most) until the channel has ended.
bool Ended(VeAudioManager& audio, const VeAudioHandle& handle) {
    const int64_t start = GetTimeMs();
    while (audio.IsPlaying(handle)) {
        if (GetTimeMs() - start > 3000) {
            return false;
        }
        SleepMs(2);
    }
    return true;
}

void LoadTone(VeAudioManager& audio, const std::string& folder, int frames, int16_t value) {
    const std::string path = folder + "/tone.wav";
    WriteFileAtomic(path, WaveBytes(44100, 2, Constant(frames, value)));
    audio.LoadWave("tone", path, 1.0f);
}
} // namespace

TEST(VeSdlAudioOutputTest, DiskDriverRecordsExactlyWhatWasMixed) {
    TempUserData data;
    const std::string file = data.path + "/out.raw";
    ScopedEnv driver("SDL_AUDIODRIVER", "disk");
    ScopedEnv target("SDL_DISKAUDIOFILE", file.c_str());
    {
        VeAudioManager audio("", false);
        ASSERT_TRUE(audio.HasDevice());
        LoadTone(audio, data.path, 3000, 12345);
        const VeAudioHandle handle = audio.Play("tone");
        EXPECT_TRUE(Ended(audio, handle));
        SleepMs(150); // the queued buffers reach the file
    }
    std::string bytes;
    ASSERT_TRUE(ReadFileBytes(file, bytes));
    ASSERT_GE(bytes.size(), 4u * 4096u);
    const auto* samples = reinterpret_cast<const int16_t*>(bytes.data());
    int tone = 0;
    int other = 0;
    for (size_t i = 0; i + 1 < bytes.size() / 2; i += 2) {
        if (samples[i] == 12345 && samples[i + 1] == 12345) {
            ++tone;
        } else if (samples[i] != 0 || samples[i + 1] != 0) {
            ++other;
        }
    }
    EXPECT_EQ(tone, 3000);
    EXPECT_EQ(other, 0);
}

TEST(VeSdlAudioOutputTest, UnavailableDriverFallsBackToSilence) {
    ScopedEnv driver("SDL_AUDIODRIVER", "no-such-driver");
    TempUserData data;
    LogCapture log;
    {
        VeAudioManager audio("", false);
        EXPECT_TRUE(audio.HasDevice());
        LoadTone(audio, data.path, 2205, 1000);
        const VeAudioHandle handle = audio.Play("tone");
        EXPECT_TRUE(Ended(audio, handle)) << "the stand-in device plays";
    }
    ASSERT_EQ(log.lines.size(), 1u);
    EXPECT_NE(log.lines[0].find("without sound"), std::string::npos) << log.lines[0];
}
