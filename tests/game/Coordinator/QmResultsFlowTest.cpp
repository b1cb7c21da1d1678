// After the race in the running game: a finished tour run asks for a name and keeps it in the
// score file, the character page writes profile.dat and the racer takes the character, and a
// party of two races Versus turn by turn to the party results and back to the main menu.
#include "Coordinator/QmResultsFlow.h"

#include "App/VeRegistry.h"
#include "Environment/ArEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmTextCipher.h"
#include "FrontEnd/QmCharacterPage.h"
#include "FrontEnd/QmHighscoresManager.h"
#include "FrontEnd/QmPartyPage.h"
#include "FrontEnd/QmPartyResultsPage.h"
#include "Gameplay/QmClientGameplayManager.h"
#include "Gameplay/QmParty.h"
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

    // The names in the current map's score file, deciphered.
    std::string ScoreHeader() {
        std::string bytes;
        const std::string path =
            userData.GameFolder() + "/" + coordinator->gameplay->Highscores().ScoreFileName();
        EXPECT_TRUE(ReadFileBytes(path, bytes)) << path;
        const std::vector<std::string> lines = SplitLines(bytes);
        return lines.empty() ? std::string() : DecodeText(QmTextCipher::kFileLevel, lines[0]);
    }

    QmResultsFlow& Results() { return coordinator->Results(); }
    std::string best;
};
} // namespace

TEST_F(AfterRaceGame, FinishNameCharacterAndAPartyOfTwoInVersus) {
    StartGame();
    RaceToTheFinish();
    ASSERT_EQ(app->scene, SceneAfterRace) << "the best run did not finish";
    ASSERT_TRUE(Results().Highscores().NameEntryOpen());
    for (int i = 0; i < 8; ++i) {
        Keys({VeKey::Backspace});
    }
    Keys({VeKey::A});
    Keys({VeKey::N});
    Keys({VeKey::N});
    Keys({VeKey::Return});
    EXPECT_NE(ScoreHeader().find("@ANN:"), std::string::npos) << ScoreHeader();
    EXPECT_EQ(Results().Highscores().Table().Rows()[0].colour, QmResultsTable::kNewEntry);
    Keys({VeKey::Escape});
    EXPECT_EQ(app->scene, SceneMenu);
    EXPECT_EQ(coordinator->CurrentMenuPage(), QmResultsFlow::kPlayPage);

    // The unlock notice waits on the play page until Return closes it.
    Keys({VeKey::Return});
    // The character page stores the next character and the racer wears it.
    Results().OpenCharacter();
    Keys({VeKey::Right});
    Keys({VeKey::Return});
    std::string profile;
    ASSERT_TRUE(ReadFileBytes(userData.GameFolder() + "/profile.dat", profile));
    EXPECT_EQ(profile, "1");
    EXPECT_EQ(coordinator->gameplay->Racer()->direction, 1);
    EXPECT_EQ(coordinator->CurrentMenuPage(), QmResultsFlow::kMainMenuPage);

    // A party of two in Versus: the party page hands over to the play page, which starts the map.
    Results().OpenParty();
    Results().PartyPage().SetFocus(QmPartyPage::FocusGo);
    Keys({VeKey::Return});
    ASSERT_EQ(coordinator->playMode, VaCoordinator::PlayParty);
    EXPECT_EQ(coordinator->CurrentMenuPage(), QmResultsFlow::kPlayPage);
    coordinator->environment->tourIndex = 0;
    coordinator->environment->Reload(0, false);
    ASSERT_TRUE(coordinator->StartPlay(false));
    for (const char* player : {"PLAYER 1", "PLAYER 2"}) {
        EXPECT_EQ(coordinator->gameplay->raceOver, 1) << player << " waits to be named";
        EXPECT_EQ(Results().Party().Current()->name, player);
        Keys({VeKey::Space});
        EXPECT_EQ(coordinator->gameplay->countingDown, 1);
        RaceToTheFinish();
        ASSERT_EQ(app->scene, SceneAfterRace) << player << " did not finish";
        if (std::string(player) == "PLAYER 1") {
            EXPECT_FALSE(Results().PartyResultsPage().PartyOver());
            Keys({VeKey::Return}); // Next player
        }
    }
    const QmResultsTable& table = Results().PartyResultsPage().Table();
    EXPECT_TRUE(Results().PartyResultsPage().PartyOver());
    EXPECT_EQ(table.Rows()[0].name, "PLAYER 1");
    EXPECT_EQ(table.Rows()[1].name, "PLAYER 2") << "the same run: the later player goes second";
    EXPECT_EQ(table.Rows()[1].colour, QmResultsTable::kNewEntry);
    EXPECT_NE(ScoreHeader().find("PLAYER 1:"), std::string::npos) << "party runs enter the map's list too";
    Keys({VeKey::Return}); // Main menu
    EXPECT_EQ(app->scene, SceneMenu);
    EXPECT_EQ(coordinator->CurrentMenuPage(), QmResultsFlow::kMainMenuPage);
    EXPECT_EQ(coordinator->playMode, VaCoordinator::PlayTour);
}
