#include "Environment/CoreEnvironmentManager/QmMapFile.h"

#include "Environment/CoreEnvironmentManager/QmCipherFile.h"

#include <gtest/gtest.h>

#include <string>

namespace {
std::vector<std::string> ReadDataFile(const std::string& name) {
    std::vector<std::string> lines;
    EXPECT_TRUE(
        QmCipherFile::ReadLines(std::string(QM_SOURCE_DIR) + "/tests/data/environment/" + name, lines));
    return lines;
}

BlockId Cell(const QmMapContents& map, int x, int y) {
    return map.blocks[x * 20 + y];
}
} // namespace

TEST(QmMapFileTest, ReadsAHandWrittenPlainMap) {
    const QmMapContents map = QmMapFile::Parse(ReadDataFile("HandWritten.map"));
    EXPECT_EQ(map.blockSize, 64);
    EXPECT_TRUE(map.nameRead);
    EXPECT_EQ(map.name, "Hand Made");
    EXPECT_EQ(map.uid, "12345");
    EXPECT_FALSE(map.locked);
    EXPECT_TRUE(map.editable);
    EXPECT_TRUE(map.tourUidRead);
    EXPECT_EQ(map.tourUid, "");
    EXPECT_EQ(Cell(map, 1, 8), Block::Start);
    EXPECT_EQ(Cell(map, 8, 5), Block::Finish);
    EXPECT_EQ(Cell(map, 0, 9), 1);
    EXPECT_EQ(Cell(map, 4, 9), 5);
    EXPECT_EQ(Cell(map, 15, 15), 150) << "cells outside the playing area are kept";
    EXPECT_EQ(map.startCells, (std::vector<std::pair<int, int>>{{1, 8}}));
}

TEST(QmMapFileTest, SurvivesShortRowsWordsOverflowAndExtraColumns) {
    const QmMapContents map = QmMapFile::Parse(ReadDataFile("Faulty.map"));
    EXPECT_EQ(map.blockSize, 64) << "an i line other than 32 keeps 64 pixels";
    EXPECT_EQ(map.name, "A Name Much Lon") << "names are cut to 15 characters";
    EXPECT_TRUE(map.locked);
    EXPECT_FALSE(map.editable);
    EXPECT_FALSE(map.tourUidRead);

    // Column 0: "255,1,2," fills three cells; the rest stay Blank.
    EXPECT_EQ(Cell(map, 0, 0), 255);
    EXPECT_EQ(Cell(map, 0, 2), 2);
    EXPECT_EQ(Cell(map, 0, 3), 0);
    // Column 1: "x,7,,  4,-3,+5,9abc,99999999999,3" (the last value has no comma).
    const BlockId column1[] = {0, 7, 0, 4, -3, 5, 9, 0, 0};
    for (int y = 0; y < 9; ++y) {
        EXPECT_EQ(Cell(map, 1, y), column1[y]) << "row " << y;
    }
    // Column 2: 21 values, the 21st ignored.
    EXPECT_EQ(Cell(map, 2, 0), 1);
    EXPECT_EQ(Cell(map, 2, 19), 20);
    EXPECT_EQ(Cell(map, 3, 0), 0) << "the 21st value does not spill into the next column";
    // Columns past the 20th are ignored.
    EXPECT_EQ(Cell(map, 19, 0), 0);
}

TEST(QmMapFileTest, ReadsValuesLikeTheIntegerParser) {
    auto read = [](const std::string& text) {
        return QmMapFile::ReadValue(text.data(), text.data() + text.size());
    };
    EXPECT_EQ(read("254"), 254);
    EXPECT_EQ(read("  \t12"), 12);
    EXPECT_EQ(read("-7"), -7);
    EXPECT_EQ(read("+7"), 7);
    EXPECT_EQ(read("12ab"), 12);
    EXPECT_EQ(read("ab12"), 0);
    EXPECT_EQ(read(""), 0);
    EXPECT_EQ(read("-"), 0);
    EXPECT_EQ(read("2147483647"), 2147483647);
    EXPECT_EQ(read("-2147483648"), -2147483647 - 1);
    EXPECT_EQ(read("2147483648"), 0) << "out of the 32-bit range reads as Blank";
    EXPECT_EQ(read(std::string(5000, '9')), 0);
}

TEST(QmMapFileTest, FormatsAndReadsBackEveryField) {
    QmMapContents map;
    map.blockSize = 32;
    map.name = "Round Trip";
    map.uid = std::to_string(17); // the uids as numbers: literals here trip a false GCC 12 warning at -O3
    map.locked = true;
    map.editable = false;
    map.tourUid = std::to_string(99);
    for (int i = 0; i < 400; ++i) {
        map.blocks[i] = (i * 37) % 256;
    }
    const std::vector<std::string> lines = QmMapFile::Format(map);
    ASSERT_EQ(lines.size(), 26u);
    EXPECT_EQ(lines[0], "i32");
    EXPECT_EQ(lines[1], "nRound Trip");
    EXPECT_EQ(lines[3], "l1");
    EXPECT_EQ(lines[4], "e0");
    EXPECT_EQ(lines[5], "t99");
    EXPECT_EQ(lines[6].substr(0, 12), "0,37,74,111,");

    const QmMapContents read = QmMapFile::Parse(lines);
    EXPECT_EQ(read.blockSize, 32);
    EXPECT_EQ(read.name, map.name);
    EXPECT_EQ(read.uid, map.uid);
    EXPECT_EQ(read.locked, map.locked);
    EXPECT_EQ(read.editable, map.editable);
    EXPECT_EQ(read.tourUid, map.tourUid);
    EXPECT_EQ(read.blocks, map.blocks);

    map.name = "line\r\nbreak";
    EXPECT_EQ(QmMapFile::Format(map)[1], "nlinebreak") << "a field never breaks its line";
}

TEST(QmMapFileTest, NamesAreNotCutInsideACharacter) {
    // 14 ASCII bytes, then a two-byte character that would straddle the limit.
    const QmMapContents map = QmMapFile::Parse({"nAbcdefghijklm\xC3\xA9xyz"});
    EXPECT_EQ(map.name, "Abcdefghijklm\xC3\xA9");
    const QmMapContents cut = QmMapFile::Parse({"nAbcdefghijklmn\xC3\xA9"});
    EXPECT_EQ(cut.name, "Abcdefghijklmn");
}
