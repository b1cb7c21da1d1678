#include "Environment/CoreEnvironmentManager/QmTextCipher.h"

#include "Platform/VeRandom.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
std::string Bytes(std::initializer_list<int> values) {
    std::string text;
    for (int v : values) {
        text.push_back(static_cast<char>(v));
    }
    return text;
}

} // namespace

TEST(QmTextCipherTest, AbcGoesThroughTheThreeStages) {
    EXPECT_EQ(QmTextCipher::EncodeText(2, "abc"), Bytes({98, 96, 102}));

    SeedRand(VeRandomStream::Filler, 7);
    const std::string stage2 = QmTextCipher::EncodeText(3, "abc");
    ASSERT_EQ(stage2.size(), 4u);
    const char filler = stage2[1];
    EXPECT_GE(static_cast<unsigned char>(filler), 32);
    EXPECT_LE(static_cast<unsigned char>(filler), 126);
    EXPECT_EQ(stage2, Bytes({98, static_cast<unsigned char>(filler), 96, 102}));

    SeedRand(VeRandomStream::Filler, 7);
    int length = 0;
    const std::string full = QmTextCipher::EncodeText(4, "abc", &length);
    EXPECT_EQ(length, 4);
    EXPECT_EQ(full, Bytes({static_cast<unsigned char>(filler), 98, 102, 96}));

    // Whatever the filler, the four bytes decipher to "abc".
    for (int f = 32; f <= 126; ++f) {
        EXPECT_EQ(QmTextCipher::DecodeText(4, Bytes({f, 98, 102, 96})), "abc");
    }
    EXPECT_EQ(EncodeText(4, ""), "");
    EXPECT_EQ(DecodeText(4, ""), "");
}

TEST(QmTextCipherTest, StepRunsUpToThirtyOneAndDownToZero) {
    // Stage 1 on a run of one byte value shows the step: byte i is shifted by +-step(i).
    const std::string plain(70, 'P');
    const std::string shifted = QmTextCipher::EncodeText(2, plain);
    auto step = [&](size_t i) {
        const int delta = static_cast<unsigned char>(shifted[i]) - 'P';
        return i % 2 == 0 ? delta : -delta;
    };
    std::vector<int> steps; // at bytes 0, 29, 30 (the 31st), 31, 60, 61 (the 62nd), 62 and 63
    for (size_t i : {0, 29, 30, 31, 60, 61, 62, 63}) {
        steps.push_back(step(i));
    }
    EXPECT_EQ(steps, (std::vector<int>{1, 30, 31, 30, 1, 0, 1, 2}));
}

TEST(QmTextCipherTest, BlankWithLargeNegativeStepWrapsHighAndBack) {
    // Byte 1 has sign -1 and step 2; byte 29 has sign -1 and step 30.
    std::string plain(30, 'a');
    plain[29] = ' ';
    const std::string shifted = QmTextCipher::EncodeText(2, plain);
    EXPECT_GT(static_cast<unsigned char>(shifted[29]), 223);
    EXPECT_EQ(QmTextCipher::DecodeText(2, shifted), plain);
}
