// Every menu page in each of the four languages (the intro, the main menu, the credits and a notice
// too): the picture against a stored one, and every text laid out inside its box or button (no
// text runs over, none is cut).
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/Options/QmOptions.h"
#include "FrontEnd/QmCreditsPage.h"
#include "FrontEnd/QmFrontEnd.h"
#include "FrontEnd/QmIntroPage.h"
#include "FrontEnd/QmLoginPage.h"
#include "FrontEnd/QmManagementPage.h"
#include "FrontEnd/QmMenuPages.h"
#include "FrontEnd/QmNoticeDialog.h"
#include "FrontEnd/QmOptionsPage.h"
#include "FrontEnd/QmPlayPage.h"
#include "FrontEnd/QmRegistrationPage.h"
#include "FrontEnd/QmRulesPage.h"
#include "FrontEnd/QmTourMapList.h"
#include "Input/VeKey.h"
#include "MenuPageGame.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class PageCheck : public MenuPageGame, public ::testing::WithParamInterface<std::string> {
protected:
    void SetUp() override {
        MenuPageGame::SetUp();
        coordinator->Language().Load(GetParam());
    }

    // The page opened as menu page number, these keys pressed one a frame and a frame more; then
    // the picture within rounding of the stored one, and the page's texts inside their boxes.
    template <typename Page>
    void Check(int number, const std::string& name, std::initializer_list<int> keys) {
        SCOPED_TRACE(name);
        coordinator->SetMenuPage(number);
        Page page;
        if constexpr (requires { page.RebuildLists(); }) {
            page.RebuildLists();
        }
        Presses(page, keys);
        Run(page);
        EXPECT_TRUE(AllFit(page.TextBoxes()));
        EXPECT_TRUE(MatchesStoredImage("frontend/" + name + "-" + GetParam() + ".png", Picture(), 4, 0));
    }
};

TEST_P(PageCheck, ThePagesWithForms) {
    // A locked map chosen: the page says why.
    Check<QmPlayPage>(2, "play", {VeKey::Right, VeKey::Down, VeKey::Return});
    EXPECT_GT(Drawn(QmTourMapList::kMapX, QmTourMapList::kRowsY + QmTourMapList::kRowHeight, 24, 30), 0)
        << "the lock mark";
    Check<QmManagementPage>(3, "management", {VeKey::Right});
    Check<QmOptionsPage>(12, "options", {VeKey::Down, VeKey::Down});
    // Log in with nothing typed: the page says what is missing, in red.
    Check<QmLoginPage>(4, "login", {VeKey::Down, VeKey::Down, VeKey::Down, VeKey::Return});
    EXPECT_GT(Drawn(80, 122, 480, 32), 0) << "the user name input";
    // The agreement box checked: Register enabled.
    Check<QmRegistrationPage>(5, "registration", {VeKey::Down, VeKey::Down, VeKey::Down, VeKey::Space});
    Check<QmRulesPage>(6, "rules", {});
}

TEST_P(PageCheck, IntroMainMenuCreditsAndADialog) {
    coordinator->SetOption(QmOptions::kAnimatedMenuBackground, "0");
    coordinator->blink = 1.0f;
    QmMenuPages& pages = coordinator->FrontEnd().MenuPages();
    pages.Relabel();
    pages.SetPage(QmMenuPages::kIntro);
    Run(pages);
    EXPECT_TRUE(AllFit(coordinator->FrontEnd().Intro().TextBoxes()));
    EXPECT_TRUE(MatchesStoredImage("frontend/intro-" + GetParam() + ".png", Picture(), 4, 0));

    pages.SetPage(QmMenuPages::kMainMenu);
    Run(pages);
    EXPECT_TRUE(AllFit(RowTextBoxes(pages.MainRow())));
    EXPECT_TRUE(MatchesStoredImage("frontend/main-menu-" + GetParam() + ".png", Picture(), 4, 0));

    // The longest notice the menu shows: an update is available.
    QmNoticeDialog& dialog = coordinator->FrontEnd().Dialog();
    dialog.Show(QmNoticeDialog::kTwoButtons, true, 0, "",
                coordinator->Language().GetLine(QmMenuPages::kUpdateAvailableLine),
                coordinator->Language().GetLine(QmMenuPages::kUpdateTitleLine));
    Run(pages);
    EXPECT_TRUE(AllFit(dialog.TextBoxes()));
    EXPECT_TRUE(MatchesStoredImage("frontend/dialog-" + GetParam() + ".png", Picture(), 4, 0));
    dialog.Hide();

    pages.SetPage(QmMenuPages::kCredits);
    Run(pages);
    ASSERT_NE(pages.CreditsPage(), nullptr);
    EXPECT_TRUE(AllFit(pages.CreditsPage()->TextBoxes()));
    EXPECT_TRUE(MatchesStoredImage("frontend/credits-" + GetParam() + ".png", Picture(), 4, 0));
}

INSTANTIATE_TEST_SUITE_P(Languages, PageCheck, ::testing::Values("English", "Dutch", "French", "Norwegian"),
                         [](const auto& info) { return info.param; });

} // namespace
