// The party results page: the ranking with the run just ranked in green, who is next, the end of
// the party, and the page's picture in every language.
#include "FrontEnd/QmPartyResultsPage.h"

#include "PanelPageTest.h"

namespace {
class PartyResultsTest : public page_test::PanelPageTest {
protected:
    // Versus of three players with a tie between the first two.
    std::vector<QmHighscoreEntry> Ranking() {
        std::vector<QmHighscoreEntry> list;
        list = QmHighscoreList::InsertHighscore(list, 61234, "ANN");
        list = QmHighscoreList::InsertHighscore(list, 61234, "BOB");
        return QmHighscoreList::InsertHighscore(list, 90000, "CID");
    }
    QmPartyResultsPage results{context};
};
} // namespace

TEST_F(PartyResultsTest, NextPlayerWhileSomeoneFollowsAndOnlyTheMainMenuAtTheEnd) {
    // (The table's order, colours and times are the results table's and the highscore list's; the
    // row just ranked is seen green below.)
    results.Build(Ranking(), 2, 61234, "CID");
    EXPECT_EQ(Frame(results, {VeKey::Return}), QmPartyResultsPage::Outcome::NextPlayer);

    results.Build(Ranking(), 3, 90000, "");
    EXPECT_TRUE(results.PartyOver());
    EXPECT_EQ(Frame(results, {VeKey::Left}), QmPartyResultsPage::Outcome::None) << "Next player is disabled";
    EXPECT_EQ(Frame(results, {VeKey::Return}), QmPartyResultsPage::Outcome::MainMenu);
}

TEST_F(PartyResultsTest, ThePageInEveryLanguage) {
    for (const std::string& name : QmLanguage::Languages()) {
        language.Load(name);
        results.Relabel(context);
        results.Build(Ranking(), 2, 61234, "CID");
        Frame(results, {});
        EXPECT_TRUE(EdgesClearOfText()) << name;
        EXPECT_TRUE(OnBandAndPanel(QmPartyResultsPage::kBandBottom - 1, QmPanel::kRight - 1,
                                   QmPartyResultsPage::kPanelTop));
        EXPECT_GT(Count(0, QmResultsTable::kFirstRowY + QmResultsTable::kRowStep, 640, 20,
                        QmResultsTable::kNewEntry),
                  50)
            << "the new row is drawn in green";
        EXPECT_TRUE(MatchesStoredImage("frontend/party-results-" + name + ".png", Picture(), 0)) << name;
    }
}
