// The shipped maps as a player meets them: each one its own layout, every tour rising in
// difficulty, cows that never decide a well-played run, and names written one way (the tile set the
// later tours wear is checked on the shipped maps); and the shipped files are what these sources give.
#include "LevelBuilder.h"
#include "LevelMeasures.h"
#include "LevelSource.h"
#include "ShippedTourFiles.h"
#include "Support/LogCapture.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <vector>

namespace {
class MapDesign : public ::testing::Test {
protected:
    void SetUp() override {
        std::string error;
        ASSERT_TRUE(LevelSource::ReadTours(std::string(QM_SOURCE_DIR) + "/tools/levels/tours", tours, error))
            << error;
        ASSERT_EQ(tours.size(), 4u);
    }
    LogCapture quiet;
    std::vector<LevelTour> tours;
};

LevelMap Grid(int size, const std::vector<std::string>& rows) {
    LevelMap map;
    map.size = size;
    map.rows = rows;
    return map;
}
} // namespace

TEST_F(MapDesign, OverlapCountsKindsOfBlockWhereEitherMapHasOne) {
    const LevelMap a = Grid(10, {"S........F", "##########"});
    // Other tiles and decorations on the same layout are the same map.
    const LevelMap b = Grid(10, {"S,,,...h.F", "BBBBBmmmmm"});
    EXPECT_DOUBLE_EQ(LevelMeasures::Overlap(a, b), 1.0);
    // Fire where the other has floor is not the same; empty cells of both do not count.
    const LevelMap c = Grid(10, {"S........F", "#####*****"});
    EXPECT_DOUBLE_EQ(LevelMeasures::Overlap(a, c), 7.0 / 12.0);
    EXPECT_DOUBLE_EQ(LevelMeasures::Overlap(a, Grid(20, {"S........F"})), 0.0);
}

TEST_F(MapDesign, NoTwoMapsOfASizeShareMoreThanTwoFifthsOfTheirCells) {
    std::vector<const LevelMap*> maps;
    for (const LevelTour& tour : tours) {
        for (const LevelMap& map : tour.maps) {
            maps.push_back(&map);
        }
    }
    for (size_t i = 0; i < maps.size(); ++i) {
        for (size_t j = i + 1; j < maps.size(); ++j) {
            EXPECT_LE(LevelMeasures::Overlap(*maps[i], *maps[j]), 0.4)
                << maps[i]->name << " and " << maps[j]->name;
        }
    }
}

TEST_F(MapDesign, EveryTourRisesInDifficulty) {
    for (const LevelTour& tour : tours) {
        double previous = 0.0;
        for (size_t m = 0; m < tour.maps.size(); ++m) {
            const LevelDifficulty difficulty = LevelMeasures::Difficulty(tour, m);
            SCOPED_TRACE(tour.maps[m].name);
            EXPECT_TRUE(difficulty.finished);
            EXPECT_GE(difficulty.Score(), previous) << "comes after an easier map in " << tour.name;
            previous = difficulty.Score();
        }
    }
}

TEST_F(MapDesign, CowsNeverDecideAReferenceRun) {
    int cowMaps = 0;
    for (const LevelTour& tour : tours) {
        for (size_t m = 0; m < tour.maps.size(); ++m) {
            if (!LevelMeasures::HasCows(tour.maps[m])) {
                continue;
            }
            ++cowMaps;
            EXPECT_EQ(LevelMeasures::SeedsSurvived(tour, m, 6), (std::vector<uint32_t>{1, 2, 3, 4, 5, 6}))
                << tour.maps[m].name;
        }
    }
    EXPECT_GE(cowMaps, 8);
}

TEST_F(MapDesign, NamesCapitaliseEveryWord) {
    const auto titled = [](const std::string& name) {
        for (size_t i = 0; i < name.size(); ++i) {
            const bool wordStart = i == 0 || name[i - 1] == ' ';
            if (wordStart && !std::isupper(static_cast<unsigned char>(name[i]))) {
                return false;
            }
        }
        return !name.empty();
    };
    for (const LevelTour& tour : tours) {
        EXPECT_TRUE(titled(tour.name)) << tour.name;
        for (const LevelMap& map : tour.maps) {
            EXPECT_TRUE(titled(map.name)) << map.name;
        }
    }
}

TEST_F(MapDesign, TheShippedFilesAreWhatTheSourcesGive) {
    TempUserData scratch;
    const std::string out = scratch.path + "/Maps";
    std::vector<std::string> missing;
    std::string error;
    ASSERT_TRUE(LevelBuilder::Write(tours, out, missing, error)) << error;
    EXPECT_TRUE(missing.empty());
    const auto made = shipped_tours::Snapshot(out);
    const auto shipped = shipped_tours::Snapshot(shipped_tours::kShipped);
    for (const auto& [file, bytes] : shipped) {
        EXPECT_TRUE(made.count(file) && made.at(file) == bytes)
            << file << " differs from its source: run gen-levels";
    }
    EXPECT_EQ(made.size(), shipped.size()) << "the sources make files that are not shipped: run gen-levels";
}
