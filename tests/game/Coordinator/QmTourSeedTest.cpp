#include "Coordinator/QmTourSeed.h"

#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmTourFile.h"
#include "Platform/VeFiles.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {
const std::string kShipped = std::string(QM_SOURCE_DIR) + "/Maps";

std::vector<std::string> TourList(const std::string& gameFolder) {
    std::vector<std::string> lines;
    if (!QmCipherFile::ReadLines(gameFolder + "/Maps/tours.dat", lines)) {
        return {};
    }
    return QmTourFile::ParseTourList(lines);
}
} // namespace

TEST(QmTourSeedTest, AnEmptyGameFolderReceivesEveryShippedTourInItsOrder) {
    TempUserData data;
    std::vector<std::string> copied;
    std::string error;
    ASSERT_TRUE(QmTourSeed::SeedWhenEmpty(kShipped, data.GameFolder(), copied, error)) << error;

    std::vector<std::string> lines;
    ASSERT_TRUE(QmCipherFile::ReadLines(kShipped + "/tours.dat", lines));
    const std::vector<std::string> shipped = QmTourFile::ParseTourList(lines);
    ASSERT_FALSE(shipped.empty());
    EXPECT_EQ(copied, shipped);
    EXPECT_EQ(TourList(data.GameFolder()), shipped);
    for (const std::string& tour : shipped) {
        EXPECT_EQ(ListFiles(data.GameFolder() + "/Maps/" + tour), ListFiles(kShipped + "/" + tour)) << tour;
    }

    // A second start finds the list and copies nothing, even when the player removed a map.
    const std::string map =
        data.GameFolder() + "/Maps/" + shipped[0] + "/" + ListFiles(kShipped + "/" + shipped[0])[0];
    ASSERT_TRUE(RemoveFile(map));
    ASSERT_TRUE(QmTourSeed::SeedWhenEmpty(kShipped, data.GameFolder(), copied, error));
    EXPECT_TRUE(copied.empty());
    EXPECT_FALSE(FileExists(map));
}

TEST(QmTourSeedTest, APlayersOwnTourFolderIsKeptAndListed) {
    TempUserData data;
    std::vector<std::string> lines;
    ASSERT_TRUE(QmCipherFile::ReadLines(kShipped + "/tours.dat", lines));
    const std::string first = QmTourFile::ParseTourList(lines).at(0);
    // A folder of the first shipped tour's name that holds a tour of the player's.
    const std::string mine = data.GameFolder() + "/Maps/" + first;
    ASSERT_TRUE(CreateFolder(mine));
    TourRecord record;
    record.name = "My Own";
    record.uid = "12345";
    ASSERT_TRUE(QmCipherFile::WriteLines(mine + "/tour.dat", QmTourFile::FormatTour(record, {}), false));

    std::vector<std::string> copied;
    std::string error;
    ASSERT_TRUE(QmTourSeed::SeedWhenEmpty(kShipped, data.GameFolder(), copied, error)) << error;
    EXPECT_EQ(std::find(copied.begin(), copied.end(), first), copied.end());
    EXPECT_EQ(ListFiles(mine), std::vector<std::string>{"tour.dat"});
    EXPECT_EQ(TourList(data.GameFolder()).at(0), first);
}

TEST(QmTourSeedTest, NothingShippedLeavesTheGameFolderAlone) {
    TempUserData data;
    std::vector<std::string> copied;
    std::string error;
    EXPECT_TRUE(QmTourSeed::SeedWhenEmpty(data.path + "/NoMaps", data.GameFolder(), copied, error));
    EXPECT_TRUE(copied.empty());
    EXPECT_FALSE(FileExists(data.GameFolder() + "/Maps/tours.dat"));
}

TEST(QmTourSeedTest, AGameFolderThatCannotBeWrittenIsReported) {
    TempUserData data;
    // A file where the game folder should be.
    ASSERT_TRUE(WriteFileAtomic(data.path + "/Blocked", "not a folder"));
    std::vector<std::string> copied;
    std::string error;
    EXPECT_FALSE(QmTourSeed::SeedWhenEmpty(kShipped, data.path + "/Blocked", copied, error));
    EXPECT_NE(error.find("cannot create"), std::string::npos) << error;
}
