#include "Environment/CoreEnvironmentManager/QmMapFile.h"

#include "Environment/CoreEnvironmentManager/QmCipherFile.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {
using Column = std::vector<BlockId>;

QmMapContents ParseDataFile(const std::string& name) {
    std::vector<std::string> lines;
    EXPECT_TRUE(
        QmCipherFile::ReadLines(std::string(QM_SOURCE_DIR) + "/tests/data/environment/" + name, lines));
    return QmMapFile::Parse(lines);
}

// Everything but the cells in one line.
std::string Describe(const QmMapContents& map) {
    std::ostringstream out;
    out << map.blockSize << " px, name " << (map.nameRead ? "'" + map.name + "'" : "unread") << ", uid "
        << map.uid << (map.locked ? ", locked" : "") << (map.editable ? ", editable" : "") << ", tour "
        << (map.tourUidRead ? "'" + map.tourUid + "'" : "unread");
    return out.str();
}

// The first rows of a column.
Column Cells(const QmMapContents& map, int x, int rows = 20) {
    return Column(map.blocks.begin() + x * 20, map.blocks.begin() + x * 20 + rows);
}
} // namespace

TEST(QmMapFileTest, ReadsAHandWrittenPlainMap) {
    const QmMapContents map = ParseDataFile("HandWritten.map");
    EXPECT_EQ(Describe(map), "64 px, name 'Hand Made', uid 12345, editable, tour ''");
    EXPECT_EQ(Cells(map, 0, 10), (Column{0, 0, 0, 0, 0, 0, 0, 0, 0, 1}));
    EXPECT_EQ(Cells(map, 1, 10), (Column{0, 0, 0, 0, 0, 0, 0, 0, Block::Start, 2}));
    EXPECT_EQ(Cells(map, 4, 10), (Column{0, 0, 0, 0, 0, 0, 0, 0, 253, 5}));
    EXPECT_EQ(map.blocks[8 * 20 + 5], Block::Finish);
    EXPECT_EQ(map.blocks[15 * 20 + 15], 150) << "cells outside the playing area are kept";
    EXPECT_EQ(map.startCells, (std::vector<std::pair<int, int>>{{1, 8}}));
}

TEST(QmMapFileTest, SurvivesShortRowsWordsOverflowAndExtraColumns) {
    const QmMapContents map = ParseDataFile("Faulty.map");
    // An i line other than 32 keeps 64 pixels; names are cut to 15 characters.
    EXPECT_EQ(Describe(map), "64 px, name 'A Name Much Lon', uid 1, locked, tour unread");
    EXPECT_EQ(Cells(map, 0, 4), (Column{255, 1, 2, 0})) << "a short column leaves the rest Blank";
    // "x,7,,  4,-3,+5,9abc,99999999999,3": the last value has no comma.
    EXPECT_EQ(Cells(map, 1, 9), (Column{0, 7, 0, 4, -3, 5, 9, 0, 0}));
    EXPECT_EQ(Cells(map, 2, 20),
              (Column{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20}));
    EXPECT_EQ(Cells(map, 3, 1), Column{0}) << "the 21st value does not spill into the next column";
    EXPECT_EQ(Cells(map, 19, 1), Column{0}) << "columns past the 20th are ignored";
}

TEST(QmMapFileTest, ReadsValuesLikeTheIntegerParser) {
    auto read = [](const std::string& text) {
        return QmMapFile::ReadValue(text.data(), text.data() + text.size());
    };
    // Signs, trailing letters, blanks and empty values are read from Faulty.map above.
    EXPECT_EQ(read("  \t12"), 12);
    EXPECT_EQ(read("ab12"), 0);
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
    EXPECT_EQ(std::vector<std::string>(lines.begin(), lines.begin() + 6),
              (std::vector<std::string>{"i32", "nRound Trip", "u17", "l1", "e0", "t99"}));
    EXPECT_EQ(lines[6].substr(0, 12), "0,37,74,111,");

    const QmMapContents read = QmMapFile::Parse(lines);
    EXPECT_EQ(Describe(read), "32 px, name 'Round Trip', uid 17, locked, tour '99'");
    EXPECT_EQ(read.blocks, map.blocks);

    map.name = "line\r\nbreak";
    EXPECT_EQ(QmMapFile::Format(map)[1], "nlinebreak") << "a field never breaks its line";
}

TEST(QmMapFileTest, NamesAreNotCutInsideACharacter) {
    // 14 ASCII bytes, then a two-byte character that would straddle the limit.
    EXPECT_EQ(QmMapFile::Parse({"nAbcdefghijklm\xC3\xA9xyz"}).name, "Abcdefghijklm\xC3\xA9");
    EXPECT_EQ(QmMapFile::Parse({"nAbcdefghijklmn\xC3\xA9"}).name, "Abcdefghijklmn");
}
