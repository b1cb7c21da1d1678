// The race's sounds on the real mixer (played off-line): positional effects and the music channel
// that the race replaces, speeds up and pauses.
#include "Gameplay/QmMixerRaceAudio.h"

#include "Support/TempUserData.h"
#include "engine/Audio/AudioTestKit.h"

#include <gtest/gtest.h>

TEST(QmMixerRaceAudioTest, TheMusicChannelIsReplacedSpedUpAndPaused) {
    TempUserData data;
    const std::string path = data.path + "/tone.wav";
    ASSERT_TRUE(WriteFileAtomic(path, WaveBytes(44100, 1, std::vector<int16_t>(44100, 0x1010))));
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
