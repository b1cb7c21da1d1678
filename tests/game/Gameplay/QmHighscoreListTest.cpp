// Ranks and insertion into a top ten, the time texts, and the badge limits.
#include "Gameplay/QmHighscoreList.h"

#include <gtest/gtest.h>

namespace {
// Times of 1, 2, ... seconds.
std::vector<QmHighscoreEntry> Entries(int count) {
    std::vector<QmHighscoreEntry> list;
    for (int i = 0; i < count; ++i) {
        std::string name = "P";
        name += std::to_string(i);
        list.push_back({name, QmHighscoreList::TimeText(1000 + 1000 * i)});
    }
    return list;
}
} // namespace

TEST(QmHighscoreListTest, TimeTextsHaveSixDecimalsAndReadBackTheirLeadingInteger) {
    EXPECT_EQ(QmHighscoreList::TimeText(61234), "61234.000000");
    EXPECT_EQ(QmHighscoreList::TimeValue("61234.000000"), 61234);
    EXPECT_EQ(QmHighscoreList::TimeValue("  77abc"), 77);
    EXPECT_EQ(QmHighscoreList::TimeValue("abc"), 0);
    EXPECT_EQ(QmHighscoreList::TimeValue("99999999999999999999999"), 2147483647) << "saturates, no overflow";
}

TEST(QmHighscoreListTest, RankAndInsertionAtTheTenEntryBoundaryAndIntoAnEmptyList) {
    const std::vector<QmHighscoreEntry> full = Entries(10); // 1000 .. 10000
    EXPECT_EQ(QmHighscoreList::HighscoreRank(full, 10000), -1) << "equal to the tenth: not entered";
    EXPECT_EQ(QmHighscoreList::HighscoreRank(full, 9999), 10);
    EXPECT_EQ(QmHighscoreList::HighscoreRank(full, 500), 1);
    EXPECT_EQ(QmHighscoreList::HighscoreRank(full, 1000), 2) << "equal times keep the older entry first";

    const auto better = QmHighscoreList::InsertHighscore(full, 9999, "New");
    ASSERT_EQ(better.size(), 10u);
    EXPECT_EQ(better[9].name, "New");
    EXPECT_EQ(better[9].time, "9999.000000");

    const auto same = QmHighscoreList::InsertHighscore(full, 10000, "Late");
    EXPECT_EQ(same[9].name, "P9") << "a full list keeps its entries for an equal time";
    const auto first = QmHighscoreList::InsertHighscore(full, 1, "Best");
    EXPECT_EQ(first[0].name, "Best");
    EXPECT_EQ(first[9].name, "P8") << "the last one dropped out";

    const std::vector<QmHighscoreEntry> nine = Entries(9);
    EXPECT_EQ(QmHighscoreList::HighscoreRank(nine, 50000), 10) << "room left: appended";
    EXPECT_EQ(QmHighscoreList::InsertHighscore(nine, 50000, "Slow").back().name, "Slow");

    const std::vector<QmHighscoreEntry> empty;
    EXPECT_EQ(QmHighscoreList::HighscoreRank(empty, 123456), 1);
    const auto one = QmHighscoreList::InsertHighscore(empty, 123456, "Ann");
    ASSERT_EQ(one.size(), 1u);
    EXPECT_EQ(one[0].name, "Ann");
    // A list whose worst time reads 0 takes every time.
    std::vector<QmHighscoreEntry> broken = Entries(10);
    broken[9].time = "garbage";
    EXPECT_EQ(QmHighscoreList::HighscoreRank(broken, 99999), 0) << "qualifies, but no place in a full list";
}

TEST(QmHighscoreListTest, BadgeLimitsAndTheBadgeShownByTime) {
    std::vector<QmHighscoreEntry> three = {
        {"Ann", "61234.000000"}, {"Bob", "70001.000000"}, {"Cid", "80000.000000"}};
    const QmHighscoreList::Limits limits = QmHighscoreList::BadgeLimits(three);
    EXPECT_FLOAT_EQ(limits.gold, 61.234f);
    EXPECT_FLOAT_EQ(limits.silver, 70.001f);
    EXPECT_FLOAT_EQ(limits.bronze, 80.0f);
    EXPECT_EQ(QmHighscoreList::BadgeFor(limits, 61000), 0);
    EXPECT_EQ(QmHighscoreList::BadgeFor(limits, 65000), 1);
    EXPECT_EQ(QmHighscoreList::BadgeFor(limits, 79999), 2);
    EXPECT_EQ(QmHighscoreList::BadgeFor(limits, 999999), 3) << "no tenth entry: the badge has no limit";

    const QmHighscoreList::Limits full = QmHighscoreList::BadgeLimits(Entries(10));
    EXPECT_FLOAT_EQ(full.badge, 10.0f);
    EXPECT_EQ(QmHighscoreList::BadgeFor(full, 9999), 3);
    EXPECT_EQ(QmHighscoreList::BadgeFor(full, 10000), -1) << "beyond every limit nothing is shown";
    EXPECT_EQ(QmHighscoreList::BadgeFor(QmHighscoreList::BadgeLimits({}), 500000), 0) << "no list: gold";
}
