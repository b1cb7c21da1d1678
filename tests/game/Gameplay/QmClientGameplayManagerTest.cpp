// The race flow around a run: countdown and start, pause, finish, death and retry, the in-race
// menu, the hurrying music, the badge, the ghost's drawing and the racer's face.
#include "game/Gameplay/GameplayTestSupport.h"

#include "Gameplay/QmHighscores.h"
#include "Platform/VeFiles.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

#include <cstdio>

using namespace gameplay_test;

namespace {

const std::vector<std::string> kOpen = OnFloor({"S........."});
const std::vector<std::string> kFinishAhead = OnFloor({"S..F......"});
const std::vector<std::string> kWall = OnFloor({"S.#......."});

// Gives the rig's map a score file (tour folder Forest, Level_1.map) holding these runs, and
// lets the race read it.
void LoadScores(RaceRig& rig, const std::vector<std::pair<std::string, int64_t>>& runs) {
    QmCoreEnvironmentManager& world = rig.world;
    world.tours.assign(1, TourRecord());
    world.tourFolders = {"Forest"};
    world.tourLevels = {{"Level_1.map"}};
    world.tourIndex = 0;
    world.levelIndex = 0;
    CreateFolder(GetGameFolder() + "/Maps/Forest");
    QmHighscores scores(world);
    scores.SaveScores(QmRecording(), false, true, std::string(), false, 0);
    for (const auto& [name, time] : runs) {
        scores.SaveScores(QmRecording(), false, false, name, true, time);
    }
    rig.race->LoadScores();
}

// The music as the race left it: its name, the hurry sounds played, its speed and whether it waits.
std::string Music(const FakeAudio& audio) {
    char speed[16];
    std::snprintf(speed, sizeof speed, "%.2f", static_cast<double>(audio.musicSpeed));
    return audio.music + ", hurry " + std::to_string(audio.Count("Hurry")) + ", more " +
           std::to_string(audio.Count("HurryMore")) + ", speed " + speed +
           (audio.musicPaused ? ", paused" : "");
}

bool Shown(const RaceRig& rig, const std::string& text) {
    return std::find(rig.drawer.texts.begin(), rig.drawer.texts.end(), text) != rig.drawer.texts.end();
}
} // namespace

TEST(QmClientGameplayManagerTest, TheCountdownRunsTwoSecondsOrFiveInTheTutorialThenStartsTheRace) {
    for (const bool tutorial : {false, true}) {
        SCOPED_TRACE(tutorial ? "tutorial" : "race");
        RaceRig rig(kOpen, tutorial ? "TUTORIAL" : "Test");
        const int seconds = tutorial ? 5 : 2;
        rig.host.music = true;
        rig.Start();
        EXPECT_EQ(rig.audio.music, "MusicInGame");
        rig.Frame();
        EXPECT_EQ(rig.drawer.countdown, std::to_string(seconds));
        EXPECT_EQ(Shown(rig, "line 180@160") && Shown(rig, "line 181@480"), tutorial) << "the hints";
        rig.Frames(60);
        EXPECT_EQ(rig.audio.Count("Countdown"), 2) << "one more at one second";
        rig.Frames(seconds * 60 - 61);
        EXPECT_EQ(rig.drawer.countdown, "1");
        EXPECT_EQ(rig.audio.Count("Countdown"), seconds);
        EXPECT_EQ(rig.race->running, 0);
        rig.Frames(2);
        EXPECT_EQ(rig.race->running, 1);
        EXPECT_EQ(rig.audio.Count("Start"), 1);
        EXPECT_EQ(rig.audio.Count("Countdown"), seconds);
        EXPECT_LE(rig.race->RaceTime(), 17);
        rig.drawer.texts.clear();
        rig.Frames(60);
        EXPECT_NEAR(static_cast<double>(rig.race->RaceTime()), 1000.0, 17.0);
        EXPECT_EQ(Shown(rig, "line 184@480"), tutorial) << "the hint while running";
    }
}

TEST(QmClientGameplayManagerTest, AFreshPressStartsTheRaceButAHeldKeyDoesNot) {
    {
        RaceRig rig(kOpen);
        rig.Start();
        rig.Frames(10);
        rig.controls.right = true;
        rig.Frame();
        EXPECT_EQ(rig.race->running, 1) << "started at once";
        EXPECT_EQ(rig.audio.Count("Start"), 0) << "without the start sound";
        EXPECT_GT(rig.Racer().x, 0.0f) << "and moving in the same frame";
    }
    {
        // Party play: the race waits, the player holds right, then confirms.
        RaceRig rig(kOpen);
        rig.race->PrepareRace();
        rig.controls.right = true;
        rig.Frames(5);
        EXPECT_EQ(rig.drawer.texts.back(), "line 13@480") << "waiting for the player";
        rig.Tap(&FakeControls::confirm);
        rig.Frames(100);
        EXPECT_EQ(rig.race->running, 0) << "the key was already held";
        rig.Frames(30);
        EXPECT_EQ(rig.race->running, 1) << "started by the clock";
        EXPECT_EQ(rig.audio.Count("Start"), 1);
    }
}

TEST(QmClientGameplayManagerTest, TheFinishHandsOverTimeAndRankOnceAndAPauseOfAnyLengthLeavesTheTimeAlone) {
    int64_t times[2] = {0, 0};
    for (int paused = 0; paused < 2; ++paused) {
        RaceRig rig(kFinishAhead);
        rig.Start(true);
        rig.Frames(20);
        if (paused) {
            rig.Tap(&FakeControls::menu);
            EXPECT_EQ(rig.host.menuLine, 12);
            EXPECT_EQ(rig.host.menuCommand, "EXIT_GAME");
            const float x = rig.Racer().x;
            const int64_t frozen = rig.race->RaceTime();
            rig.Frames(600); // ten seconds in the menu
            rig.clock.now += 123456;
            rig.Frame();
            EXPECT_FLOAT_EQ(rig.Racer().x, x) << "nothing moves while paused";
            EXPECT_EQ(rig.race->RaceTime(), frozen);
            rig.host.menuOpen = false;
            rig.Frame(); // resumes: this frame's time does not count
            rig.Frames(19);
        } else {
            rig.Frames(21);
        }
        rig.Frames(60);
        ASSERT_EQ(rig.host.finishes, 1) << "handled once";
        EXPECT_EQ(rig.host.finishRank, 1) << "an empty list: any time ranks first";
        EXPECT_EQ(rig.controls.endRaceInputs, 1);
        EXPECT_EQ(rig.audio.Count("Finish"), 1);
        times[paused] = rig.host.finishTime;
    }
    // (How long the run takes: the simulator's flat run.)
    EXPECT_NEAR(static_cast<double>(times[1]), static_cast<double>(times[0]), 17.0);

    // The random-level run counts the level and asks for the next one instead.
    RaceRig random(kFinishAhead);
    random.host.playMode = 3;
    random.Start(true);
    random.Frames(60);
    EXPECT_EQ(random.host.finishes, 0);
    EXPECT_EQ(random.race->retryRequested, 1);
}

TEST(QmClientGameplayManagerTest, DeathRumblesTurnsGreyAndWaitsForARetry) {
    RaceRig rig(OnFloor({"S.f......."}));
    rig.host.music = true;
    rig.Start(true);
    for (int i = 0; i < 60 && rig.Racer().active; ++i) {
        rig.Frame();
    }
    ASSERT_EQ(rig.Racer().active, 0);
    EXPECT_EQ(rig.audio.Count("Fire"), 1);
    EXPECT_EQ(rig.audio.music, "Music") << "the menu music comes back";
    EXPECT_TRUE(rig.controls.rumbling);
    const int64_t finalTime = rig.race->RaceTime();
    EXPECT_GT(finalTime, 0);
    rig.Frames(13); // past 200 ms
    EXPECT_FALSE(rig.controls.rumbling);
    EXPECT_GT(rig.drawer.greyFrames, 10);
    EXPECT_EQ(rig.drawer.texts.back(), "line 13@480");
    EXPECT_EQ(rig.race->RaceTime(), finalTime) << "the clock stands";
    EXPECT_EQ(rig.race->retryRequested, 0);
    rig.Tap(&FakeControls::confirm);
    EXPECT_EQ(rig.race->retryRequested, 1);
}

TEST(QmClientGameplayManagerTest, ExitGameFromTheMenuKillsTheRacerAndReturnsToThePages) {
    RaceRig rig(kOpen);
    rig.host.music = true;
    rig.Start();
    rig.Frames(5);
    rig.Tap(&FakeControls::menu);
    rig.host.choose = "EXIT_GAME";
    rig.Frame();
    EXPECT_EQ(rig.Racer().active, 0);
    EXPECT_EQ(rig.host.returns, 1);
    EXPECT_EQ(rig.audio.music, "Music");
}

TEST(QmClientGameplayManagerTest, TheMusicHurriesAt30And60SecondsAgainstABestTimeOf60) {
    TempUserData data;
    RaceRig rig(kWall);
    LoadScores(rig, {{"Ann", 60000}});
    ASSERT_EQ(rig.race->Highscores().BestTime(), 60000);
    rig.host.music = true;
    rig.Start(true);
    rig.Frames(1);
    ASSERT_EQ(rig.race->running, 1);
    rig.Frames(29 * 60);
    EXPECT_EQ(Music(rig.audio), "MusicInGame, hurry 0, more 0, speed 1.00");
    rig.Frames(62);
    EXPECT_EQ(Music(rig.audio), "MusicInGame, hurry 1, more 0, speed 1.25, paused")
        << "while the hurry sounds";
    rig.Frames(45);
    EXPECT_EQ(Music(rig.audio), "MusicInGame, hurry 1, more 0, speed 1.25") << "back after 700 ms";
    rig.Frames(29 * 60);
    EXPECT_EQ(Music(rig.audio), "MusicInGame, hurry 1, more 0, speed 1.25");
    rig.Frames(62);
    EXPECT_EQ(Music(rig.audio), "MusicInGame, hurry 1, more 1, speed 1.50");
    rig.Frames(600);
    EXPECT_EQ(Music(rig.audio), "MusicInGame, hurry 1, more 1, speed 1.50") << "never beyond 1.5";
}

TEST(QmClientGameplayManagerTest, WithoutHighscoresTheMusicSpeedsUpOnceAfterTwentySeconds) {
    RaceRig rig(kWall);
    rig.host.music = true;
    rig.Start(true);
    rig.Frames(19 * 60);
    EXPECT_EQ(Music(rig.audio), "MusicInGame, hurry 0, more 0, speed 1.00");
    rig.Frames(2 * 60);
    EXPECT_EQ(Music(rig.audio), "MusicInGame, hurry 1, more 0, speed 1.50");
    rig.Frames(20 * 60);
    EXPECT_EQ(Music(rig.audio), "MusicInGame, hurry 1, more 0, speed 1.50");
    // With the setting off the music is left alone.
    RaceRig quiet(kWall);
    quiet.Start(true);
    quiet.Frames(25 * 60);
    EXPECT_EQ(Music(quiet.audio), ", hurry 0, more 0, speed 1.00");
}

TEST(QmClientGameplayManagerTest, TheBadgeFollowsTheTimeThroughTheLimits) {
    TempUserData data;
    RaceRig rig(kWall);
    LoadScores(rig, {{"Ann", 1000}, {"Bob", 2000}, {"Cid", 3000}});
    rig.Start(true);
    rig.Frame();
    // A second apart; with fewer than ten entries the plain badge has no limit.
    for (const int badge : {QmRaceDrawer::GoldBadge, QmRaceDrawer::SilverBadge, QmRaceDrawer::BronzeBadge,
                            QmRaceDrawer::PlainBadge}) {
        EXPECT_EQ(rig.drawer.badge, badge);
        rig.Frames(60);
    }
}

TEST(QmClientGameplayManagerTest, TheGhostIsDrawnFaintlyOnlyWithARecording) {
    RaceRig rig(kOpen);
    rig.Start();
    rig.Frame();
    ASSERT_EQ(rig.drawer.drawn.size(), 1u) << "the racer alone";
    EXPECT_EQ(rig.drawer.drawn[0].kind, QmRaceDrawer::RacerEntity);
    QmRecording best;
    best.FromText("0:2;500:5");
    rig.race->SetReplay(best);
    rig.drawer.drawn.clear();
    rig.Frame();
    ASSERT_EQ(rig.drawer.drawn.size(), 2u);
    EXPECT_EQ(rig.drawer.drawn[1].kind, QmRaceDrawer::GhostEntity);
    EXPECT_FLOAT_EQ(rig.drawer.drawn[1].alpha, 0.3f);
    // The random-level run has no ghost.
    rig.host.playMode = 3;
    rig.drawer.drawn.clear();
    rig.Frame();
    EXPECT_EQ(rig.drawer.drawn.size(), 1u);
}

TEST(QmClientGameplayManagerTest, TheRacerLooksWhereItGoesBlinksAndItsInputsAreRecorded) {
    RaceRig rig(kOpen);
    rig.Start();
    rig.Tap(&FakeControls::right); // a fresh press in the countdown starts the race: race time 0
    EXPECT_EQ(rig.drawer.eyeDX, 1);
    rig.Frame();
    rig.Tap(&FakeControls::jump);
    EXPECT_EQ(rig.drawer.eyeDY, -1) << "looking up while rising";
    rig.Frames(200);
    // Right (2) at 0 and let go (5) a frame later, then jump (0) and let go (3).
    EXPECT_EQ(rig.race->Recording().ToText(), "0:2;17:5;34:0;50:3");
    // A blink of four frames: up to 3 and back to 0 within 200 ms, every two seconds.
    const std::vector<int>& frames = rig.drawer.bodyFrames;
    EXPECT_NE(std::find(frames.begin(), frames.end(), 3), frames.end());
    int blinks = 0;
    for (size_t i = 1; i < frames.size(); ++i) {
        blinks += frames[i] == 1 && frames[i - 1] == 0 ? 1 : 0;
    }
    EXPECT_EQ(blinks, 1) << "3.4 seconds: one blink after the first two";
    // A new countdown starts a new recording.
    rig.Start();
    EXPECT_TRUE(rig.race->Recording().Empty());
}
