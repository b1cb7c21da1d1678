#include "FrontEnd/QmTourMapList.h"
#include "Gameplay/QmHighscores.h"
#include "PageTestSupport.h"
#include "game/Environment/CoreEnvironmentManager/WorldFixture.h"

#include <filesystem>
#include <string>
#include <vector>

namespace {

class TourMapListTest : public WorldTest {
protected:
    TourMapListTest() : previous(std::filesystem::current_path()) {
        std::filesystem::current_path(QM_SOURCE_DIR);
    }
    ~TourMapListTest() override { std::filesystem::current_path(previous); }

    static std::string Line(int number) { return number == 1 ? "SEC" : "L" + std::to_string(number); }

    std::filesystem::path previous;
};

TEST_F(TourMapListTest, ReadsNamesLocksAndBestTimesWithoutDisturbingTheCurrentMap) {
    AddTour("Hills", "Hills", {"A.map", "B.map", "C.map"});
    world.SetMapField('l', "1", 0, 2);
    world.LoadLevel(0, false);
    QmHighscores scores(world);
    scores.SaveScores(QmRecording(), false, false, "Ann", true, 12345);
    world.LoadLevel(1, false);
    world.SaveMap(false); // an identity no other map has
    const std::string uid = world.mapUid;

    const auto tours = QmTourMapList::ReadTours(world);
    ASSERT_EQ(tours.size(), 1u);
    EXPECT_EQ(tours[0].name, "Hills");
    // Each map: its best time, whether a badge came with it, and whether it is locked.
    std::string maps;
    for (const QmTourMapList::MapRow& map : QmTourMapList::ReadMaps(world, 0, true)) {
        maps += std::to_string(map.bestMs) + (map.badge >= 0 ? " badge" : "") +
                (map.locked ? " locked" : "") + "; ";
    }
    EXPECT_EQ(maps, "12345 badge; -1; -1 locked; ");
    EXPECT_EQ(world.mapUid, uid);
    EXPECT_EQ(world.levelIndex, 1);
    EXPECT_TRUE(QmTourMapList::ReadMaps(world, 5, true).empty());
}

TEST_F(TourMapListTest, SelectionScrollsFollowsTheMouseAndCarriesTheTourLock) {
    QmTourMapList list(Line, true, 4);
    std::vector<QmTourMapList::MapRow> maps(10);
    for (size_t i = 0; i < maps.size(); ++i) {
        maps[i].name = "MAP " + std::to_string(i);
    }
    list.SetRows({{"ONE", false, true}, {"TWO", true, false}}, maps);
    list.SetFocus(QmTourMapList::Maps);
    for (int i = 0; i < 9; ++i) {
        EXPECT_TRUE(list.Move(1));
    }
    EXPECT_FALSE(list.Move(1)) << "the last map stays selected";
    EXPECT_EQ(list.SelectedMap(), 9);
    QmTourMapList::Column column = QmTourMapList::Tours;
    int index = -1;
    ASSERT_TRUE(list.RowAt(QmTourMapList::kMapX + 10,
                           QmTourMapList::kRowsY + 3 * QmTourMapList::kRowHeight + 5, column, index));
    EXPECT_EQ(column, QmTourMapList::Maps);
    EXPECT_EQ(index, 9) << "the bottom row shows the scrolled-to map";
    EXPECT_FALSE(list.RowAt(QmTourMapList::kTourX + 5,
                            QmTourMapList::kRowsY + 2 * QmTourMapList::kRowHeight + 5, column, index))
        << "there is no third tour";
    EXPECT_FALSE(list.MapLocked());
    list.SelectTour(1);
    EXPECT_EQ(list.SelectedMap(), 0) << "another tour starts at its first map";
    EXPECT_TRUE(list.MapLocked()) << "a locked tour locks its maps";
}

TEST_F(TourMapListTest, EveryTextFitsItsBox) {
    QmTourMapList list(Line, true, 4);
    std::vector<QmTourMapList::MapRow> maps(2);
    maps[0].name = "ABCDEFGHIJKLMNO";
    maps[0].bestMs = 3599999;
    maps[1].name = "Q";
    list.SetRows({{"A TOUR NAME FAR TOO LONG FOR ITS COLUMN", false, false}}, maps);
    EXPECT_TRUE(page_test::AllFit(list.Texts()));
}

} // namespace
