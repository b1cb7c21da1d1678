// The menu's frame in the running game: the main menu's Back handling, the notice dialog and its
// answers, the intro's timeout, the falling-block backdrop and a stored picture of the animated
// main menu.
#include "FrontEnd/QmMenuPages.h"
#include "Form/VeFormElement.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/Options/QmOptions.h"
#include "FrontEnd/QmCreditsPage.h"
#include "FrontEnd/QmFrontEnd.h"
#include "FrontEnd/QmIntroPage.h"
#include "FrontEnd/QmMenuBackground.h"
#include "FrontEnd/QmNoticeDialog.h"
#include "Platform/VeRandom.h"
#include "Screen/VeCursor.h"

#include "MenuPageGame.h"

namespace {
class MenuPagesTest : public MenuPageGame {
protected:
    QmMenuPages& Pages() { return coordinator->FrontEnd().MenuPages(); }
    QmNoticeDialog& Dialog() { return coordinator->FrontEnd().Dialog(); }
    std::string Line(int number) { return coordinator->Language().GetLine(number); }
};
} // namespace

TEST_F(MenuPagesTest, MainMenuOpensCreditsAndTheLoginPageAndBackMovesToQuitThenQuits) {
    Pages().SetPage(QmMenuPages::kMainMenu);
    Presses(Pages(),
            {VeKey::Down, VeKey::Down, VeKey::Down, VeKey::Down, VeKey::Down, VeKey::Down, VeKey::Return});
    ASSERT_EQ(Pages().Page(), QmMenuPages::kCredits);
    Keys(Pages(), {VeKey::Escape});
    EXPECT_EQ(Pages().Page(), QmMenuPages::kMainMenu);
    EXPECT_FALSE(app->quitRequested);

    Presses(Pages(), {VeKey::Up, VeKey::Up, VeKey::Up, VeKey::Return});
    EXPECT_EQ(Pages().Page(), QmMenuPages::kLogin) << "logged out, Online opens the login page";
    Keys(Pages(), {VeKey::Escape});
    EXPECT_EQ(Pages().Page(), QmMenuPages::kMainMenu);
    EXPECT_EQ(Pages().MainRow().SelectedLabel(), Line(141));

    Keys(Pages(), {VeKey::Escape});
    EXPECT_EQ(Pages().MainRow().SelectedLabel(), Line(QmMenuPages::kQuitLine));
    EXPECT_FALSE(app->quitRequested);
    Keys(Pages(), {VeKey::Escape});
    EXPECT_TRUE(app->quitRequested);
}

TEST_F(MenuPagesTest, APendingNoticeShowsOnceAndTheDialogsAnswersCarryItsAction) {
    Pages().SetPage(QmMenuPages::kMainMenu);
    Pages().SetPendingNotice("THE DOWNLOAD FAILED.");
    Run(Pages());
    ASSERT_TRUE(Dialog().Visible());
    EXPECT_EQ(Dialog().Title().text, Line(QmNoticeDialog::kTitleLine));
    EXPECT_EQ(Dialog().Row().Size(), 1u);
    Keys(Pages(), {VeKey::Return});
    EXPECT_TRUE(Dialog().AnsweredLine(QmNoticeDialog::kOkLine));
    Run(Pages());
    EXPECT_FALSE(Dialog().Visible());

    Dialog().Show(QmNoticeDialog::kTwoButtons, true, 0, "DELETE", "DELETE IT?", "");
    Presses(Pages(), {VeKey::Left, VeKey::Return});
    EXPECT_TRUE(Dialog().AnsweredLine(QmNoticeDialog::kNoLine));
    EXPECT_EQ(Dialog().Action(), "DELETE");
    EXPECT_EQ(Pages().Page(), QmMenuPages::kMainMenu); // the Return was the dialog's

    Dialog().Show(QmNoticeDialog::kTwoButtons, true, 0, "DELETE", "DELETE IT?", "");
    Keys(Pages(), {VeKey::Return});
    EXPECT_TRUE(Dialog().AnsweredLine(QmNoticeDialog::kYesLine));

    // A notice from anywhere in the game opens the same dialog.
    coordinator->ShowNotice("TITLE", "TEXT");
    EXPECT_TRUE(Dialog().Visible());
    EXPECT_EQ(Dialog().Title().text, "TITLE");
}

TEST_F(MenuPagesTest, IntroLeavesAfterSixSecondsOrAKey) {
    int64_t clock = 0;
    QmIntroPage intro([&clock] { return clock; });
    Pages().SetPage(QmMenuPages::kIntro);
    // The arrow, and the hand over the prompt that asks for the click.
    Pointer(intro, 20, 20);
    EXPECT_EQ(VeCursor::Mode(), VeCursorKind::Arrow);
    Pointer(intro, 320, 490);
    EXPECT_EQ(VeCursor::Mode(), VeCursorKind::Hand);
    clock = 5999;
    Run(intro);
    EXPECT_EQ(Pages().Page(), QmMenuPages::kIntro);
    clock = 6000;
    Run(intro);
    EXPECT_EQ(Pages().Page(), QmMenuPages::kMainMenu);

    Pages().SetPage(QmMenuPages::kIntro);
    intro.Restart();
    Keys(intro, {VeKey::Space});
    EXPECT_EQ(Pages().Page(), QmMenuPages::kMainMenu);
}

TEST_F(MenuPagesTest, FallingBlocksStackClearAndStayStillWhenSwitchedOff) {
    EXPECT_EQ(QmMenuBackground::ReleaseChance(0.005f), 1) << "a fast frame still lets blocks drop out";

    QmMenuBackground& background = Pages().Background();
    background.Reset();
    for (int i = 0; i < 200; ++i) {
        background.Step(0.05f, false, nullptr);
    }
    EXPECT_GT(background.LandedCount(), 10);
    background.Step(0.05f, true, nullptr); // F12
    EXPECT_TRUE(background.Clearing());
    for (int i = 0; i < 100 && (background.LandedCount() > 0 || background.FallingCount() > 0); ++i) {
        background.Step(0.1f, false, nullptr);
    }
    EXPECT_EQ(background.LandedCount(), 0);
    background.Step(0.1f, false, nullptr); // the empty screen starts over
    EXPECT_FALSE(background.Clearing());

    background.FillAll();
    background.Step(0.01f, false, nullptr);
    EXPECT_TRUE(background.Clearing()); // a full stack clears itself

    background.Reset();
    coordinator->SetOption(QmOptions::kAnimatedMenuBackground, "0");
    app->frameDelta = 0.1f;
    devices.keys[VeKey::F12] = 1;
    for (int i = 0; i < 20; ++i) {
        Run(Pages());
    }
    EXPECT_EQ(background.FallingCount() + static_cast<size_t>(background.LandedCount()), 0u);
    EXPECT_FALSE(background.Clearing());
}

TEST_F(MenuPagesTest, PictureOfTheAnimatedMainMenu) {
    // (The still pages in every language are the page check's.)
    coordinator->blink = 1.0f;
    coordinator->SetOption(QmOptions::kAnimatedMenuBackground, "1");
    Pages().SetPage(QmMenuPages::kMainMenu);
    Pages().Background().Reset();
    SeedRand(7);
    app->frameDelta = 0.05f;
    for (int i = 0; i < 120; ++i) {
        Run(Pages());
    }
    EXPECT_GT(Pages().Background().LandedCount(), 5);
    EXPECT_TRUE(MatchesStoredImage("frontend/menu-main-animated.png", Picture(), 0));
}
