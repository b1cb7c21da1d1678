#include "Environment/CoreEnvironmentManager/QmFileNames.h"

#include <gtest/gtest.h>

#include <vector>

TEST(QmFileNamesTest, CamelCasesTypedNames) {
    EXPECT_EQ(QmFileNames::CamelCase("my cool map"), "MyCoolMap");
    EXPECT_EQ(QmFileNames::CamelCase("LEVEL ONE"), "LevelOne");
    EXPECT_EQ(QmFileNames::CamelCase("  two   blanks "), "TwoBlanks");
    EXPECT_EQ(QmFileNames::CamelCase("x2 y-3"), "X2Y-3");
    EXPECT_EQ(QmFileNames::CamelCase("\xC3\x89t\xC3\xA9"), "\xC3\x89t\xC3\xA9") << "non-ASCII bytes are kept";
}

TEST(QmFileNamesTest, HostileNamesStayInsideTheirFolder) {
    EXPECT_EQ(QmFileNames::CamelCase("../../etc/passwd"), "....EtcPasswd");
    EXPECT_EQ(QmFileNames::CamelCase(".."), "__");
    EXPECT_EQ(QmFileNames::CamelCase("."), "_");
    EXPECT_EQ(QmFileNames::CamelCase(" / "), "_");
    EXPECT_EQ(QmFileNames::CamelCase("a\\b"), "AB");
    EXPECT_EQ(QmFileNames::CamelCase(std::string("nul\0byte", 8)), "NulByte");
    EXPECT_EQ(QmFileNames::CamelCase("tab\there\nline\x7f"), "TabHereLine");
    EXPECT_EQ(QmFileNames::CamelCase("a,b"), "AB") << "commas separate a tour's map list";
    EXPECT_EQ(QmFileNames::CamelCase(std::string(1000, 'a')).size(), QmFileNames::kMaxBaseLength);
    for (const std::string& name :
         std::vector<std::string>{"../x", "..", ".", "/", "a/b", "\x01", std::string(300, '/')}) {
        EXPECT_TRUE(QmFileNames::IsSafeName(QmFileNames::CamelCase(name))) << name;
    }
}

TEST(QmFileNamesTest, RecognisesSafeNamesAndCacheEntries) {
    EXPECT_TRUE(QmFileNames::IsSafeName("Level_2.map"));
    EXPECT_TRUE(QmFileNames::IsSafeName("...map"));
    for (const std::string& name :
         std::vector<std::string>{"", ".", "..", "../Level.map", "a\\b", {"a\0b", 3}, "a\rb"}) {
        EXPECT_FALSE(QmFileNames::IsSafeName(name)) << name;
    }

    EXPECT_TRUE(QmFileNames::IsSafeCacheEntry("42/Level.map"));
    for (const char* entry : {"Level.map", "../Level.map", "42/../../x.map"}) {
        EXPECT_FALSE(QmFileNames::IsSafeCacheEntry(entry)) << entry;
    }
}

TEST(QmFileNamesTest, ScoreFilesAndExtensions) {
    EXPECT_EQ(QmFileNames::ScoreFileOf("Level_1.map"), "Level_1.dat");
    EXPECT_EQ(QmFileNames::ScoreFileOf("ab"), ".dat");
    EXPECT_EQ(QmFileNames::Extension("a.b.map"), ".map");
    EXPECT_EQ(QmFileNames::Extension("tour"), "");
    EXPECT_EQ(QmFileNames::OneLine("a\r\nb\n"), "ab");
}
