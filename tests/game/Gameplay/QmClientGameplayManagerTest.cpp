// The race flow around a run: countdown and start, pause, finish, death and retry, the in-race
// menu, the hurrying music, the badge, the ghost's drawing and the racer's face.
#include "game/Gameplay/GameplayTestSupport.h"

#include "Gameplay/QmHighscores.h"
#include "Platform/VeFiles.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

using namespace gameplay_test;

namespace {

const std::vector<std::string> kOpen = OnFloor({"S........."});
const std::vector<std::string> kFinishAhead = OnFloor({"S..F......"});
const std::vector<std::string> kWall = OnFloor({"S.#......."});

// Points the world at tour folder Forest, map Level_1.map, so that the race has a score file.
void UseScoreFile(QmCoreEnvironmentManager& world) {
    world.tours.assign(1, TourRecord());
    world.tourFolders = {"Forest"};
    world.tourLevels = {{"Level_1.map"}};
    world.tourIndex = 0;
    world.levelIndex = 0;
    CreateFolder(GetGameFolder() + "/Maps/Forest");
}

void WriteScores(QmCoreEnvironmentManager& world, const std::vector<std::pair<std::string, int64_t>>& runs,
                 const std::string& recording = std::string()) {
    QmHighscores scores(world);
    QmRecording best;
    best.FromText(recording);
    scores.SaveScores(best, !recording.empty(), true, std::string(), false, 0);
    for (const auto& [name, time] : runs) {
        scores.SaveScores(best, false, false, name, true, time);
    }
}
} // namespace

TEST(QmClientGameplayManagerTest, TheCountdownRunsTwoSecondsThenStartsTheRace) {
    RaceRig rig(kOpen);
    rig.host.music = true;
    rig.race->StartRace(false, true);
    EXPECT_EQ(rig.audio.Count("Countdown"), 1);
    EXPECT_EQ(rig.audio.music, "MusicInGame");
    rig.Frame();
    EXPECT_EQ(rig.drawer.countdown, "2");
    rig.Frames(60);
    EXPECT_EQ(rig.drawer.countdown, "1");
    EXPECT_EQ(rig.audio.Count("Countdown"), 2) << "one more at one second";
    EXPECT_EQ(rig.race->running, 0);
    rig.Frames(60);
    EXPECT_EQ(rig.race->running, 1);
    EXPECT_EQ(rig.audio.Count("Start"), 1);
    EXPECT_EQ(rig.audio.Count("Countdown"), 2);
    EXPECT_LE(rig.race->RaceTime(), 17);
    rig.Frames(60);
    EXPECT_NEAR(static_cast<double>(rig.race->RaceTime()), 1000.0, 17.0);
}

TEST(QmClientGameplayManagerTest, TheTutorialCountsDownFiveSecondsWithItsHints) {
    RaceRig rig(kOpen, "TUTORIAL");
    rig.race->StartRace(false, true);
    rig.Frame();
    EXPECT_EQ(rig.drawer.countdown, "5");
    EXPECT_NE(std::find(rig.drawer.texts.begin(), rig.drawer.texts.end(), "line 180@160"),
              rig.drawer.texts.end());
    EXPECT_NE(std::find(rig.drawer.texts.begin(), rig.drawer.texts.end(), "line 181@480"),
              rig.drawer.texts.end());
    rig.Frames(299);
    EXPECT_EQ(rig.race->running, 0);
    EXPECT_EQ(rig.audio.Count("Countdown"), 5) << "at 0, 1, 2, 3 and 4 seconds";
    rig.Frames(2);
    EXPECT_EQ(rig.race->running, 1);
    EXPECT_EQ(rig.audio.Count("Start"), 1);
    rig.drawer.texts.clear();
    rig.Frame();
    EXPECT_EQ(rig.drawer.texts.front(), "line 184@480") << "the hint while running";
}

TEST(QmClientGameplayManagerTest, AFreshPressStartsTheRaceButAHeldKeyDoesNot) {
    {
        RaceRig rig(kOpen);
        rig.race->StartRace(false, true);
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
        rig.controls.confirm = true;
        rig.Frame();
        rig.controls.confirm = false;
        EXPECT_EQ(rig.race->countingDown, 1);
        rig.Frames(100);
        EXPECT_EQ(rig.race->running, 0) << "the key was already held";
        rig.Frames(30);
        EXPECT_EQ(rig.race->running, 1) << "started by the clock";
        EXPECT_EQ(rig.audio.Count("Start"), 1);
    }
}

TEST(QmClientGameplayManagerTest, APauseOfAnyLengthLeavesTheFinalTimeUnchanged) {
    int64_t times[2] = {0, 0};
    for (int paused = 0; paused < 2; ++paused) {
        RaceRig rig(kFinishAhead);
        rig.race->StartRace(false, true);
        rig.controls.right = true;
        rig.Frames(20);
        if (paused) {
            rig.controls.menu = true;
            rig.Frame();
            rig.controls.menu = false;
            EXPECT_TRUE(rig.host.menuOpen);
            EXPECT_EQ(rig.host.menuLine, 12);
            EXPECT_EQ(rig.host.menuCommand, "EXIT_GAME");
            EXPECT_EQ(rig.race->paused, 1);
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
        ASSERT_EQ(rig.host.finishes, 1);
        times[paused] = rig.host.finishTime;
    }
    EXPECT_NEAR(static_cast<double>(times[0]), static_cast<double>(times[1]), 17.0);
}

TEST(QmClientGameplayManagerTest, TheFinishStopsTheClockAndHandsOverTimeAndRank) {
    RaceRig rig(kFinishAhead);
    rig.race->StartRace(false, true);
    rig.controls.right = true;
    rig.Frames(60);
    ASSERT_EQ(rig.host.finishes, 1);
    EXPECT_EQ(rig.host.finishRank, 1) << "an empty list: any time ranks first";
    EXPECT_EQ(rig.controls.endRaceInputs, 1);
    EXPECT_EQ(rig.audio.Count("Finish"), 1);
    // The racer reached x > 192 - 44 at 5 pixels a frame: 30 frames, handled one frame later.
    EXPECT_NEAR(static_cast<double>(rig.host.finishTime), 30.0 * 1000.0 / 60.0, 17.0);
    rig.Frames(10);
    EXPECT_EQ(rig.host.finishes, 1) << "handled once";

    // The random-level run counts the level and asks for the next one instead.
    RaceRig random(kFinishAhead);
    random.host.playMode = 3;
    random.race->StartRace(false, true);
    random.controls.right = true;
    random.Frames(60);
    EXPECT_EQ(random.host.finishes, 0);
    EXPECT_EQ(random.race->retryRequested, 1);
}

TEST(QmClientGameplayManagerTest, DeathRumblesTurnsGreyAndWaitsForARetry) {
    RaceRig rig(OnFloor({"S.f......."}));
    rig.host.music = true;
    rig.race->StartRace(false, true);
    rig.controls.right = true;
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
    rig.controls.confirm = true;
    rig.Frame();
    EXPECT_EQ(rig.race->retryRequested, 1);
}

TEST(QmClientGameplayManagerTest, ExitGameFromTheMenuKillsTheRacerAndReturnsToThePages) {
    RaceRig rig(kOpen);
    rig.host.music = true;
    rig.race->StartRace(false, true);
    rig.Frames(5);
    rig.controls.menu = true;
    rig.Frame();
    rig.controls.menu = false;
    rig.host.choose = "EXIT_GAME";
    rig.Frame();
    EXPECT_EQ(rig.Racer().active, 0);
    EXPECT_EQ(rig.host.returns, 1);
    EXPECT_EQ(rig.audio.music, "Music");
}

TEST(QmClientGameplayManagerTest, TheMusicHurriesAt30And60SecondsAgainstABestTimeOf60) {
    TempUserData data;
    RaceRig rig(kWall);
    UseScoreFile(rig.world);
    WriteScores(rig.world, {{"Ann", 60000}});
    rig.race->LoadScores();
    ASSERT_EQ(rig.race->Highscores().BestTime(), 60000);
    rig.host.music = true;
    rig.race->StartRace(false, true);
    rig.controls.right = true;
    rig.Frames(1);
    ASSERT_EQ(rig.race->running, 1);
    rig.Frames(29 * 60);
    EXPECT_EQ(rig.audio.Count("Hurry"), 0);
    EXPECT_FLOAT_EQ(rig.audio.musicSpeed, 1.0f);
    rig.Frames(62);
    EXPECT_EQ(rig.audio.Count("Hurry"), 1);
    EXPECT_FLOAT_EQ(rig.audio.musicSpeed, 1.25f);
    EXPECT_TRUE(rig.audio.musicPaused) << "silent while the hurry sound plays";
    rig.Frames(45);
    EXPECT_FALSE(rig.audio.musicPaused) << "back after 700 ms";
    rig.Frames(29 * 60);
    EXPECT_EQ(rig.audio.Count("HurryMore"), 0);
    rig.Frames(62);
    EXPECT_EQ(rig.audio.Count("HurryMore"), 1);
    EXPECT_FLOAT_EQ(rig.audio.musicSpeed, 1.5f);
    rig.Frames(600);
    EXPECT_EQ(rig.audio.Count("Hurry") + rig.audio.Count("HurryMore"), 2) << "never beyond 1.5";
}

TEST(QmClientGameplayManagerTest, WithoutHighscoresTheMusicSpeedsUpOnceAfterTwentySeconds) {
    RaceRig rig(kWall);
    rig.host.music = true;
    rig.race->StartRace(false, true);
    rig.controls.right = true;
    rig.Frames(19 * 60);
    EXPECT_EQ(rig.audio.Count("Hurry"), 0);
    rig.Frames(2 * 60);
    EXPECT_EQ(rig.audio.Count("Hurry"), 1);
    EXPECT_FLOAT_EQ(rig.audio.musicSpeed, 1.5f);
    rig.Frames(20 * 60);
    EXPECT_EQ(rig.audio.Count("Hurry"), 1);
    EXPECT_EQ(rig.audio.Count("HurryMore"), 0);
    // With the setting off the music is left alone.
    RaceRig quiet(kWall);
    quiet.race->StartRace(false, true);
    quiet.controls.right = true;
    quiet.Frames(25 * 60);
    EXPECT_EQ(quiet.audio.Count("Hurry"), 0);
    EXPECT_TRUE(quiet.audio.music.empty());
}

TEST(QmClientGameplayManagerTest, TheBadgeFollowsTheTimeThroughTheLimits) {
    TempUserData data;
    RaceRig rig(kWall);
    UseScoreFile(rig.world);
    WriteScores(rig.world, {{"Ann", 1000}, {"Bob", 2000}, {"Cid", 3000}});
    rig.race->LoadScores();
    rig.race->StartRace(false, true);
    rig.controls.right = true;
    rig.Frame();
    EXPECT_EQ(rig.drawer.badge, QmRaceDrawer::GoldBadge);
    rig.Frames(60);
    EXPECT_EQ(rig.drawer.badge, QmRaceDrawer::SilverBadge);
    rig.Frames(60);
    EXPECT_EQ(rig.drawer.badge, QmRaceDrawer::BronzeBadge);
    rig.Frames(60);
    EXPECT_EQ(rig.drawer.badge, QmRaceDrawer::PlainBadge) << "fewer than ten entries: no last limit";
}

TEST(QmClientGameplayManagerTest, TheGhostIsDrawnFaintlyOnlyWithARecording) {
    RaceRig rig(kOpen);
    rig.race->StartRace(false, true);
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

TEST(QmClientGameplayManagerTest, TheRunIsRecordedAsItsInputsChange) {
    RaceRig rig(kOpen);
    rig.race->StartRace(false, true);
    rig.controls.right = true;
    rig.Frame(); // pressed during the countdown: race time 0
    rig.Frames(30);
    rig.controls.jump = true;
    rig.Frame();
    rig.controls.jump = false;
    rig.Frame();
    rig.controls.right = false;
    rig.Frame();
    const auto& events = rig.race->Recording().Events();
    ASSERT_EQ(events.size(), 4u);
    auto it = events.begin();
    EXPECT_EQ(it->first, 0);
    EXPECT_EQ(it->second, QmRecording::RightPressed);
    ++it;
    EXPECT_NEAR(static_cast<double>(it->first), 31.0 * 1000.0 / 60.0, 1.0);
    EXPECT_EQ(it->second, QmRecording::JumpPressed);
    ++it;
    EXPECT_EQ(it->second, QmRecording::JumpReleased);
    ++it;
    EXPECT_EQ(it->second, QmRecording::RightReleased);
    // A new countdown starts a new recording.
    rig.race->StartRace(false, true);
    EXPECT_TRUE(rig.race->Recording().Empty());
}

TEST(QmClientGameplayManagerTest, TheRacerLooksWhereItGoesAndBlinks) {
    RaceRig rig(kOpen);
    rig.race->StartRace(false, true);
    rig.controls.left = true;
    rig.Frame();
    EXPECT_EQ(rig.drawer.eyeDX, -1);
    rig.controls.left = false;
    rig.controls.jump = true;
    rig.Frame();
    rig.controls.jump = false;
    EXPECT_EQ(rig.drawer.eyeDY, -1) << "looking up while rising";
    rig.Frames(200);
    // A blink of four frames: up to 3 and back to 0 within 200 ms, every two seconds.
    const std::vector<int>& frames = rig.drawer.bodyFrames;
    EXPECT_NE(std::find(frames.begin(), frames.end(), 3), frames.end());
    int blinks = 0;
    for (size_t i = 1; i < frames.size(); ++i) {
        blinks += frames[i] == 1 && frames[i - 1] == 0 ? 1 : 0;
    }
    EXPECT_EQ(blinks, 1) << "3.4 seconds: one blink after the first two";
}
