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
    EXPECT_EQ(QmCellCache::Index(10, 3, 10, 20), 21 * 22 + 4)
        << "column 10 of the ring uses 21 on a large map";
    EXPECT_EQ(QmCellCache::Index(10, 3, 10, 10), 11 * 22 + 4);
    EXPECT_EQ(QmCellCache::Index(-2, 0, 10, 10), -1);
}
