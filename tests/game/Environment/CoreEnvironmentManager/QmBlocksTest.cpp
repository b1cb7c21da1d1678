#include "Environment/CoreEnvironmentManager/QmBlocks.h"

#include <gtest/gtest.h>

TEST(QmBlocksTest, PaletteSlotsPlaceTheirIdsAndTheIdRangesGiveTheNames) {
    const int d = 12; // Blank, five colours and six tileset rows
    EXPECT_EQ(QmBlocks::PaletteSlotToId(0, d), Block::Blank);
    EXPECT_EQ(QmBlocks::PaletteSlotToId(1, d), Block::Start);
    // Slots 2 to 10 hold the other specials from Finish (254) down to Disco Confusion (246).
    EXPECT_EQ(QmBlocks::PaletteSlotToId(2, d), Block::Finish);
    EXPECT_EQ(QmBlocks::PaletteSlotToId(10, d), Block::DiscoConfusion);
    for (int slot = 11; slot <= 19; ++slot) {
        EXPECT_EQ(QmBlocks::PaletteSlotToId(slot, d), Block::Blank) << "reserved slot " << slot;
    }
    EXPECT_EQ(QmBlocks::PaletteSlotToId(20, d), 1);
    EXPECT_EQ(QmBlocks::PaletteSlotToId(d + 18, d), d - 1) << "the last default block";
    EXPECT_EQ(QmBlocks::PaletteSlotToId(d + 19, d), Block::FirstDecoration);

    EXPECT_EQ(QmBlocks::PaletteSlotTooltip(1, d), "Start");
    EXPECT_EQ(QmBlocks::PaletteSlotTooltip(10, d), "Disco Confusion");
    EXPECT_EQ(QmBlocks::PaletteSlotTooltip(15, d), "Blank");
    EXPECT_EQ(QmBlocks::PaletteSlotTooltip(25, d), "Default Block");
    EXPECT_EQ(QmBlocks::PaletteSlotTooltip(40, d), "Decoration");
    EXPECT_EQ(QmBlocks::Name(149), "Default Block");
    EXPECT_EQ(QmBlocks::Name(245), "Decoration");
    EXPECT_EQ(QmBlocks::Name(-1), "Blank");
}
