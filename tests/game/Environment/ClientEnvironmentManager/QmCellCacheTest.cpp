#include "Environment/ClientEnvironmentManager/QmCellCache.h"

#include <gtest/gtest.h>

#include <set>

TEST(QmCellCacheTest, CellsAndTheBorderRingHaveTheirOwnPlaces) {
    std::set<int> used;
    for (int mapSize : {10, 20}) {
        used.clear();
        for (int x = 0; x < mapSize; ++x) {
            for (int y = 0; y < mapSize; ++y) {
                EXPECT_TRUE(used.insert(QmCellCache::Index(x, y, mapSize, mapSize)).second);
            }
        }
        // The ring of the 10 x 10 area: on a large map its column and row 10 must not meet cells 10.
        for (int column = -1; column <= 10; ++column) {
            for (int row = -1; row <= 10; ++row) {
                if (column >= 0 && column <= 9 && row >= 0 && row <= 9) {
                    continue;
                }
                const int index = QmCellCache::Index(column, row, 10, mapSize);
                ASSERT_GE(index, 0);
                EXPECT_TRUE(used.insert(index).second)
                    << "border " << column << "," << row << " on " << mapSize;
            }
        }
    }
    EXPECT_EQ(QmCellCache::Index(-2, 0, 10, 10), -1);
}
