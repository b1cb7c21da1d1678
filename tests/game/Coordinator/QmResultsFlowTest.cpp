// After the race in the running game, where the player's journey cannot look: finishing gives a
// notice, a declined name leaves the score file as it was, and the chosen character is the
// racer's. (The journey unlocks the next map, types a name and races a party through its turns to
// the results; the party's own tests rank ties.)
#include "Coordinator/QmResultsFlow.h"

#include "FrontEnd/QmHighscoresManager.h"
#include "Gameplay/QmClientGameplayManager.h"
#include "HeadlessGame.h"
#include "Input/VeKey.h"
#include "Platform/VeFiles.h"

namespace {
class AfterRaceGame : public HeadlessGame {
protected:
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

TEST_F(AfterRaceGame, ADeclinedNameWritesNothingAndTheChosenCharacterRaces) {
    // The first map with its stored best run steering the racer, on the frame-locked clock.
    StartInWindow({"--play", "0", "0", "--2d"}); // the best run, read from a plain start
    const std::string best = coordinator->gameplay->Highscores().StoredRecording().ToText();
    Stop();
    ASSERT_FALSE(best.empty());
    StartInWindow({"--play", "0", "0", "--2d", "--autoplay", best, "--fixed-dt", "0.016667"});
    const std::string scores = ScoreFile();
    for (int frame = 0; frame < 1500 && app->scene == SceneRace; ++frame) {
        Frame();
    }
    ASSERT_EQ(app->scene, SceneAfterRace) << "the best run did not finish";
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
}
