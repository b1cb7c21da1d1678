#include "Platform/VeFiles.h"

#include "Support/ScopedEnv.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

TEST(VeFilesTest, UserDataFolderFollowsOverrideAndXdg) {
    TempUserData data;
    EXPECT_EQ(GetUserDataFolder(), data.path);
    EXPECT_EQ(GetGameFolder(), data.path + "/Quillmaze");

    {
        ScopedEnv slashes("QUILLMAZE_USER_DATA", (data.path + "//").c_str());
        EXPECT_EQ(GetUserDataFolder(), data.path) << "trailing separators are dropped";
    }
    ScopedEnv noOverride("QUILLMAZE_USER_DATA", nullptr);
    ScopedEnv home("HOME", "/home/player");
    {
        ScopedEnv xdg("XDG_DATA_HOME", "/somewhere/data");
        EXPECT_EQ(GetUserDataFolder(), "/somewhere/data");
    }
    ScopedEnv noXdg("XDG_DATA_HOME", nullptr);
    EXPECT_EQ(GetUserDataFolder(), "/home/player/.local/share");
}

TEST(VeFilesTest, AtomicWriteReplacesWholeFileAndKeepsOldOnFailure) {
    TempUserData data;
    const std::string file = data.path + "/map.txt";
    ASSERT_TRUE(WriteFileAtomic(file, "first"));
    ASSERT_TRUE(WriteFileAtomic(file, "second, longer"));
    std::string bytes;
    ASSERT_TRUE(ReadFileBytes(file, bytes));
    EXPECT_EQ(bytes, "second, longer");
    EXPECT_FALSE(FileExists(file + ".tmp"));

    // A folder where the temporary file would go makes the write fail; the old file stays whole.
    std::filesystem::create_directory(file + ".tmp");
    EXPECT_FALSE(WriteFileAtomic(file, "third"));
    ASSERT_TRUE(ReadFileBytes(file, bytes));
    EXPECT_EQ(bytes, "second, longer");

    EXPECT_FALSE(WriteFileAtomic(data.path + "/missing/folder/file", "x"));
}

TEST(VeFilesTest, LinesAreWrittenCrlfAndReadFromEitherEnding) {
    EXPECT_EQ(SplitLines("a\r\nb\nc"), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(SplitLines("a\n\nb\r\n"), (std::vector<std::string>{"a", "", "b"}));
    EXPECT_TRUE(SplitLines("").empty());
    EXPECT_EQ(SplitLines("\r\n"), (std::vector<std::string>{""}));
    EXPECT_EQ(JoinLinesCrlf({"x", "", "y"}), "x\r\n\r\ny\r\n");

    TempUserData data;
    const std::string file = data.path + "/lines.txt";
    ASSERT_TRUE(WriteTextLinesAtomic(file, {"one", "two"}));
    std::vector<std::string> lines;
    ASSERT_TRUE(ReadTextLines(file, lines));
    EXPECT_EQ(lines, (std::vector<std::string>{"one", "two"}));
    EXPECT_FALSE(ReadTextLines(data.path + "/none", lines));
}

TEST(VeFilesTest, FoldersAreCreatedListedRenamedAndDeleted) {
    TempUserData data;
    const std::string root = data.GameFolder();
    ASSERT_TRUE(CreateFolder(root + "/Maps/Tour"));
    EXPECT_TRUE(CreateFolder(root + "/Maps/Tour")) << "an existing folder is fine";
    ASSERT_TRUE(WriteFileAtomic(root + "/Maps/b.map", "b"));
    ASSERT_TRUE(WriteFileAtomic(root + "/Maps/a.map", "a"));
    EXPECT_EQ(ListFolders(root + "/Maps"), (std::vector<std::string>{"Tour"}));
    EXPECT_EQ(ListFiles(root + "/Maps"), (std::vector<std::string>{"a.map", "b.map"}));
    EXPECT_TRUE(ListFiles(root + "/none").empty());

    EXPECT_FALSE(RenamePath(root + "/Maps/a.map", root + "/Maps/b.map")) << "never overwrites another file";
    EXPECT_TRUE(RenamePath(root + "/Maps/a.map", root + "/Maps/c.map"));
    EXPECT_TRUE(FileExists(root + "/Maps/c.map"));
    EXPECT_TRUE(CopyFileTo(root + "/Maps/c.map", root + "/Maps/Tour/c.map"));
    EXPECT_TRUE(RemoveFile(root + "/Maps/c.map"));
    EXPECT_FALSE(RemoveFile(root + "/Maps/c.map"));

    EXPECT_TRUE(IsDirectory(root + "/Maps"));
    EXPECT_FALSE(IsDirectory(root + "/Maps/b.map"));
    DeleteFolder(root + "/Maps");
    EXPECT_FALSE(IsDirectory(root + "/Maps"));
    DeleteFolder(root + "/Maps"); // a missing folder is no error
}
