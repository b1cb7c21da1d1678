#include "Environment/CoreEnvironmentManager/QmTourFile.h"

#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Platform/VeFiles.h"

#include <gtest/gtest.h>

using Lines = std::vector<std::string>;

TEST(QmTourFileTest, ReadsOverTheDefaults) {
    TourRecord record;
    record.name = "stale";
    Lines levels = {"stale.map"};
    QmTourFile::ParseTour({}, record, levels);
    EXPECT_FALSE(record.official);
    EXPECT_EQ(record.name, "");
    EXPECT_FALSE(record.locked);
    EXPECT_TRUE(record.editable);
    EXPECT_TRUE(record.collectsFiles);
    EXPECT_EQ(record.uid, "");
    EXPECT_TRUE(levels.empty());

    QmTourFile::ParseTour(
        {"o1", "nForest Run", "l1", "e0", "a0", "u123456", "First.map,Second.map,Third.map"}, record, levels);
    EXPECT_TRUE(record.official);
    EXPECT_EQ(record.name, "Forest Run");
    EXPECT_TRUE(record.locked);
    EXPECT_FALSE(record.editable);
    EXPECT_FALSE(record.collectsFiles);
    EXPECT_EQ(record.uid, "123456");
    EXPECT_EQ(levels, (Lines{"First.map", "Second.map", "Third.map"}));

    QmTourFile::ParseTour({"lyes", "e", "a2"}, record, levels);
    EXPECT_FALSE(record.locked) << "a flag is set only by exactly \"1\"";
    EXPECT_FALSE(record.editable);
    EXPECT_FALSE(record.collectsFiles);
}

TEST(QmTourFileTest, WritesTheFieldsInOrderAndReadsThemBack) {
    const TourRecord record{false, "My Tour", false, true, true, "77"};
    const Lines lines = QmTourFile::FormatTour(record, {"A.map", "B.map"});
    EXPECT_EQ(lines, (Lines{"o0", "nMy Tour", "l0", "e1", "a1", "u77", "A.map,B.map"}));
    EXPECT_EQ(QmTourFile::FormatTour(record, {}).back(), "");

    TourRecord back;
    Lines levels;
    QmTourFile::ParseTour(QmCipherFile::DecodeLines(SplitLines(QmCipherFile::EncodeLines(lines, false))),
                          back, levels);
    EXPECT_EQ(back.name, "My Tour");
    EXPECT_EQ(back.uid, "77");
    EXPECT_EQ(levels, (Lines{"A.map", "B.map"}));
}

TEST(QmTourFileTest, DropsNamesThatLeaveTheFolder) {
    TourRecord record;
    Lines levels;
    QmTourFile::ParseTour({"A.map,../../escape.map,,..,B.map,", "C.map"}, record, levels);
    EXPECT_EQ(levels, (Lines{"A.map", "B.map", "C.map"}));

    EXPECT_EQ(QmTourFile::ParseTourList({"Forest", "", "..", "../Elsewhere", "Forest", "Desert", "a\\b"}),
              (Lines{"Forest", "Desert"}));
}
