#include "FrontEnd/QmManagementPage.h"
#include "Environment/ArEnvironmentManager.h"
#include "Input/VeKey.h"
#include "MenuPageGame.h"
#include "Platform/VeFiles.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class ManagementPageTest : public MenuPageGame {
protected:
    bool Asking(const QmManagementPage& page) { return Shows(page.TextBoxes(), 131); }

    ArEnvironmentManager& World() { return *coordinator->environment; }
};

TEST_F(ManagementPageTest, ATourIsMadeRenamedAndDeletedOnlyAfterYesButAShippedOneNever) {
    coordinator->SetMenuPage(3);
    QmManagementPage page;
    page.RebuildLists();
    const size_t shipped = World().tours.size();
    for (size_t t = 0; t < shipped; ++t) { // from the first tour down past the last onto Add tour
        Keys(page, {VeKey::Down});
    }
    Keys(page, {VeKey::Return});
    ASSERT_EQ(World().tours.size(), shipped + 1);
    Presses(page, {VeKey::Right, VeKey::Return}); // Rename tour
    for (int i = 0; i < 20; ++i) {
        Keys(page, {VeKey::Backspace});
    }
    Presses(page, {VeKey::H, VeKey::I, VeKey::L, VeKey::L, VeKey::S, VeKey::Return});
    EXPECT_EQ(World().tours.back().name, "hills");
    const std::string folder = GetGameFolder() + "/Maps/" + World().tourFolders.back();
    EXPECT_TRUE(std::filesystem::is_directory(folder)) << folder;

    Presses(page, {VeKey::Right, VeKey::Return}); // Delete tour: asks first
    EXPECT_TRUE(Asking(page));
    Keys(page, {VeKey::Return}); // No
    EXPECT_FALSE(Asking(page));
    EXPECT_EQ(World().tours.size(), shipped + 1);
    Presses(page, {VeKey::Return, VeKey::Escape}); // Escape answers no as well
    EXPECT_EQ(World().tours.size(), shipped + 1);
    EXPECT_EQ(coordinator->CurrentMenuPage(), 3);
    Presses(page, {VeKey::Return, VeKey::Right, VeKey::Return}); // Yes
    EXPECT_EQ(World().tours.size(), shipped);
    EXPECT_FALSE(std::filesystem::exists(folder));

    // A shipped tour cannot be deleted, and Back leads to the play page.
    coordinator->SetMenuPage(3);
    QmManagementPage again;
    again.RebuildLists();
    ASSERT_TRUE(World().tours[0].official);
    Keys(again, {VeKey::Right}); // the first tour's maps, then down past them onto the buttons
    for (size_t m = 0; m < World().tourLevels[0].size(); ++m) {
        Keys(again, {VeKey::Down});
    }
    Presses(again, {VeKey::Right, VeKey::Right, VeKey::Return}); // Delete tour on the first, shipped tour
    EXPECT_FALSE(Asking(again)) << "refused without a question";
    EXPECT_EQ(World().tours.size(), shipped);
    Keys(again, {VeKey::Escape});
    EXPECT_EQ(coordinator->CurrentMenuPage(), 2);
}

} // namespace
