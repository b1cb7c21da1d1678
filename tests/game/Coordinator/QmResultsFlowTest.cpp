// After the race in the running game, where the player's journey cannot look: finishing unlocks the
// next map with a notice, a declined name leaves the score file as it was, the chosen character is
// the racer's, and two party players racing the same run tie with the later one ranked second.
#include "Coordinator/QmResultsFlow.h"

#include "Environment/ArEnvironmentManager.h"
#include "FrontEnd/QmHighscoresManager.h"
#include "FrontEnd/QmPartyPage.h"
#include "FrontEnd/QmPartyResultsPage.h"
#include "Gameplay/QmClientGameplayManager.h"
#include "HeadlessGame.h"
#include "Input/VeKey.h"
#include "Platform/VeFiles.h"

namespace {
class AfterRaceGame : public HeadlessGame {
protected:
    // The first map with its stored best run steering the racer, on the frame-locked clock.
    void StartGame() {
        StartInWindow({"--play", "0", "0", "--2d"}); // the best run, read from a plain start
        const std::string best = coordinator->gameplay->Highscores().StoredRecording().ToText();
        Stop();
        ASSERT_FALSE(best.empty());
        StartInWindow({"--play", "0", "0", "--2d", "--autoplay", best, "--fixed-dt", "0.016667"});
    }

    // Frames until the scene leaves the race.
    void RaceToTheFinish() {
        for (int frame = 0; frame < 1500 && app->scene == SceneRace; ++frame) {
            Frame();
        }
    }

    // The current map's score file as it lies on disk.
    std::string ScoreFile() {
        std::string bytes;
        const std::string path =
            userData.GameFolder() + "/" + coordinator->gameplay->Highscores().ScoreFileName();
        EXPECT_TRUE(ReadFileBytes(path, bytes)) << path;
        return bytes;
    }

    QmResultsFlow& Results() { return coordinator->Results(); }
};
} // namespace

TEST_F(AfterRaceGame, ADeclinedNameTheChosenCharacterAndATieInVersus) {
    StartGame();
    const std::string scores = ScoreFile();
    const std::string next = coordinator->environment->tourLevels[0][1];
    ASSERT_EQ(coordinator->environment->GetMapField('l', next), "1");
    RaceToTheFinish();
    ASSERT_EQ(app->scene, SceneAfterRace) << "the best run did not finish";
    EXPECT_EQ(coordinator->environment->GetMapField('l', next), "0") << "the next map stays locked";
    EXPECT_NE(log.all.find("Notice: "), std::string::npos);
    ASSERT_TRUE(Results().Highscores().NameEntryOpen());
    FrameWithKeys({VeKey::Escape});
    EXPECT_EQ(app->scene, SceneMenu);
    EXPECT_EQ(ScoreFile(), scores) << "declining writes nothing";
    FrameWithKeys({VeKey::Return}); // the unlock notice

    Results().OpenCharacter();
    FrameWithKeys({VeKey::Right});
    FrameWithKeys({VeKey::Return});
    EXPECT_EQ(coordinator->gameplay->Racer()->direction, 1);

    // Both players race the stored best run: equal times.
    Results().OpenParty();
    Results().PartyPage().SetFocus(QmPartyPage::FocusGo);
    FrameWithKeys({VeKey::Return});
    ASSERT_EQ(coordinator->playMode, VaCoordinator::PlayParty);
    coordinator->environment->tourIndex = 0;
    coordinator->environment->Reload(0, false);
    ASSERT_TRUE(coordinator->StartPlay(false));
    for (int turn = 0; turn < 2; ++turn) {
        FrameWithKeys({VeKey::Space});
        RaceToTheFinish();
        ASSERT_EQ(app->scene, SceneAfterRace) << "turn " << turn << " did not finish";
        FrameWithKeys({VeKey::Return}); // Next player, then Main menu
    }
    const QmResultsTable& table = Results().PartyResultsPage().Table();
    EXPECT_EQ(table.Rows()[0].name, "PLAYER 1");
    EXPECT_EQ(table.Rows()[1].name, "PLAYER 2") << "the same time: the later player goes second";
    EXPECT_EQ(table.Rows()[1].time, table.Rows()[0].time);
    EXPECT_EQ(table.Rows()[1].colour, QmResultsTable::kNewEntry);
    EXPECT_EQ(coordinator->CurrentMenuPage(), QmResultsFlow::kMainMenuPage);
}
