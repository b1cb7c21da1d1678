// The screen between party turns names the next player, and in a Marathon the map that follows.
#include "FrontEnd/QmWaitingScreen.h"

#include "PageTestSupport.h"

namespace {
class WaitingScreenTest : public page_test::PageTest {};
} // namespace

TEST_F(WaitingScreenTest, TheWaitingScreenNamesTheNextPlayerInEveryLanguage) {
    for (const std::string& name : QmLanguage::Languages()) {
        language.Load(name);
        QmWaitingScreen screen;
        screen.Set(context.line, "ANNE-MARIE LONGNAME", 2, 3);
        page.Fill(0x80A0C0);
        screen.Draw(page);
        EXPECT_EQ(screen.Text(), language.GetLine(52) + ": ANNE-MARIE LONGNAME");
        EXPECT_EQ(page.GetXY(0, 0) & 0xFFFFFF, 0x80A0C0u) << "the map shows around the panel";
        EXPECT_EQ(page.GetXY(30, 320) & 0xFFFFFF, QmWaitingScreen::kPanelColour);
        EXPECT_TRUE(MatchesStoredImage("frontend/waiting-" + name + ".png", Picture(), 0)) << name;
    }
}

TEST_F(WaitingScreenTest, EscapeLeavesThePartyWhileOtherKeysWait) {
    QmWaitingScreen screen;
    screen.Set(context.line, "ANN", 0, 0);
    for (int key : {VeKey::Space, VeKey::Return, VeKey::Left, VeKey::Backspace}) {
        EXPECT_EQ(WithKeys({key}, [&] { return screen.Update(controls); }), QmWaitingScreen::Outcome::None)
            << key;
    }
    EXPECT_EQ(WithKeys({VeKey::Escape}, [&] { return screen.Update(controls); }),
              QmWaitingScreen::Outcome::LeaveParty);
}
