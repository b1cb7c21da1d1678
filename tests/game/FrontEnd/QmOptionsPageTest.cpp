#include "FrontEnd/QmOptionsPage.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/Options/QmOptions.h"
#include "Input/VeKey.h"
#include "MenuPageGame.h"
#include "Platform/VeFiles.h"

#include <gtest/gtest.h>

namespace {

using OptionsPageTest = MenuPageGame;

TEST_F(OptionsPageTest, OnlyApplySavesTheChoicesAndSwitchesTheLanguage) {
    coordinator->SetMenuPage(12);
    const std::string file = QmOptions::FilePath();
    std::remove(file.c_str());
    {
        QmOptionsPage page;
        Keys(page, {VeKey::Space});
        Pointer(page, 110, 96 + 4 * 44 + 10, true); // the label of the last checkbox
        Keys(page, {VeKey::Escape});
    }
    EXPECT_EQ(coordinator->CurrentMenuPage(), 1);
    EXPECT_FALSE(FileExists(file));
    EXPECT_EQ(coordinator->Option(QmOptions::kFullscreen), "0");
    EXPECT_EQ(coordinator->Option(QmOptions::kAutoUpdates), "1");

    coordinator->SetMenuPage(12);
    QmOptionsPage page;
    // Music off, 3D graphics off, and the flag before English (Dutch) chosen.
    Presses(page, {VeKey::Down, VeKey::Space, VeKey::Down, VeKey::Space, VeKey::Down, VeKey::Down,
                   VeKey::Down, VeKey::Left, VeKey::Return});
    EXPECT_FALSE(FileExists(file)) << "nothing is saved before Apply";
    EXPECT_EQ(coordinator->Language().Name(), "English");
    // Apply: the journey's options leg finds the language and the 3D graphics in the file and the
    // main menu shown.
    Presses(page, {VeKey::Down, VeKey::Return});
    EXPECT_EQ(coordinator->Language().Name(), "Dutch");
    QmOptions stored;
    stored.LoadOptions();
    EXPECT_EQ(stored.Get(QmOptions::kMusic), "0");
    EXPECT_EQ(stored.Get(QmOptions::kAutoUpdates), "1");
}

} // namespace
