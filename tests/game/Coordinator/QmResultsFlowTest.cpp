// After the race in the running game, where the player's journey cannot look: a declined name
// leaves the score file as it was, the chosen character is the racer's, and two party players
// racing the same run tie with the later one ranked second.
#include "Coordinator/QmResultsFlow.h"

#include "App/VeRegistry.h"
#include "Environment/ArEnvironmentManager.h"
#include "FrontEnd/QmHighscoresManager.h"
#include "FrontEnd/QmPartyPage.h"
#include "FrontEnd/QmPartyResultsPage.h"
#include "Gameplay/QmClientGameplayManager.h"
#include "HeadlessGame.h"
#include "Input/VeKey.h"
#include "Platform/VeFiles.h"

#include <cstdlib>

namespace {
class AfterRaceGame : public HeadlessGame {
protected:
    void SetUp() override {
        HeadlessGame::SetUp();
        setenv("QUILLMAZE_NO_DIALOGS", "1", 1);
    }

    // The first map with its stored best run steering the racer, on the frame-locked clock.
    void StartGame() {
        QmCommandLine probe;
        std::vector<std::string> line{"quillmaze", "--play", "0", "0", "--2d"};
        {
            // The shipped tutorial's best run, read once from a plain start.
            QmCommandLine plain;
            ASSERT_EQ(plain.Parse(line), QmCommandLine::Result::Run);
            Launch(plain);
            best = coordinator->gameplay->Highscores().StoredRecording().ToText();
            Stop();
        }
        ASSERT_FALSE(best.empty());
        line.insert(line.end(), {"--autoplay", best, "--fixed-dt", "0.016667"});
        ASSERT_EQ(probe.Parse(line), QmCommandLine::Result::Run);
        Launch(probe);
    }

    void Launch(const QmCommandLine& commandLine) {
        app = std::make_unique<VaApp>();
        app->FillSettings();
        app->registry->SetInt("VE_USE_AUDIO", 0);
        app->registry->SetInt("VE_DEBUG_INFO", 0);
        app->UseCommandLine(commandLine);
        app->Init();
        ASSERT_NE(app->screen, nullptr);
        app->screen->SetFramePacing(false);
        delete app->input;
        app->input = new VeInput(app->screen, std::make_unique<FakeInputSource>(&devices));
        app->screen->input = app->input;
        app->CreateManagers();
        coordinator = app->coordinator;
    }

    void Keys(std::initializer_list<int> keys) {
        for (int key : keys) {
            devices.keys[key] = 1;
        }
        now += 17;
        app->Frame();
        for (int key : keys) {
            devices.keys[key] = 0;
        }
        now += 17;
        app->Frame();
    }

    // Frames until the scene leaves the race.
    void RaceToTheFinish() {
        for (int frame = 0; frame < 1500 && app->scene == SceneRace; ++frame) {
            now += 17;
            app->Frame();
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
    std::string best;
};
} // namespace

TEST_F(AfterRaceGame, ADeclinedNameTheChosenCharacterAndATieInVersus) {
    StartGame();
    const std::string scores = ScoreFile();
    RaceToTheFinish();
    ASSERT_EQ(app->scene, SceneAfterRace) << "the best run did not finish";
    ASSERT_TRUE(Results().Highscores().NameEntryOpen());
    Keys({VeKey::Escape});
    EXPECT_EQ(app->scene, SceneMenu);
    EXPECT_EQ(ScoreFile(), scores) << "declining writes nothing";
    Keys({VeKey::Return}); // the unlock notice

    Results().OpenCharacter();
    Keys({VeKey::Right});
    Keys({VeKey::Return});
    EXPECT_EQ(coordinator->gameplay->Racer()->direction, 1);

    // Both players race the stored best run: equal times.
    Results().OpenParty();
    Results().PartyPage().SetFocus(QmPartyPage::FocusGo);
    Keys({VeKey::Return});
    ASSERT_EQ(coordinator->playMode, VaCoordinator::PlayParty);
    coordinator->environment->tourIndex = 0;
    coordinator->environment->Reload(0, false);
    ASSERT_TRUE(coordinator->StartPlay(false));
    for (int turn = 0; turn < 2; ++turn) {
        Keys({VeKey::Space});
        RaceToTheFinish();
        ASSERT_EQ(app->scene, SceneAfterRace) << "turn " << turn << " did not finish";
        Keys({VeKey::Return}); // Next player, then Main menu
    }
    const QmResultsTable& table = Results().PartyResultsPage().Table();
    EXPECT_EQ(table.Rows()[0].name, "PLAYER 1");
    EXPECT_EQ(table.Rows()[1].name, "PLAYER 2") << "the same time: the later player goes second";
    EXPECT_EQ(table.Rows()[1].time, table.Rows()[0].time);
    EXPECT_EQ(table.Rows()[1].colour, QmResultsTable::kNewEntry);
    EXPECT_EQ(coordinator->CurrentMenuPage(), QmResultsFlow::kMainMenuPage);
}
