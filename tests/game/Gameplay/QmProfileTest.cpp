// profile.dat: the character number, one plain line, and a failed save that keeps the old one. (A
// missing file and a number read back: the character page's test.)
#include "Gameplay/QmProfile.h"

#include "Platform/VeFiles.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

TEST(QmProfileTest, TheCharacterNumberIsOnePlainNumberDamagedFilesReadZeroAndAFailedSaveKeepsTheOld) {
    TempUserData data;
    ASSERT_TRUE(QmProfile::SaveProfile(3));
    std::string bytes;
    ASSERT_TRUE(ReadFileBytes(data.GameFolder() + "/profile.dat", bytes));
    EXPECT_EQ(bytes, "3") << "no newline";
    ASSERT_TRUE(WriteFileAtomic(data.GameFolder() + "/profile.dat", "12 trailing\r\nsecond line"));
    EXPECT_EQ(QmProfile::LoadProfile(), 12);
    ASSERT_TRUE(WriteFileAtomic(data.GameFolder() + "/profile.dat", "not a number"));
    EXPECT_EQ(QmProfile::LoadProfile(), 0);
    ASSERT_TRUE(WriteFileAtomic(data.GameFolder() + "/profile.dat", "-7"));
    EXPECT_EQ(QmProfile::LoadProfile(), 0) << "a negative number is no character";
    ASSERT_TRUE(WriteFileAtomic(data.GameFolder() + "/profile.dat", std::string("\0\xff\x01", 3)));
    EXPECT_EQ(QmProfile::LoadProfile(), 0);
    ASSERT_TRUE(QmProfile::SaveProfile(4));
    // A folder in the way of the temporary file: the save fails and the old profile stays.
    CreateFolder(data.GameFolder() + "/profile.dat.tmp");
    EXPECT_FALSE(QmProfile::SaveProfile(1));
    EXPECT_EQ(QmProfile::LoadProfile(), 4);
}
