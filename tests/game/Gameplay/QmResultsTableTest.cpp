// The results table: ten rows with the place colours, the new entry in green after a race, and
// the header with the run's time.
#include "Gameplay/QmResultsTable.h"

#include <gtest/gtest.h>

namespace {
std::string Lines(int line) {
    return line == 1 ? "SEC" : line == 169 ? "MIN" : line == 78 ? "YOUR TIME:" : "";
}
} // namespace

TEST(QmResultsTableTest, RowsTakeThePlaceColoursAndTheNewEntryIsGreenOnlyAfterARace) {
    std::vector<QmHighscoreEntry> list;
    for (int i = 0; i < 5; ++i) {
        std::string name = "P";
        name += std::to_string(i);
        list = QmHighscoreList::InsertHighscore(list, 20000 + 1000 * i, name);
    }
    QmResultsTable table(Lines);
    table.BuildResults(list, 2, true, 21000);
    EXPECT_EQ(table.Header(), "YOUR TIME: 21.000 SEC");
    ASSERT_EQ(table.Rows().size(), 10u);
    EXPECT_EQ(table.Filled(), 5u);
    EXPECT_EQ(table.Rows()[0].colour, QmResultsTable::kGold);
    EXPECT_EQ(table.Rows()[1].colour, QmResultsTable::kNewEntry);
    EXPECT_EQ(table.Rows()[2].colour, QmResultsTable::kBronze);
    EXPECT_EQ(table.Rows()[3].colour, QmResultsTable::kOther);
    EXPECT_EQ(table.Rows()[4].rank, "5");
    EXPECT_EQ(table.Rows()[4].name, "P4");
    EXPECT_EQ(table.Rows()[4].time, "24.000 SEC");
    EXPECT_TRUE(table.Rows()[5].rank.empty() && table.Rows()[9].name.empty())
        << "rows past the list are empty";

    table.BuildResults(list, 2, false, 0);
    EXPECT_TRUE(table.Header().empty());
    EXPECT_EQ(table.Rows()[1].colour, QmResultsTable::kSilver)
        << "outside the after-race scene nothing is new";
}
