// The race's sounds on the real mixer (played off-line): positional effects and the music channel
// that the race replaces, speeds up and pauses.
#include "Gameplay/QmMixerRaceAudio.h"

#include "Audio/VeAudioManager.h"
#include "Audio/VeManualAudioOutput.h"
#include "Platform/VeFiles.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {
// A mono 16-bit wave of a second of a constant level.
std::string Wave() {
    const uint32_t frames = 44100;
    std::string bytes = "RIFF";
    const auto put32 = [&bytes](uint32_t v) { bytes.append(reinterpret_cast<const char*>(&v), 4); };
    const auto put16 = [&bytes](uint16_t v) { bytes.append(reinterpret_cast<const char*>(&v), 2); };
    put32(36 + frames * 2);
    bytes += "WAVEfmt ";
    put32(16);
    put16(1);
    put16(1);
    put32(44100);
    put32(88200);
    put16(2);
    put16(16);
    bytes += "data";
    put32(frames * 2);
    bytes.append(frames * 2, '\x10');
    return bytes;
}
} // namespace

TEST(QmMixerRaceAudioTest, TheMusicChannelIsReplacedSpedUpAndPaused) {
    TempUserData data;
    const std::string path = data.path + "/tone.wav";
    ASSERT_TRUE(WriteFileAtomic(path, Wave()));
    VeAudioManager mixer("", false, std::make_unique<VeManualAudioOutput>());
    for (const char* name : {"Jump", "MusicInGame", "Music"}) {
        mixer.LoadWave(name, path, 0.5f);
    }
    VeAudioHandle music;
    QmMixerRaceAudio audio(mixer, music);

    audio.StartMusic("MusicInGame");
    ASSERT_FALSE(music.IsEmpty());
    const VeAudioHandle inGame = music;
    EXPECT_TRUE(mixer.IsPlaying(inGame));
    EXPECT_FLOAT_EQ(audio.MusicSpeed(), 1.0f);
    audio.SetMusicSpeed(1.25f);
    EXPECT_FLOAT_EQ(audio.MusicSpeed(), 1.25f);
    audio.SetMusicPaused(true);
    EXPECT_TRUE(mixer.IsPlaying(inGame)) << "paused, not stopped";

    audio.StartMusic("Music");
    EXPECT_FALSE(music == inGame);
    EXPECT_FALSE(mixer.IsPlaying(inGame)) << "the old music stops";
    EXPECT_FLOAT_EQ(audio.MusicSpeed(), 1.0f);
    audio.StopMusic();
    EXPECT_TRUE(music.IsEmpty());
    EXPECT_FLOAT_EQ(audio.MusicSpeed(), 1.0f);
    audio.SetMusicSpeed(2.0f); // no music: nothing to change
    EXPECT_FLOAT_EQ(audio.MusicSpeed(), 1.0f);

    const int before = mixer.ChannelCount();
    audio.PlayAt("Jump", 640.0f, 320.0f);
    audio.Play("Jump");
    EXPECT_GT(mixer.ChannelCount(), before);
}
