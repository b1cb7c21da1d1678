#include "Coordinator/QmDataFolder.h"

#include "Support/TempUserData.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;

// (The program started from a folder without the data finds it above itself: MainTest.)
TEST(QmDataFolderTest, FindsTheDataBesideOrAboveTheProgramAndSaysWhenItIsMissing) {
    TempUserData folders;
    const std::string root = folders.path + "/";
    for (const char* folder :
         {"game/Assets", "game/build", "elsewhere", "bare/bin", "usr/bin", "usr/share/quillmaze/Assets"}) {
        fs::create_directories(root + folder);
    }
    // The data folder for a working folder and a program under the root, named from the root.
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

    // This test program is not beside any data: nothing changes and the data is missing.
    const fs::path before = fs::current_path();
    fs::current_path(root + "elsewhere");
    EXPECT_FALSE(QmDataFolder::Enter("quillmaze"));
    EXPECT_EQ(fs::current_path(), fs::path(root + "elsewhere"));
    fs::current_path(before);
}
