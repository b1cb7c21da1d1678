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
        for (const char* folder : {"game/Assets", "game/build", "elsewhere", "bare/bin", "usr/bin",
                                   "usr/share/quillmaze/Assets"}) {
            fs::create_directories(root / folder);
        }
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
    // The data folder for a working folder and a program under the root, named from the root.
    const std::string root = folders.root.string() + "/";
    const auto locate = [&](const std::string& working, const std::string& program) {
        const std::string found = QmDataFolder::Locate(root + working, program.empty() ? "" : root + program);
        return found.starts_with(root) ? found.substr(root.size()) : found;
    };
    EXPECT_EQ(locate("game", "game/build/quillmaze"), "") << "the working folder has the data: stay";
    // Started from elsewhere: the program's folder, then its parent.
    EXPECT_EQ(locate("elsewhere", "game/quillmaze"), "game");
    EXPECT_EQ(locate("game/build", "game/build/quillmaze"), "game");
    // Installed: the data under share/quillmaze beside the program's bin folder.
    EXPECT_EQ(locate("elsewhere", "usr/bin/quillmaze"), "usr/share/quillmaze");
    // Nowhere to be found: stay where we are.
    EXPECT_EQ(locate("elsewhere", "bare/bin/quillmaze"), "");
    EXPECT_EQ(locate("elsewhere", ""), "");
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
