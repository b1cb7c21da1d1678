// The party page: players come and go between two and eight, names and characters reach the
// party, the game type and the map sizes, and the page's picture in every language.
#include "FrontEnd/QmPartyPage.h"

#include "PanelPageTest.h"

namespace {
class PartyPageTest : public page_test::PanelPageTest {
protected:
    QmPartyPage party{context};
};
} // namespace

TEST_F(PartyPageTest, PlayersNamesAndCharactersReachTheParty) {
    ASSERT_EQ(party.PlayerCount(), 2u);
    // The second player is renamed and picks the second character.
    Frame(party, {VeKey::Down});
    Frame(party, {VeKey::Backspace});
    Frame(party, {VeKey::X});
    Frame(party, {VeKey::Down}); // the characters
    Frame(party, {VeKey::Right});
    // Down to Start and go.
    while (party.CurrentFocus() != QmPartyPage::FocusGo) {
        Frame(party, {VeKey::Down});
    }
    EXPECT_EQ(Frame(party, {VeKey::Return}), QmPartyPage::Outcome::Start);
    std::string players;
    for (const QmPartyPlayer& player : party.Party().Players()) {
        players += player.name + " " + std::to_string(player.character) + "; ";
    }
    EXPECT_EQ(players, "PLAYER 1 0; PLAYER X 1; ");
}

TEST_F(PartyPageTest, StartNeedsTwoPlayersAndTheTypeAndSizesFollowTheKeys) {
    while (party.AddPlayer()) {
    }
    EXPECT_EQ(party.PlayerCount(), 8u);
    while (party.PlayerCount() > 1) {
        party.RemoveSelectedPlayer();
    }
    party.SetFocus(QmPartyPage::FocusGo);
    EXPECT_NE(Frame(party, {VeKey::Return}), QmPartyPage::Outcome::Start) << "Start is disabled";
    party.AddPlayer();

    party.SetFocus(QmPartyPage::FocusType);
    Frame(party, {VeKey::Right});
    Frame(party, {VeKey::Down});
    EXPECT_EQ(party.CurrentFocus(), QmPartyPage::FocusSmall) << "Marathon shows the size boxes";
    Frame(party, {VeKey::Return}); // small maps off
    Frame(party, {VeKey::Down});
    Frame(party, {VeKey::Return}); // large maps stay: one size is always allowed
    party.Commit();
    EXPECT_EQ(party.Party().PartyType(), QmParty::Marathon);
    EXPECT_FALSE(party.Party().SmallAllowed());
    EXPECT_TRUE(party.Party().LargeAllowed());
    EXPECT_EQ(Frame(party, {VeKey::Escape}), QmPartyPage::Outcome::Back);
}

TEST_F(PartyPageTest, ThePageInEveryLanguage) {
    for (const std::string& name : QmLanguage::Languages()) {
        language.Load(name);
        QmPartyPage fresh(context);
        fresh.AddPlayer();
        fresh.SetType(QmParty::Marathon);
        fresh.SelectPlayer(0);
        Frame(fresh, {});
        EXPECT_TRUE(EdgesClearOfText()) << name;
        EXPECT_TRUE(
            OnBandAndPanel(QmPartyPage::kFirstRowY - 3, QmPanel::kRight - 1, QmPartyPage::kEditButtonsY - 5));
        EXPECT_TRUE(page_test::AllFit(fresh.TextBoxes())) << name;
        EXPECT_TRUE(MatchesStoredImage("frontend/party-" + name + ".png", Picture(), 0)) << name;
    }
}
