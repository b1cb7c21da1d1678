#include "Coordinator/QmDataFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {
class Folders {
public:
    Folders() {
        std::string pattern = (fs::temp_directory_path() / "quillmaze-data-XXXXXX").string();
        root = mkdtemp(pattern.data());
        fs::create_directories(root / "game" / "Assets");
        fs::create_directories(root / "game" / "build");
        fs::create_directories(root / "elsewhere");
        fs::create_directories(root / "bare" / "bin");
        fs::create_directories(root / "usr" / "bin");
        fs::create_directories(root / "usr" / "share" / "quillmaze" / "Assets");
    }
    ~Folders() {
        std::error_code ignored;
        fs::remove_all(root, ignored);
    }
    fs::path root;
};
} // namespace

TEST(QmDataFolderTest, FindsTheDataBesideOrAboveTheProgram) {
    Folders folders;
    const std::string game = (folders.root / "game").string();
    const std::string inBuild = (folders.root / "game" / "build" / "quillmaze").string();
    const std::string beside = (folders.root / "game" / "quillmaze").string();

    // The working folder has the data: stay.
    EXPECT_EQ(QmDataFolder::Locate(game, inBuild), "");
    // Started from elsewhere: the program's folder, then its parent.
    EXPECT_EQ(QmDataFolder::Locate((folders.root / "elsewhere").string(), beside), game);
    EXPECT_EQ(QmDataFolder::Locate((folders.root / "game" / "build").string(), inBuild), game);
    // Installed: the data under share/quillmaze beside the program's bin folder.
    EXPECT_EQ(QmDataFolder::Locate((folders.root / "elsewhere").string(),
                                   (folders.root / "usr" / "bin" / "quillmaze").string()),
              (folders.root / "usr" / "share" / "quillmaze").string());
    // Nowhere to be found: stay where we are.
    EXPECT_EQ(QmDataFolder::Locate((folders.root / "elsewhere").string(),
                                   (folders.root / "bare" / "bin" / "quillmaze").string()),
              "");
    EXPECT_EQ(QmDataFolder::Locate((folders.root / "elsewhere").string(), ""), "");
}

TEST(QmDataFolderTest, EnterChangesTheWorkingFolder) {
    Folders folders;
    const fs::path before = fs::current_path();
    fs::current_path(folders.root / "elsewhere");
    // This test program is not beside any data, so nothing changes and the data is missing.
    EXPECT_FALSE(QmDataFolder::Enter("quillmaze"));
    EXPECT_EQ(fs::current_path(), folders.root / "elsewhere");
    fs::current_path(folders.root / "game");
    EXPECT_TRUE(QmDataFolder::Enter("quillmaze"));
    EXPECT_EQ(fs::current_path(), folders.root / "game");
    fs::current_path(before);
    EXPECT_FALSE(QmDataFolder::ExecutablePath("x").empty());
}
