// Seeding a player's game folder with the shipped tours: a first start gets them all, a folder in
// use keeps every file and tour the player has.
#include "Environment/CoreEnvironmentManager/QmTourSeeder.h"
#include "Platform/VeFiles.h"
#include "ShippedTourFiles.h"
#include "Support/LogCapture.h"
#include "Support/TempUserData.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

using namespace shipped_tours;
using ::testing::MatchesRegex;

namespace {
void WriteTour(const std::string& folder, const Tour& tour) {
    CreateFolder(folder);
    QmCipherFile::WriteLines(folder + "/tour.dat", QmTourFile::FormatTour(tour.record, tour.levels), false);
}

std::string Join(const std::vector<std::string>& names) {
    std::string joined;
    for (const std::string& name : names) {
        joined += (joined.empty() ? "" : ",") + name;
    }
    return joined;
}

class Seeding : public ::testing::Test {
protected:
    void SetUp() override {
        game = data.GameFolder();
        shippedList = ReadTourList();
        ASSERT_GE(shippedList.size(), 3u);
    }

    // Seeds a game folder and says what the seeder did: refused and why, copied tours and files, list
    // written.
    std::string Seeded(const std::string& shipped = kShipped, const std::string& folder = "") {
        QmSeedReport report;
        std::string error;
        const bool seeded = QmTourSeeder::Seed(shipped, folder.empty() ? game : folder, report, error);
        return (seeded ? std::string() : "refused: " + error + "; ") + "tours " + Join(report.copiedTours) +
               "; files " + Join(report.copiedFiles) + (report.tourListWritten ? "; list written" : "");
    }

    LogCapture quiet;
    TempUserData data;
    std::string game;
    std::vector<std::string> shippedList;
};
} // namespace

TEST_F(Seeding, AnEmptyGameFolderGetsEveryTourAndAFolderInUseKeepsThePlayersFilesAndToursAfterThem) {
    ASSERT_EQ(Seeded(), "tours " + Join(shippedList) + "; files ; list written");
    EXPECT_EQ(ReadTourList(game + "/Maps/tours.dat"), shippedList);
    for (const std::string& folder : shippedList) {
        EXPECT_EQ(Snapshot(game + "/Maps/" + folder), Snapshot(kShipped + "/" + folder)) << folder;
    }
    const auto untouched = Snapshot(game);
    EXPECT_EQ(Seeded(), "tours ; files ");
    EXPECT_EQ(Snapshot(game), untouched);

    // The player has played: a second map unlocked with a time, a tour of their own listed first
    // (as the editor leaves it), and a renamed official tour.
    const std::string first = game + "/Maps/" + shippedList[0];
    const Tour firstTour = ReadTour(first);
    ASSERT_TRUE(WriteFileAtomic(first + "/" + firstTour.levels[1], "l0 as the player left it"));
    ASSERT_TRUE(
        WriteFileAtomic(first + "/" + QmFileNames::ScoreFileOf(firstTour.levels[0]), "the player's times"));
    WriteTour(game + "/Maps/Mine", {{false, "Mine", false, true, true, "42"}, {"Level.map"}});
    WriteFileAtomic(game + "/Maps/Mine/Level.map", "the player's own map");
    ASSERT_TRUE(RenamePath(game + "/Maps/" + shippedList[1], game + "/Maps/MyFavourite"));
    std::vector<std::string> list = shippedList;
    list[1] = "MyFavourite";
    std::vector<std::string> mineFirst = {"Mine"};
    mineFirst.insert(mineFirst.end(), list.begin(), list.end());
    QmCipherFile::WriteLines(game + "/Maps/tours.dat", mineFirst, false);
    auto before = Snapshot(game + "/Maps");

    // A renamed tour is still the player's copy; their own tour moves after the shipped ones.
    EXPECT_EQ(Seeded(), "tours ; files ; list written");
    auto after = Snapshot(game + "/Maps");
    after.erase("tours.dat");
    before.erase("tours.dat");
    EXPECT_EQ(after, before);
    list.push_back("Mine");
    EXPECT_EQ(ReadTourList(game + "/Maps/tours.dat"), list);
}

TEST_F(Seeding, PutsBackMissingMapsAndAddsMapsANewerTourShips) {
    ASSERT_EQ(Seeded(), "tours " + Join(shippedList) + "; files ; list written");
    const std::string folder = shippedList[0];
    const Tour shippedTour = ReadTour(kShipped + "/" + folder);
    // The player lost a listed map; a newer release adds a map to the tour.
    ASSERT_TRUE(RemoveFile(game + "/Maps/" + folder + "/" + shippedTour.levels[2]));
    TempUserData newer;
    const std::string release = newer.path + "/Maps";
    std::filesystem::copy(kShipped, release, std::filesystem::copy_options::recursive);
    Tour grown = shippedTour;
    grown.levels.push_back("Encore.map");
    WriteTour(release + "/" + folder, grown);
    WriteFileAtomic(release + "/" + folder + "/Encore.map", "a new map");
    WriteFileAtomic(release + "/" + folder + "/Encore.dat", "its ghost");
    // The player's own file of that name stays theirs.
    const std::string second = shippedList[1];
    Tour grownSecond = ReadTour(kShipped + "/" + second);
    grownSecond.levels.push_back("Mine.map");
    WriteTour(release + "/" + second, grownSecond);
    WriteFileAtomic(release + "/" + second + "/Mine.map", "shipped");
    WriteFileAtomic(game + "/Maps/" + second + "/Mine.map", "the player's");

    EXPECT_EQ(Seeded(release),
              "tours ; files " + folder + "/" + shippedTour.levels[2] + "," + folder + "/Encore.map");
    EXPECT_EQ(ReadTour(game + "/Maps/" + folder).levels, grown.levels);
    EXPECT_TRUE(FileExists(game + "/Maps/" + folder + "/Encore.dat"));
    EXPECT_EQ(Snapshot(game + "/Maps/" + second)["Mine.map"], "the player's");
    EXPECT_EQ(ReadTour(game + "/Maps/" + second).levels, ReadTour(kShipped + "/" + second).levels);
}

TEST_F(Seeding, LeavesAFolderOfTheSameNameHoldingAnotherTour) {
    WriteTour(game + "/Maps/" + shippedList[0],
              {{false, shippedList[0], false, true, true, "7"}, {"Level.map"}});
    const std::vector<std::string> others(shippedList.begin() + 1, shippedList.end());
    EXPECT_EQ(Seeded(), "tours " + Join(others) + "; files ; list written");
    EXPECT_EQ(ReadTour(game + "/Maps/" + shippedList[0]).record.uid, "7");
}

TEST_F(Seeding, RefusesShippedToursItCannotReadAndAGameFolderItCannotCreate) {
    TempUserData empty;
    EXPECT_THAT(Seeded(empty.path + "/Maps"), MatchesRegex("refused: .+; tours ; files "));
    EXPECT_FALSE(FileExists(game + "/Maps/tours.dat"));

    // A file where the game folder should be.
    ASSERT_TRUE(WriteFileAtomic(data.path + "/Blocked", "not a folder"));
    EXPECT_THAT(Seeded(kShipped, data.path + "/Blocked"), MatchesRegex("refused: .+; tours ; files "));
    std::string bytes;
    ASSERT_TRUE(ReadFileBytes(data.path + "/Blocked", bytes));
    EXPECT_EQ(bytes, "not a folder");
}

TEST_F(Seeding, TheInstallScriptSeedsTheGameFolder) {
    char exe[4096] = {};
    const ssize_t length = readlink("/proc/self/exe", exe, sizeof(exe) - 1);
    ASSERT_GT(length, 0);
    // The test binary lives in <build>/tests/.
    const std::string build = std::filesystem::path(exe).parent_path().parent_path().string();
    const std::string command = "QUILLMAZE_USER_DATA='" + data.path + "' '" + std::string(QM_SOURCE_DIR) +
                                "/scripts/seed-user-data' '" + build + "' > /dev/null";
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(ReadTourList(game + "/Maps/tours.dat"), shippedList);
    EXPECT_EQ(std::system(command.c_str()), 0);
}
