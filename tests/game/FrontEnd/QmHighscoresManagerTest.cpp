// The highscores page: the name entry after a qualifying run (pre-filled, confirmed, declined),
// runs that do not qualify, names the font cannot draw, and its picture in every language.
#include "FrontEnd/QmHighscoresManager.h"

#include "FrontEnd/QmNameEntry.h"
#include "PanelPageTest.h"

namespace {
using page_test::PanelPageTest;

std::vector<QmHighscoreEntry> Times(int count) {
    std::vector<QmHighscoreEntry> list;
    for (int i = 0; i < count; ++i) {
        std::string name = "RACER ";
        name += static_cast<char>('A' + i);
        list = QmHighscoreList::InsertHighscore(list, 20000 + 1500 * i, name);
    }
    return list;
}

class HighscoresTest : public PanelPageTest {
protected:
    QmHighscoresManager::Outcome Frame(std::initializer_list<int> keys) {
        return WithKeys(keys, [this] { return manager.Frame(page, &input, controls); });
    }
    // Opens the page after a run; the save function inserts the run as the game does.
    void Finish(const std::vector<QmHighscoreEntry>& list, int64_t time) {
        manager.AfterRace(
            list, time, QmHighscoreList::HighscoreRank(list, time), &input,
            [this, list, time](const std::string& name) {
                saved.push_back(name);
                return QmHighscoreList::InsertHighscore(list, time, name);
            },
            640);
    }

    QmHighscoresManager manager{[this](int number) { return language.GetLine(number); }};
    std::vector<std::string> saved;
};
} // namespace

TEST(QmNameEntryTest, NamesAreKeptAsTheTableCanDrawThem) {
    EXPECT_EQ(QmNameEntry::DrawableName("ann-marie"), "ANN-MARIE");
    EXPECT_EQ(QmNameEntry::DrawableName("  Bob   the  {great}~ "), "BOB THE GREAT");
    EXPECT_EQ(QmNameEntry::DrawableName("Ev;il:Name"), "EVILNAME") << "the score file's separators";
    EXPECT_EQ(QmNameEntry::DrawableName("\x01\x7f\xff\t"), "");
    EXPECT_EQ(QmNameEntry::DrawableName("ABCDEFGHIJKLMN OPQRSTUVWXYZ"), "ABCDEFGHIJKLMN") << "15 at most";
    EXPECT_EQ(QmNameEntry::DrawableName(std::string("\xC9LISE \xD8YVIND", 12)), "\xC9LISE \xD8YVIND");
}

TEST_F(HighscoresTest, AQualifyingRunAsksForTheRememberedNameAndStoresItOnConfirm) {
    manager.SetDefaultName("player");
    Finish(Times(4), 21000);
    ASSERT_TRUE(manager.NameEntryOpen());
    Frame({VeKey::B});
    EXPECT_EQ(Frame({VeKey::Return}), QmHighscoresManager::Outcome::None);
    ASSERT_EQ(saved, std::vector<std::string>{"PLAYERB"});
    EXPECT_EQ(manager.Table().Rows()[1].name, "PLAYERB");
    EXPECT_GT(Count(0, 161, 640, 20, QmResultsTable::kNewEntry), 50) << "the new row is drawn in green";
    EXPECT_EQ(Frame({VeKey::R}), QmHighscoresManager::Outcome::RaceAgain);

    // The next entry offers the name typed last; an entry emptied of drawable characters keeps it.
    Finish(Times(2), 1000);
    for (int i = 0; i < 21; ++i) {
        Frame({VeKey::Backspace});
    }
    Frame({VeKey::Return});
    EXPECT_EQ(saved.back(), "PLAYERB");
}

TEST_F(HighscoresTest, DecliningStoresNothingAndSlowRunsAreNotAsked) {
    Finish(Times(3), 25000);
    ASSERT_TRUE(manager.NameEntryOpen());
    EXPECT_EQ(Frame({VeKey::Escape}), QmHighscoresManager::Outcome::Back);
    EXPECT_TRUE(saved.empty());

    const std::vector<QmHighscoreEntry> full = Times(10);
    Finish(full, QmHighscoreList::TimeValue(full.back().time)); // equal to the tenth: no place
    EXPECT_FALSE(manager.NameEntryOpen());
    EXPECT_EQ(Frame({VeKey::Escape}), QmHighscoresManager::Outcome::Back);
    EXPECT_EQ(Frame({VeKey::Return}), QmHighscoresManager::Outcome::Back) << "the Back button";
    EXPECT_TRUE(saved.empty());

    manager.ShowList({}, "Empty map");
    EXPECT_EQ(Frame({}), QmHighscoresManager::Outcome::None);
}

TEST_F(HighscoresTest, ThePageInEveryLanguage) {
    for (const std::string& name : QmLanguage::Languages()) {
        language.Load(name);
        manager = QmHighscoresManager([this](int number) { return language.GetLine(number); });
        manager.SetDefaultName("ANN");
        Finish(Times(9), 24000);
        Frame({});
        EXPECT_TRUE(EdgesClearOfText()) << name << " with the name entry";
        EXPECT_TRUE(MatchesStoredImage("frontend/highscores-entry-" + name + ".png", Picture(), 0)) << name;
        Frame({VeKey::Return});
        EXPECT_TRUE(EdgesClearOfText()) << name << " with the table";
        EXPECT_TRUE(OnBandAndPanel(QmHighscoresManager::kBandBottom - 1, QmPanel::kLeft,
                                   QmHighscoresManager::kPanelBottom - 1));
        EXPECT_TRUE(MatchesStoredImage("frontend/highscores-" + name + ".png", Picture(), 0)) << name;
    }
}
