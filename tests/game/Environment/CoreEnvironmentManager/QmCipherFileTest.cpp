#include "Environment/CoreEnvironmentManager/QmCipherFile.h"

#include "Environment/CoreEnvironmentManager/QmTextCipher.h"
#include "Platform/VeFiles.h"
#include "Support/LogCapture.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

using Lines = std::vector<std::string>;

TEST(QmCipherFileTest, WritesMarkerThenEncipheredCrlfLines) {
    const std::string bytes = QmCipherFile::EncodeLines({"i64", "nMy Map"});
    const Lines raw = SplitLines(bytes);
    ASSERT_EQ(raw.size(), 3u);
    EXPECT_EQ(raw[0], QmCipherFile::kMarker);
    EXPECT_EQ(QmTextCipher::DecodeText(4, raw[1]), "i64");
    EXPECT_EQ(QmTextCipher::DecodeText(4, raw[2]), "nMy Map");
    EXPECT_EQ(bytes.substr(0, 28), std::string(QmCipherFile::kMarker) + "\r\n");
    EXPECT_EQ(bytes.substr(bytes.size() - 2), "\r\n");

    const std::string open = QmCipherFile::EncodeLines({"a", "b"}, false);
    EXPECT_NE(open.back(), '\n') << "the last line of tour files has no line end";
    EXPECT_EQ(QmCipherFile::DecodeLines(SplitLines(open)), (Lines{"a", "b"}));
}

TEST(QmCipherFileTest, LinesBeforeTheMarkerArePlain) {
    const Lines raw = {"plain one", "plain two", QmCipherFile::kMarker,
                       QmTextCipher::EncodeText(4, "secret")};
    EXPECT_EQ(QmCipherFile::DecodeLines(raw), (Lines{"plain one", "plain two", "secret"}));
    EXPECT_EQ(QmCipherFile::DecodeLines({"no", "marker"}), (Lines{"no", "marker"}));

    // After the marker, a second marker is recognised in its enciphered form and dropped.
    const Lines twice = {QmCipherFile::kMarker, QmTextCipher::EncodeText(4, QmCipherFile::kMarker),
                         QmTextCipher::EncodeText(4, "x")};
    EXPECT_EQ(QmCipherFile::DecodeLines(twice), (Lines{"x"}));
}

TEST(QmCipherFileTest, ReadsBackWhatItWroteAndReportsWhatItCannotReadOrWrite) {
    TempUserData data;
    const std::string path = data.path + "/tour.dat";
    const Lines plain = {"first", "", "third line"};
    ASSERT_TRUE(QmCipherFile::WriteLines(path, plain));
    Lines read;
    ASSERT_TRUE(QmCipherFile::ReadLines(path, read));
    EXPECT_EQ(read, plain);

    Lines missing = {"stale"};
    EXPECT_FALSE(QmCipherFile::ReadLines(data.path + "/missing", missing));
    EXPECT_TRUE(missing.empty());

    // That the old file stays whole is the atomic write's (VeFilesTest, and the world's interrupted save).
    ASSERT_TRUE(CreateFolder(path + ".tmp")); // the temporary file cannot be made
    LogCapture log;
    EXPECT_FALSE(QmCipherFile::WriteLines(path, {"new"}));
    EXPECT_NE(log.all.find(path), std::string::npos) << "a failed write is logged";
}
