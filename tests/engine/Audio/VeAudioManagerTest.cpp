#include "Audio/VeAudioManager.h"

#include "Platform/VeTime.h"
#include "Support/HaltCapture.h"
#include "Support/LogCapture.h"
#include "Support/TempUserData.h"
#include "engine/Audio/AudioTestKit.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {
std::vector<int16_t> Ramp(int frames, int step, uint16_t channels = 2) {
    std::vector<int16_t> samples;
    for (int k = 0; k < frames; ++k) {
        for (int c = 0; c < channels; ++c) {
            samples.push_back(static_cast<int16_t>((k + 1) * step));
        }
    }
    return samples;
}

int16_t Left(const std::vector<int16_t>& s, int frame) {
    return s[static_cast<size_t>(2 * frame)];
}
int16_t Right(const std::vector<int16_t>& s, int frame) {
    return s[static_cast<size_t>(2 * frame + 1)];
}
} // namespace

class VeAudioManagerTest : public ::testing::Test {
protected:
    TempUserData data;
    MixerRig rig{data.path};
    VeAudioManager& audio = *rig.audio;
};

TEST_F(VeAudioManagerTest, ASoundReadOnAnotherThreadPlaysOnceAdded) {
    const std::string path = data.path + "/ramp.wav";
    ASSERT_TRUE(WriteFileAtomic(path, WaveBytes(44100, 2, Ramp(100, 3))));
    std::unique_ptr<VeWaveSound> sound;
    VeWaveSound::Failure failure;
    std::thread([&] { sound = audio.ReadWave(path, 1.0f, failure); }).join();
    ASSERT_NE(sound, nullptr) << failure.text;
    EXPECT_FALSE(audio.IsLoaded("ramp")); // kept only when added
    audio.AddSound("ramp", std::move(sound));
    audio.Play("ramp");
    const std::vector<int16_t> played = rig.RenderFresh(1);
    EXPECT_EQ(std::vector<int16_t>(played.begin(), played.begin() + 200), Ramp(100, 3));
    EXPECT_EQ(SoundingFrames(played), 100);
}

TEST_F(VeAudioManagerTest, MonoHalfRateSoundPlaysAsStereoAtItsPitch) {
    const std::vector<int16_t> source = Ramp(2000, 8, 1);
    rig.Load("ramp", 22050, 1, source);
    VeAudioHandle handle = audio.Play("ramp");
    const std::vector<int16_t> played = rig.RenderFresh(6);
    // Each source frame lasts two output frames on both sides: 2000 frames at 22050 Hz are
    // 4000 frames at 44100 Hz.
    for (int i = 0; i < 4000; ++i) {
        ASSERT_EQ(Left(played, i), source[static_cast<size_t>(i / 2)]) << "frame " << i;
        ASSERT_EQ(Right(played, i), source[static_cast<size_t>(i / 2)]) << "frame " << i;
    }
    EXPECT_EQ(SoundingFrames(played), 4000);
    EXPECT_FALSE(audio.IsPlaying(handle));
}

TEST_F(VeAudioManagerTest, LimiterDividesLoudSumsAndRecoversByOneHundredthPerChannel) {
    rig.Load("loud", 44100, 2, Constant(MixerRig::kFrames, 32767));
    rig.Load("quiet", 44100, 2, Constant(100, 1000));
    audio.Play("loud");
    audio.Play("loud");
    std::vector<int16_t> played = rig.Render(1);
    EXPECT_FLOAT_EQ(audio.LastGain(), 2.0f);
    played = rig.Render(MixerRig::kAhead - 1);
    played = rig.Render(1);
    EXPECT_EQ(Left(played, 0), 32767) << "two full-scale channels sum to full scale, not past it";
    EXPECT_EQ(Right(played, 1023), 32767);

    // Both loud channels have ended; one quiet channel per buffer lets the divisor fall slowly.
    audio.Play("quiet", true);
    for (int buffer = 1; buffer <= 3; ++buffer) {
        rig.Render(1);
        EXPECT_NEAR(audio.LastGain(), 2.0f - 0.01f * buffer, 1e-4f);
    }
    // Two quiet channels mixed into one buffer lower it twice.
    audio.Play("quiet", true);
    rig.Render(1);
    EXPECT_NEAR(audio.LastGain(), 1.95f, 1e-4f);
    played = rig.RenderFresh(1);
    EXPECT_LT(Left(played, 0), 2000) << "the sum is still divided while the divisor falls";
}

TEST_F(VeAudioManagerTest, PositionalSourcesArePannedAgainstTheListener) {
    rig.Load("tone", 44100, 2, Constant(60 * MixerRig::kFrames, 20000));
    struct Case {
        float x, y, z;
        int16_t left, right;
    };
    const Case cases[] = {
        {1.5f, 0.5f, 0.0f, 0, 20000},      // to the right
        {-0.5f, 0.5f, 0.0f, 20000, 0},     // to the left
        {0.5f, 0.5f, -1.0f, 10000, 10000}, // straight ahead
        {0.5f, 0.5f, 0.0f, 10000, 10000},  // on the listener
        {0.5f, 3.0f, 0.0f, 10000, 10000},  // above
    };
    for (const Case& c : cases) {
        audio.PlayAt("tone", c.x, c.y, c.z);
        const std::vector<int16_t> played = rig.RenderFresh(1);
        EXPECT_EQ(Left(played, 10), c.left) << c.x << "," << c.y << "," << c.z;
        EXPECT_EQ(Right(played, 10), c.right) << c.x << "," << c.y << "," << c.z;
    }
    EXPECT_EQ(audio.ChannelCount(), 1) << "PlayAt replaces the sound's earlier channels";

    // A positional stereo source plays its mono average.
    std::vector<int16_t> split(2 * MixerRig::kFrames, 0);
    for (size_t k = 0; k < split.size(); k += 2) {
        split[k] = 8000;
    }
    rig.Load("split", 44100, 2, split);
    audio.StopAll();
    audio.Play("split", false, true, 0.5f, 0.5f, -1.0f);
    const std::vector<int16_t> played = rig.RenderFresh(1);
    EXPECT_EQ(Left(played, 0), 2000);
    EXPECT_EQ(Right(played, 0), 2000);
}

TEST_F(VeAudioManagerTest, DelayedAndRepeatedStartsBeginOnTime) {
    int64_t now = 10000;
    SetTimeSource([&now] { return now; });
    rig.Load("beep", 44100, 2, Constant(100, 5000));
    audio.Play("beep", false, false, 0, 0, 0, 0, 0.8f, 500, 2);
    rig.Render(1); // mixed at 10000
    now = 10999;
    rig.Render(1);
    now = 11000;
    rig.Render(1);
    // One initial buffer and the refills of 10000 and 10999, then the one of 11000.
    EXPECT_EQ(SoundingFrames(rig.Render(3)), 0);
    EXPECT_NE(rig.Render(1)[0], 0) << "the refill mixed at 11000 starts with the beep";

    // Three starts, 500 ms apart; each is a separate channel of its own.
    rig.Render(8);
    now = 20000;
    VeAudioHandle first = audio.Play("beep", false, false, 0, 0, 0, 3, 0.8f, 500);
    EXPECT_EQ(audio.ChannelCount(), 3);
    std::vector<int> sounding;
    for (int64_t at : {20000, 20499, 20500, 20999, 21000, 21500, 21500, 21500, 21500, 21500}) {
        now = at;
        sounding.push_back(SoundingFrames(rig.Render(1)) > 0 ? 1 : 0);
    }
    // What the six refills from 20000 on mixed reaches the speaker four buffers later.
    sounding.erase(sounding.begin(), sounding.begin() + MixerRig::kAhead);
    EXPECT_EQ(sounding, (std::vector<int>{1, 0, 1, 0, 1, 0}));
    EXPECT_FALSE(audio.IsPlaying(first));
    EXPECT_EQ(audio.ChannelCount(), 0);

    // A gate of zero schedules no repetitions.
    audio.Play("beep", false, false, 0, 0, 0, 3, 0.0f, 500);
    EXPECT_EQ(audio.ChannelCount(), 1);
    SetTimeSource(nullptr);
}

TEST_F(VeAudioManagerTest, LoopingChannelRunsWithoutSeamUntilStopped) {
    const std::vector<int16_t> source = Ramp(300, 50);
    rig.Load("loop", 44100, 2, source);
    VeAudioHandle handle = audio.Play("loop", true);
    const std::vector<int16_t> played = rig.RenderFresh(10);
    for (int i = 0; i < 10 * MixerRig::kFrames; ++i) {
        ASSERT_EQ(Left(played, i), source[static_cast<size_t>(2 * (i % 300))]) << "frame " << i;
    }
    EXPECT_TRUE(audio.IsPlaying(handle));

    EXPECT_TRUE(audio.Stop(handle));
    EXPECT_TRUE(handle.IsEmpty());
    EXPECT_FALSE(audio.IsPlaying(handle));
    EXPECT_EQ(SoundingFrames(rig.Render(MixerRig::kAhead)), MixerRig::kAhead * MixerRig::kFrames)
        << "what was already queued still plays";
    EXPECT_EQ(SoundingFrames(rig.Render(MixerRig::kAhead)), 0) << "the first refill after Stop is silent";

    audio.Play("loop", true);
    audio.Play("loop", true, false, 0, 0, 0, 0, 0.8f, 500, 3);
    EXPECT_EQ(audio.StopByName("loop"), 2) << "waiting channels are stopped too";
    EXPECT_EQ(audio.StopByName("Loop"), 0) << "names compare exactly";
    EXPECT_EQ(SoundingFrames(rig.RenderFresh(2)), 0);
    EXPECT_EQ(audio.ChannelCount(), 0);
}

TEST_F(VeAudioManagerTest, HandlesReadEmptyOnceTheirChannelHasEnded) {
    rig.Load("click", 44100, 2, Constant(100, 3000));
    VeAudioHandle handle = audio.Play("click");
    EXPECT_TRUE(audio.IsPlaying(handle));
    rig.Render(1);
    EXPECT_FALSE(audio.IsPlaying(handle));
    EXPECT_FALSE(audio.SetPaused(handle, true));
    EXPECT_FALSE(audio.SetSpeed(handle, 2.0f));
    EXPECT_FALSE(audio.Stop(handle));
    EXPECT_TRUE(handle.IsEmpty());
    VeAudioHandle empty;
    EXPECT_FALSE(audio.Stop(empty));

    // A new channel never takes over an old handle.
    VeAudioHandle old(audio.Play("click").Id());
    rig.Render(1);
    VeAudioHandle fresh = audio.Play("click");
    EXPECT_NE(fresh, old);
    EXPECT_FALSE(audio.IsPlaying(old));
}

TEST_F(VeAudioManagerTest, SpeedChangesDurationAndAveragesSkippedFrames) {
    const std::vector<int16_t> source = Ramp(4 * MixerRig::kFrames, 4);
    rig.Load("ramp", 44100, 2, source);
    VeAudioHandle fast = audio.Play("ramp", false, false, 0, 0, 0, 0, 0.8f, 500, 0, 2.0f);
    const std::vector<int16_t> played = rig.RenderFresh(8);
    EXPECT_EQ(SoundingFrames(played), 2 * MixerRig::kFrames) << "twice the speed, half the time";
    for (int i = 0; i < 2 * MixerRig::kFrames; ++i) {
        ASSERT_EQ(Left(played, i), 8 * i + 6) << "frame " << i << " averages source frames " << 2 * i << "+1";
    }
    EXPECT_FALSE(audio.IsPlaying(fast));

    // Speed 0 holds the channel silently; negative speeds count as 0.
    VeAudioHandle held = audio.Play("ramp");
    EXPECT_TRUE(audio.SetSpeed(held, -3.0f));
    EXPECT_EQ(SoundingFrames(rig.RenderFresh(8)), 0);
    EXPECT_TRUE(audio.IsPlaying(held));
    EXPECT_TRUE(audio.SetSpeed(held, 1.0f));
    EXPECT_GT(SoundingFrames(rig.RenderFresh(1)), 0);
}

TEST_F(VeAudioManagerTest, PausedChannelHoldsItsPlace) {
    const std::vector<int16_t> source = Ramp(3 * MixerRig::kFrames, 5);
    rig.Load("ramp", 44100, 2, source);
    VeAudioHandle handle = audio.Play("ramp");
    rig.Render(1);
    EXPECT_TRUE(audio.SetPaused(handle, true));
    EXPECT_EQ(SoundingFrames(rig.RenderFresh(6)), 0);
    EXPECT_TRUE(audio.IsPlaying(handle));
    EXPECT_TRUE(audio.SetPaused(handle, false));
    const std::vector<int16_t> played = rig.RenderFresh(1);
    EXPECT_EQ(Left(played, 0), source[2 * MixerRig::kFrames]) << "resumes after the first buffer";
}

TEST_F(VeAudioManagerTest, ExclusivePlayAndReloadingReplaceEarlierChannels) {
    rig.Load("music", 44100, 2, Constant(500, 1000));
    audio.Play("music", true);
    audio.Play("music", true);
    VeAudioHandle only = audio.PlayExclusive("music", true);
    EXPECT_EQ(audio.ChannelCount(), 1);
    EXPECT_TRUE(audio.IsPlaying(only));

    rig.Load("music", 44100, 2, Constant(500, 2000));
    EXPECT_FALSE(audio.IsPlaying(only)) << "channels of a replaced sound end";
    audio.Play("music");
    EXPECT_EQ(Left(rig.RenderFresh(1), 0), 2000);
}

TEST_F(VeAudioManagerTest, PlayingWhatIsNotPlayableHalts) {
    EXPECT_HALT(audio.Play("Nothing"), "Error: Audio file not loaded",
                "Failed to play audio: 'Nothing'. The file was not loaded");
    audio.SetErrorSuffix("\n\nSuffix.");
    rig.Load("empty", 44100, 2, {});
    EXPECT_HALT(audio.Play("empty"), "Error: Audio Manager failed to mix buffers",
                "The input buffer is empty.\n\nSuffix.");
}

TEST(VeAudioManagerDeviceTest, WithoutAnyDeviceTheGameRunsSilently) {
    TempUserData data;
    LogCapture log;
    {
        VeAudioManager audio("", false, std::make_unique<VeManualAudioOutput>(false));
        EXPECT_FALSE(audio.HasDevice());
        const std::string path = data.path + "/tone.wav";
        WriteFileAtomic(path, WaveBytes(44100, 2, Constant(100, 1000)));
        audio.LoadWave("tone", path, 1.0f);
        VeAudioHandle handle = audio.Play("tone", true);
        EXPECT_FALSE(audio.IsPlaying(handle));
        EXPECT_FALSE(audio.Stop(handle));
        EXPECT_EQ(audio.ChannelCount(), 0);
    }
    ASSERT_EQ(log.lines.size(), 1u);
    EXPECT_NE(log.lines[0].find("without sound"), std::string::npos);
}

TEST(VeAudioManagerDeviceTest, ShutdownTakesBackEveryQueuedBuffer) {
    auto made = std::make_unique<VeManualAudioOutput>();
    VeManualAudioOutput* output = made.get();
    VeAudioManager audio("", false, std::move(made));
    EXPECT_EQ(output->QueuedBuffers(), 4);
    audio.Shutdown();
    EXPECT_EQ(output->QueuedBuffers(), 0);
    EXPECT_FALSE(output->PlayNext());
    audio.Shutdown(); // runs once
}

// Play, Stop and StopByName race the output's thread; run under ThreadSanitizer as well.
TEST(VeAudioManagerThreadTest, ChannelsChangeWhileTheOutputMixes) {
    TempUserData data;
    MixerRig rig(data.path);
    VeAudioManager& audio = *rig.audio;
    rig.Load("short", 44100, 2, Constant(300, 4000));
    rig.Load("long", 22050, 1, std::vector<int16_t>(5000, 3000));
    std::atomic<bool> done{false};
    std::thread speaker([&] {
        std::vector<int16_t> frames(static_cast<size_t>(2 * MixerRig::kFrames));
        while (!done.load()) {
            rig.output->PlayNext(frames.data());
            std::this_thread::yield();
        }
    });
    int stopped = 0;
    for (int round = 0; round < 1000; ++round) {
        VeAudioHandle a = audio.Play("short", false, true, static_cast<float>(round % 3), 0.5f, 0.0f);
        VeAudioHandle b = audio.Play("long", true, false, 0, 0, 0, 0, 0.8f, 500, 0, 0.5f + (round % 4));
        audio.SetSpeed(a, 1.5f);
        audio.SetPaused(b, round % 2 == 0);
        stopped += audio.Stop(b) ? 1 : 0;
        if (round % 7 == 0) {
            audio.StopByName("short");
        }
        if (round % 50 == 0) {
            audio.SetListenerPosition(0.1f * (round % 10), 0.5f, 0.0f);
        }
        audio.IsPlaying(a);
    }
    done = true;
    speaker.join();
    EXPECT_EQ(stopped, 1000) << "a looping channel plays until it is stopped";
    audio.StopAll();
    rig.Render(1);
    EXPECT_EQ(audio.ChannelCount(), 0);
}
