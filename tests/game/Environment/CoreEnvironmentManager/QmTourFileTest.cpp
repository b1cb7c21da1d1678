#include "Environment/CoreEnvironmentManager/QmTourFile.h"

#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Platform/VeFiles.h"

#include <gtest/gtest.h>

using Lines = std::vector<std::string>;

TEST(QmTourFileTest, WritesTheFieldsInOrderAndReadsThemBackOverTheDefaults) {
    const TourRecord record{false, "My Tour", false, true, true, "77"};
    const Lines lines = QmTourFile::FormatTour(record, {"A.map", "B.map"});
    EXPECT_EQ(lines, (Lines{"o0", "nMy Tour", "l0", "e1", "a1", "u77", "A.map,B.map"}));
    EXPECT_EQ(QmTourFile::FormatTour(record, {}).back(), "");
    TourRecord back;
    back.name = "stale";
    Lines levels = {"stale.map"};
    QmTourFile::ParseTour(QmCipherFile::DecodeLines(SplitLines(QmCipherFile::EncodeLines(lines, false))),
                          back, levels);
    EXPECT_EQ(QmTourFile::FormatTour(back, levels), lines);

    QmTourFile::ParseTour({}, back, levels);
    EXPECT_EQ(QmTourFile::FormatTour(back, levels), (Lines{"o0", "n", "l0", "e1", "a1", "u", ""}))
        << "an empty file";
    QmTourFile::ParseTour({"o1", "nForest Run", "l1", "e0", "a0", "u123456", "First.map,Second.map"}, back,
                          levels);
    EXPECT_EQ(QmTourFile::FormatTour(back, levels),
              (Lines{"o1", "nForest Run", "l1", "e0", "a0", "u123456", "First.map,Second.map"}));
    QmTourFile::ParseTour({"lyes", "e", "a2"}, back, levels);
    EXPECT_EQ(QmTourFile::FormatTour(back, levels), (Lines{"o0", "n", "l0", "e0", "a0", "u", ""}))
        << "a flag is set only by exactly \"1\"";
}

TEST(QmTourFileTest, DropsNamesThatLeaveTheFolder) {
    TourRecord record;
    Lines levels;
    QmTourFile::ParseTour({"A.map,../../escape.map,,..,B.map,", "C.map"}, record, levels);
    EXPECT_EQ(levels, (Lines{"A.map", "B.map", "C.map"}));

    EXPECT_EQ(QmTourFile::ParseTourList({"Forest", "", "..", "../Elsewhere", "Forest", "Desert", "a\\b"}),
              (Lines{"Forest", "Desert"}));
}
