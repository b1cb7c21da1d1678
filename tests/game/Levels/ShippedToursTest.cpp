// The tours beside the program: their files as the game reads them, the unlocking they start
// with, the blocks they use, and a reference run for every map that the race plays to the finish.
#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmFileNames.h"
#include "Environment/CoreEnvironmentManager/QmMapFile.h"
#include "Environment/CoreEnvironmentManager/QmTourFile.h"
#include "Environment/CoreEnvironmentManager/QmTourSeeder.h"
#include "Gameplay/QmHighscores.h"
#include "Gameplay/QmRaceSimulator.h"
#include "LevelBuilder.h"
#include "LevelSource.h"
#include "Platform/VeFiles.h"
#include "Support/LogCapture.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {
const std::string kShipped = std::string(QM_SOURCE_DIR) + "/Maps";

struct ShippedMap {
    std::string tour;
    std::string path;
    QmMapContents contents;
};

std::vector<std::string> TourList() {
    std::vector<std::string> lines;
    QmCipherFile::ReadLines(kShipped + "/tours.dat", lines);
    return QmTourFile::ParseTourList(lines);
}

void ReadTour(const std::string& folder, TourRecord& record, std::vector<std::string>& levels) {
    std::vector<std::string> lines;
    ASSERT_TRUE(QmCipherFile::ReadLines(kShipped + "/" + folder + "/tour.dat", lines)) << folder;
    QmTourFile::ParseTour(lines, record, levels);
}

std::vector<ShippedMap> AllMaps() {
    std::vector<ShippedMap> maps;
    for (const std::string& folder : TourList()) {
        TourRecord record;
        std::vector<std::string> levels;
        ReadTour(folder, record, levels);
        for (const std::string& file : levels) {
            ShippedMap map;
            map.tour = folder;
            map.path = kShipped + "/" + folder + "/" + file;
            std::vector<std::string> lines;
            QmCipherFile::ReadLines(map.path, lines);
            map.contents = QmMapFile::Parse(lines);
            maps.push_back(map);
        }
    }
    return maps;
}

class ShippedTours : public ::testing::Test {
protected:
    LogCapture quiet;
};
} // namespace

TEST_F(ShippedTours, AreOfficialReadOnlyAndUnlockOneAfterAnother) {
    const std::vector<std::string> folders = TourList();
    ASSERT_GE(folders.size(), 4u);
    for (size_t t = 0; t < folders.size(); ++t) {
        TourRecord record;
        std::vector<std::string> levels;
        ReadTour(folders[t], record, levels);
        SCOPED_TRACE(folders[t]);
        EXPECT_TRUE(record.official);
        EXPECT_EQ(record.locked, t > 0);
        EXPECT_FALSE(record.editable);
        EXPECT_FALSE(record.collectsFiles);
        EXPECT_FALSE(record.uid.empty());
        // The scan renames a tour folder to the CamelCase form of its name and a map file to that
        // of its map's name; shipped names are already in that form.
        EXPECT_EQ(folders[t], QmFileNames::CamelCase(record.name));
        ASSERT_GE(levels.size(), 8u);
        for (size_t m = 0; m < levels.size(); ++m) {
            std::vector<std::string> lines;
            ASSERT_TRUE(QmCipherFile::ReadLines(kShipped + "/" + folders[t] + "/" + levels[m], lines));
            const QmMapContents map = QmMapFile::Parse(lines);
            SCOPED_TRACE(levels[m]);
            EXPECT_EQ(levels[m], QmFileNames::CamelCase(map.name) + ".map");
            EXPECT_LE(map.name.size(), QmCoreEnvironmentManager::kMaxMapNameLength);
            EXPECT_EQ(map.locked, m > 0);
            EXPECT_FALSE(map.editable);
            EXPECT_EQ(map.tourUid, record.uid);
            EXPECT_EQ(map.startCells.size(), 1u);
        }
    }
}

TEST_F(ShippedTours, EveryMapIsFinishedByItsReferenceRun) {
    const std::vector<ShippedMap> maps = AllMaps();
    ASSERT_GE(maps.size(), 32u);
    for (const ShippedMap& map : maps) {
        SCOPED_TRACE(map.path);
        QmCoreEnvironmentManager world;
        std::string error;
        ASSERT_TRUE(QmRaceSimulator::LoadMap(world, map.path, error)) << error;
        // The score file is read as the race reads it: it must belong to this map.
        QmHighscores scores(world);
        scores.LoadScores(QmFileNames::ScoreFileOf(map.path));
        EXPECT_TRUE(scores.List().empty());
        ASSERT_FALSE(scores.StoredRecording().Empty());

        // Raced as the game races it, with the stored run as the ghost beside the racer; and, on a
        // map without cows, as a player's machine races it, at other frame rates: a run that only
        // works at one frame time would ask the impossible of a player. Cows walk their own way at
        // another frame rate (and turn at random in the game), so there a player answers what they
        // see, and the run is proven at the usual frame time.
        bool cows = false;
        for (BlockId id : map.contents.blocks) {
            cows = cows || id == Block::Enemy;
        }
        std::vector<float> frameTimes = {1.0f / 60.0f};
        if (!cows) {
            frameTimes.insert(frameTimes.end(), {1.0f / 50.0f, 1.0f / 75.0f, 1.0f / 144.0f});
        }
        for (float dt : frameTimes) {
            std::string reloadError;
            ASSERT_TRUE(QmRaceSimulator::LoadMap(world, map.path, reloadError)) << reloadError;
            QmSimOptions options;
            options.dt = dt;
            options.inputs = scores.StoredRecording();
            options.ghost = scores.StoredRecording();
            const QmSimResult result = QmRaceSimulator::Run(world, options, nullptr);
            EXPECT_EQ(result.outcome, QmSimResult::Finished)
                << QmSimResult::OutcomeName(result.outcome) << " at " << result.timeMs << " ms, frame time "
                << dt;
        }
    }
}

TEST_F(ShippedTours, TogetherUseEveryBlockBothSizesAndEverySpecial) {
    std::set<BlockId> used;
    std::set<int> sizes;
    for (const ShippedMap& map : AllMaps()) {
        const int size = map.contents.blockSize == 32 ? 20 : 10;
        sizes.insert(size);
        for (int x = 0; x < size; ++x) {
            for (int y = 0; y < size; ++y) {
                used.insert(map.contents.blocks[x * 20 + y]);
            }
        }
    }
    EXPECT_EQ(sizes, (std::set<int>{10, 20}));
    // The coloured blocks, the twelve tileset blocks, the 24 decorations and every special block.
    std::vector<BlockId> wanted;
    for (BlockId id = 1; id <= 17; ++id) {
        wanted.push_back(id);
    }
    for (BlockId id = 150; id <= 173; ++id) {
        wanted.push_back(id);
    }
    for (BlockId id = 246; id <= 255; ++id) {
        wanted.push_back(id);
    }
    for (BlockId id : wanted) {
        EXPECT_TRUE(used.count(id)) << "no shipped map uses block " << id << " (" << QmBlocks::Name(id)
                                    << ")";
    }
    for (BlockId id : used) {
        EXPECT_TRUE(id == 0 || (id >= 1 && id <= 17) || (id >= 150 && id <= 173) || id >= 246)
            << "block " << id << " has no art";
    }
}

TEST_F(ShippedTours, AreWhatTheSourcesGive) {
    std::vector<LevelTour> tours;
    std::string error;
    ASSERT_TRUE(LevelSource::ReadTours(std::string(QM_SOURCE_DIR) + "/tools/levels/tours", tours, error))
        << error;
    TempUserData scratch;
    const std::string out = scratch.path + "/Maps";
    std::vector<std::string> missing;
    ASSERT_TRUE(LevelBuilder::Write(tours, out, missing, error)) << error;
    EXPECT_TRUE(missing.empty());
    std::vector<std::string> expected = {"tours.dat"};
    std::vector<std::string> actual = ListFiles(kShipped);
    EXPECT_EQ(actual, expected);
    ASSERT_EQ(ListFolders(out), ListFolders(kShipped));
    for (const std::string& folder : ListFolders(out)) {
        ASSERT_EQ(ListFiles(out + "/" + folder), ListFiles(kShipped + "/" + folder)) << folder;
        for (const std::string& file : ListFiles(out + "/" + folder)) {
            std::string made;
            std::string shipped;
            ReadFileBytes(out + "/" + folder + "/" + file, made);
            ReadFileBytes(kShipped + "/" + folder + "/" + file, shipped);
            EXPECT_EQ(made, shipped) << folder << "/" << file << " differs from its source: run gen-levels";
        }
    }
}

TEST_F(ShippedTours, StartTheGameAtTheTutorialOnceSeeded) {
    TempUserData data;
    QmSeedReport report;
    std::string error;
    ASSERT_TRUE(QmTourSeeder::Seed(kShipped, data.GameFolder(), report, error)) << error;

    QmCoreEnvironmentManager world;
    world.programMapsFolder = kShipped;
    world.InitWorld();
    EXPECT_EQ(world.tourFolders, TourList());
    EXPECT_EQ(world.tourIndex, 0);
    EXPECT_EQ(world.mapName, "TUTORIAL");
    EXPECT_FALSE(world.locked);
    EXPECT_TRUE(world.tours[0].official);
    EXPECT_FALSE(world.tours[0].locked);
    EXPECT_TRUE(world.tours[1].locked);
    // The scan found every file where the tour lists it and renamed nothing.
    for (size_t t = 0; t < world.tourFolders.size(); ++t) {
        TourRecord record;
        std::vector<std::string> levels;
        ReadTour(world.tourFolders[t], record, levels);
        EXPECT_EQ(world.tourLevels[t], levels);
        for (const std::string& file : levels) {
            EXPECT_TRUE(FileExists(data.GameFolder() + "/Maps/" + world.tourFolders[t] + "/" + file));
        }
    }
}
