// Seeding a player's game folder with the shipped tours: a first start gets them all, a folder in
// use keeps every file and tour the player has.
#include "Environment/CoreEnvironmentManager/QmTourSeeder.h"
#include "Platform/VeFiles.h"
#include "ShippedTourFiles.h"
#include "Support/LogCapture.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <unistd.h>
#include <vector>

using namespace shipped_tours;

namespace {
void WriteTour(const std::string& folder, const Tour& tour) {
    CreateFolder(folder);
    QmCipherFile::WriteLines(folder + "/tour.dat", QmTourFile::FormatTour(tour.record, tour.levels), false);
}

// Every file under a folder with its bytes.
std::map<std::string, std::string> Snapshot(const std::string& root) {
    std::map<std::string, std::string> files;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root, ignored)) {
        if (entry.is_regular_file()) {
            std::string bytes;
            ReadFileBytes(entry.path().string(), bytes);
            files[std::filesystem::relative(entry.path(), root).string()] = bytes;
        }
    }
    return files;
}

std::string Seed(const std::string& shipped, const std::string& game, QmSeedReport& report) {
    std::string error;
    return QmTourSeeder::Seed(shipped, game, report, error) ? std::string() : error;
}

class Seeding : public ::testing::Test {
protected:
    void SetUp() override {
        game = data.GameFolder();
        shippedList = ReadTourList();
        ASSERT_GE(shippedList.size(), 3u);
    }
    LogCapture quiet;
    TempUserData data;
    std::string game;
    std::vector<std::string> shippedList;
};
} // namespace

TEST_F(Seeding, AnEmptyGameFolderGetsEveryTourAndASecondRunChangesNothing) {
    QmSeedReport report;
    ASSERT_EQ(Seed(kShipped, game, report), "");
    EXPECT_EQ(report.copiedTours, shippedList);
    EXPECT_TRUE(report.tourListWritten);
    EXPECT_EQ(ReadTourList(game + "/Maps/tours.dat"), shippedList);
    for (const std::string& folder : shippedList) {
        EXPECT_EQ(Snapshot(game + "/Maps/" + folder), Snapshot(kShipped + "/" + folder)) << folder;
    }
    const auto before = Snapshot(game);
    ASSERT_EQ(Seed(kShipped, game, report), "");
    EXPECT_TRUE(report.copiedTours.empty());
    EXPECT_TRUE(report.copiedFiles.empty());
    EXPECT_FALSE(report.tourListWritten);
    EXPECT_EQ(Snapshot(game), before);
}

TEST_F(Seeding, AGameFolderInUseKeepsThePlayersFilesAndToursAfterTheShippedOnes) {
    QmSeedReport report;
    ASSERT_EQ(Seed(kShipped, game, report), "");
    // The player has played: a second map unlocked with a time, a tour of their own listed first
    // (as the editor leaves it), and a renamed official tour.
    const std::string first = game + "/Maps/" + shippedList[0];
    const Tour firstTour = ReadTour(first);
    const std::string secondMap = first + "/" + firstTour.levels[1];
    ASSERT_TRUE(WriteFileAtomic(secondMap, "l0 as the player left it"));
    ASSERT_TRUE(
        WriteFileAtomic(first + "/" + firstTour.levels[0].substr(0, firstTour.levels[0].size() - 4) + ".dat",
                        "the player's times"));
    Tour mine;
    mine.record.name = "Mine";
    mine.record.uid = "42";
    mine.levels = {"Level.map"};
    WriteTour(game + "/Maps/Mine", mine);
    WriteFileAtomic(game + "/Maps/Mine/Level.map", "the player's own map");
    const std::string renamed = game + "/Maps/MyFavourite";
    ASSERT_TRUE(RenamePath(game + "/Maps/" + shippedList[1], renamed));
    std::vector<std::string> list = {"Mine", shippedList[0], "MyFavourite"};
    list.insert(list.end(), shippedList.begin() + 2, shippedList.end());
    QmCipherFile::WriteLines(game + "/Maps/tours.dat", list, false);
    const auto before = Snapshot(game + "/Maps");

    ASSERT_EQ(Seed(kShipped, game, report), "");
    EXPECT_TRUE(report.copiedTours.empty()) << "a renamed tour is still the player's copy";
    EXPECT_TRUE(report.copiedFiles.empty());
    auto after = Snapshot(game + "/Maps");
    after.erase("tours.dat");
    auto kept = before;
    kept.erase("tours.dat");
    EXPECT_EQ(after, kept);
    std::vector<std::string> expected = {shippedList[0], "MyFavourite"};
    expected.insert(expected.end(), shippedList.begin() + 2, shippedList.end());
    expected.push_back("Mine");
    EXPECT_EQ(ReadTourList(game + "/Maps/tours.dat"), expected);
}

TEST_F(Seeding, PutsBackMissingMapsAndAddsMapsANewerTourShips) {
    QmSeedReport report;
    ASSERT_EQ(Seed(kShipped, game, report), "");
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

    ASSERT_EQ(Seed(release, game, report), "");
    EXPECT_EQ(report.copiedFiles,
              (std::vector<std::string>{folder + "/" + shippedTour.levels[2], folder + "/Encore.map"}));
    const Tour updated = ReadTour(game + "/Maps/" + folder);
    EXPECT_EQ(updated.levels, grown.levels);
    EXPECT_TRUE(FileExists(game + "/Maps/" + folder + "/" + shippedTour.levels[2]));
    EXPECT_TRUE(FileExists(game + "/Maps/" + folder + "/Encore.dat"));
    std::string bytes;
    ReadFileBytes(game + "/Maps/" + second + "/Mine.map", bytes);
    EXPECT_EQ(bytes, "the player's");
    EXPECT_EQ(ReadTour(game + "/Maps/" + second).levels, ReadTour(kShipped + "/" + second).levels);
}

TEST_F(Seeding, LeavesAFolderOfTheSameNameHoldingAnotherTour) {
    Tour other;
    other.record.name = shippedList[0];
    other.record.uid = "7";
    other.levels = {"Level.map"};
    WriteTour(game + "/Maps/" + shippedList[0], other);
    QmSeedReport report;
    ASSERT_EQ(Seed(kShipped, game, report), "");
    EXPECT_EQ(ReadTour(game + "/Maps/" + shippedList[0]).record.uid, "7");
    EXPECT_EQ(report.copiedTours.size(), shippedList.size() - 1);
}

TEST_F(Seeding, RefusesShippedToursItCannotReadAndAGameFolderItCannotCreate) {
    TempUserData empty;
    QmSeedReport report;
    EXPECT_NE(Seed(empty.path + "/Maps", game, report), "");
    EXPECT_FALSE(FileExists(game + "/Maps/tours.dat"));

    // A file where the game folder should be.
    ASSERT_TRUE(WriteFileAtomic(data.path + "/Blocked", "not a folder"));
    EXPECT_NE(Seed(kShipped, data.path + "/Blocked", report), "");
    EXPECT_TRUE(report.copiedTours.empty());
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
