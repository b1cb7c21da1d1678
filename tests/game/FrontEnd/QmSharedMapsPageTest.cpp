#include "FrontEnd/QmSharedMapsPage.h"
#include "Environment/ArEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmBlocks.h"
#include "Environment/CoreEnvironmentManager/QmMapFile.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/QmFrontEnd.h"
#include "FrontEnd/QmMenuPages.h"
#include "FrontEnd/QmNoticeDialog.h"
#include "FrontEnd/QmPlayPage.h"
#include "FrontEnd/QmSharedMapsList.h"
#include "Input/VeKey.h"
#include "MenuPageGame.h"
#include "Platform/VeFiles.h"
#include "Support/LoopbackService.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

class SharedMapsPageTest : public MenuPageGame {
protected:
    void SetUp() override {
        MenuPageGame::SetUp();
        ASSERT_TRUE(service.Reachable());
        net().SetService(service.Url());
        net().SetAnswerTimeout(0);
    }
    QmNetworkManager& net() { return *app->network; }
    QmMenuPages& menu() { return coordinator->FrontEnd().MenuPages(); }
    QmSharedMapsPage& page() { return menu().SharedMapsPage(); }
    QmNoticeDialog& dialog() { return coordinator->FrontEnd().Dialog(); }

    bool Until(const std::function<bool()>& done) { return MenuPageGame::Until(menu(), done); }
    bool Settled() { return MenuPageGame::Settled(menu()); }
    void Press(int key) {
        Keys(menu(), {key});
        net().Update();
    }
    bool Shows(int line) { return MenuPageGame::Shows(page().TextBoxes(), line); }
    // A new player, name, logged in on the players' list.
    void OnPlayersList(const std::string& name) {
        net().Register(name, "pw", name + "@example.org");
        ASSERT_TRUE(Settled());
        coordinator->SetMenuPage(QmMenuPages::kSharedMaps);
        page().Open();
        ASSERT_TRUE(Settled());
    }
    // Logged in as name on the players' list, then through the buttons below it to the player's own
    // maps, and the play page's map offered for slot 2: the page asks before it uploads, and Yes.
    void UploadPlayPageMap(const std::string& name) {
        OnPlayersList(name);
        EXPECT_TRUE(Shows(162)) << "the title of the players' list";
        Presses(menu(), {VeKey::Down, VeKey::Return});
        ASSERT_TRUE(Settled());
        Presses(menu(), {VeKey::Up, VeKey::Return});
        EXPECT_TRUE(Shows(175)) << "the title of the slots";
        Presses(menu(), {VeKey::Down, VeKey::Return});
        ASSERT_TRUE(dialog().Visible()) << "the page asks before uploading";
        Press(VeKey::Return);
    }

    LoopbackService service;
};

TEST_F(SharedMapsPageTest, UploadThenAnotherPlayerDownloadsTheMap) {
    UploadPlayPageMap("ann");
    ASSERT_TRUE(Until([this] { return dialog().Visible(); })) << "the check, the upload and its answer";
    EXPECT_EQ(dialog().Body().text, coordinator->GetLine(178));
    Press(VeKey::Return);
    ASSERT_TRUE(Settled());
    EXPECT_EQ(page().GetState(), QmSharedMapsPage::OwnMaps);
    ASSERT_EQ(net().GetMaps().size(), 1u);
    EXPECT_EQ(net().GetMaps()[0].slot, 2);

    // Another player: ann's map downloaded. (The journey finds it in the tour of downloads, downloads
    // it again into the same copy and plays it.)
    OnPlayersList("bob");
    Press(VeKey::Return);
    ASSERT_TRUE(Settled());
    ASSERT_EQ(page().GetState(), QmSharedMapsPage::PlayerMaps);
    Press(VeKey::Return);
    EXPECT_TRUE(Shows(164)) << "downloaded: Enter plays it";
    Run(page()); // the page alone over the plain background
    EXPECT_TRUE(MatchesStoredImage("frontend/shared-maps-English.png", Picture(), 4, 0));
    EXPECT_GT(Drawn(QmSharedMapsList::kX, QmSharedMapsList::kRowsY, QmSharedMapsList::kWidth, 30), 2000)
        << "the selected map's row";
}

TEST_F(SharedMapsPageTest, AMapThatCannotBeFinishedIsRefusedAndNeverSentTextsFitAndBackLeadsOut) {
    // The play page's map loses its finish.
    const QmPlayPage& play = menu().PlayPage();
    const auto& world = *coordinator->environment;
    const auto tour = static_cast<size_t>(play.SelectedTour());
    const std::string path = GetGameFolder() + "/Maps/" + world.tourFolders[tour] + "/" +
                             world.tourLevels[tour][static_cast<size_t>(play.SelectedMap())];
    std::vector<std::string> lines;
    ASSERT_TRUE(ReadTextLines(path, lines));
    QmMapContents map = QmMapFile::Parse(lines);
    std::replace(map.blocks.begin(), map.blocks.end(), Block::Finish, Block::Blank);
    ASSERT_TRUE(WriteTextLinesAtomic(path, QmMapFile::Format(map)));

    UploadPlayPageMap("dee");
    ASSERT_TRUE(Until([this] { return dialog().Visible(); })) << "the check's verdict";
    EXPECT_EQ(dialog().Body().text, coordinator->GetLine(216));
    EXPECT_FALSE(net().IsWaiting()) << "no upload went out";
    Press(VeKey::Return);
    net().RequestMaps(net().GetUserId());
    ASSERT_TRUE(Settled());
    EXPECT_TRUE(net().GetMaps().empty()) << "the service holds no map of dee's";

    // Every text fits in every language on the slots and on the player's own maps; Back leads out.
    for (const auto state : {QmSharedMapsPage::UploadSlot, QmSharedMapsPage::OwnMaps}) {
        EXPECT_EQ(page().GetState(), state);
        for (const char* language : {"English", "Dutch", "French", "Norwegian"}) {
            coordinator->Language().Load(language);
            page().Relabel();
            Run(menu());
            EXPECT_TRUE(AllFit(page().TextBoxes())) << language;
        }
        Press(VeKey::Escape);
    }
    EXPECT_EQ(page().GetState(), QmSharedMapsPage::Players);
    Press(VeKey::Escape);
    EXPECT_EQ(coordinator->CurrentMenuPage(), QmMenuPages::kMainMenu);
}

} // namespace
