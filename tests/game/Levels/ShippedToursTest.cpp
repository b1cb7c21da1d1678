// The tours beside the program: their files as the game reads them, the unlocking they start
// with, the blocks they use, and a reference run for every map that the race plays to the finish.
#include "Gameplay/QmRaceSimulator.h"
#include "Platform/VeFiles.h"
#include "ShippedTourFiles.h"
#include "Support/LogCapture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

using namespace shipped_tours;

namespace {
class ShippedTours : public ::testing::Test {
protected:
    LogCapture quiet;
};
} // namespace

TEST_F(ShippedTours, AreOfficialReadOnlyAndUnlockOneAfterAnother) {
    const std::vector<std::string> folders = ReadTourList();
    ASSERT_GE(folders.size(), 4u);
    for (size_t t = 0; t < folders.size(); ++t) {
        const Tour tour = ReadTour(kShipped + "/" + folders[t]);
        SCOPED_TRACE(folders[t]);
        const TourRecord& record = tour.record; // official, locked but the first, fixed, its own list
        EXPECT_EQ((std::vector<bool>{record.official, record.locked, record.editable, record.collectsFiles}),
                  (std::vector<bool>{true, t > 0, false, false}));
        // The scan renames a tour folder to the CamelCase form of its name and a map file to that
        // of its map's name; shipped names are already in that form.
        EXPECT_EQ(folders[t], QmFileNames::CamelCase(tour.record.name));
        EXPECT_GE(tour.levels.size(), 8u);
    }
    for (const ShippedMap& map : ShippedMaps()) {
        SCOPED_TRACE(map.path);
        EXPECT_EQ(map.file, QmFileNames::CamelCase(map.contents.name) + ".map");
        EXPECT_EQ(map.contents.locked, map.level > 0);
        EXPECT_FALSE(map.contents.editable);
        EXPECT_EQ(map.contents.tourUid, ReadTour(kShipped + "/" + folders[map.tour]).record.uid);
    }
}

TEST_F(ShippedTours, EveryMapIsFinishedByItsReferenceRun) {
    const std::vector<ShippedMap> maps = ShippedMaps();
    ASSERT_GE(maps.size(), 32u);
    for (const ShippedMap& map : maps) {
        SCOPED_TRACE(map.path);
        // The score file, read as the race reads it, belongs to this map and lists nobody.
        EXPECT_EQ(map.scoreEntries, 0u);
        QmRecording best;
        best.FromText(map.bestRun);
        ASSERT_FALSE(best.Empty());
        QmCoreEnvironmentManager world;

        // Raced as the game races it, with the stored run as the ghost beside the racer; and, on a
        // map without cows, as a player's machine races it, at other frame rates: a run that only
        // works at one frame time would ask the impossible of a player. Cows walk their own way at
        // another frame rate (and turn at random in the game), so there a player answers what they
        // see, and the run is proven at the usual frame time.
        const auto& blocks = map.contents.blocks;
        const bool cows = std::find(blocks.begin(), blocks.end(), Block::Enemy) != blocks.end();
        std::vector<float> frameTimes = {1.0f / 60.0f};
        if (!cows) {
            frameTimes.insert(frameTimes.end(), {1.0f / 50.0f, 1.0f / 75.0f, 1.0f / 144.0f});
        }
        for (float dt : frameTimes) {
            std::string reloadError;
            ASSERT_TRUE(QmRaceSimulator::LoadMap(world, map.path, reloadError)) << reloadError;
            QmSimOptions options;
            options.dt = dt;
            options.inputs = best;
            options.ghost = best;
            const QmSimResult result = QmRaceSimulator::Run(world, options, nullptr);
            EXPECT_EQ(result.outcome, QmSimResult::Finished)
                << QmSimResult::OutcomeName(result.outcome) << " at " << result.timeMs << " ms, frame time "
                << dt;
        }
    }
}

TEST_F(ShippedTours, UseEveryBlockAtBothSizesAndTheLaterToursDressEveryMap) {
    std::set<BlockId> used;
    std::set<int> sizes;
    std::vector<std::set<BlockId>> tiles(ReadTourList().size()); // each tour's tileset blocks
    for (const ShippedMap& map : ShippedMaps()) {
        const int size = map.contents.blockSize == 32 ? 20 : 10;
        sizes.insert(size);
        std::set<BlockId> decorations;
        for (int x = 0; x < size; ++x) {
            for (int y = 0; y < size; ++y) {
                const BlockId id = map.contents.blocks[x * 20 + y];
                used.insert(id);
                if (id >= 6 && id <= 17) {
                    tiles[map.tour].insert(id);
                }
                if (id >= 150 && id <= 173) {
                    decorations.insert(id);
                }
            }
        }
        // From the third tour on, every map has three kinds of decoration at least.
        EXPECT_TRUE(map.tour < 2 || decorations.size() >= 3) << map.path;
    }
    EXPECT_EQ(sizes, (std::set<int>{10, 20}));
    for (size_t t = 2; t < tiles.size(); ++t) {
        EXPECT_EQ(tiles[t].size(), 12u) << "tour " << t << " uses the whole tile set";
    }
    // The coloured blocks, the twelve tileset blocks, the 24 decorations and every special block
    // are each used somewhere, and nothing else is (the sources' legend knows no id past 255).
    const auto hasArt = [](BlockId id) {
        return (id >= 1 && id <= 17) || (id >= 150 && id <= 173) || id >= 246;
    };
    for (BlockId id = 1; id <= 255; ++id) {
        EXPECT_EQ(used.count(id) > 0, hasArt(id)) << "block " << id << " (" << QmBlocks::Name(id) << ")";
    }
}
