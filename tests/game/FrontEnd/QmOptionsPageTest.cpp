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
        Keys(page, {VeKey::Escape});
    }
    EXPECT_EQ(coordinator->CurrentMenuPage(), 1);
    EXPECT_FALSE(FileExists(file));
    EXPECT_EQ(coordinator->Option(QmOptions::kFullscreen), "0");
    coordinator->SetMenuPage(12);
    {
        QmOptionsPage page;
        Pointer(page, 110, 96 + 4 * 44 + 10, true); // the label of the last checkbox
        Pointer(page, 400, 535, false);             // over Back
        Pointer(page, 400, 535, true);
    }
    EXPECT_EQ(coordinator->CurrentMenuPage(), 1);
    EXPECT_FALSE(FileExists(file));
    EXPECT_EQ(coordinator->Option(QmOptions::kAutoUpdates), "1");

    coordinator->SetMenuPage(12);
    QmOptionsPage page;
    Keys(page, {VeKey::Down});
    Keys(page, {VeKey::Space}); // music off
    Keys(page, {VeKey::Down});
    Keys(page, {VeKey::Space}); // 3D graphics off
    Keys(page, {VeKey::Down});
    Keys(page, {VeKey::Down});
    Keys(page, {VeKey::Down});
    Keys(page, {VeKey::Left}); // the flag before English: Dutch
    Keys(page, {VeKey::Return});
    EXPECT_FALSE(FileExists(file)) << "nothing is saved before Apply";
    EXPECT_EQ(coordinator->Language().Name(), "English");
    Keys(page, {VeKey::Down});
    Keys(page, {VeKey::Return}); // Apply
    EXPECT_EQ(coordinator->CurrentMenuPage(), 1);
    EXPECT_EQ(coordinator->Option(QmOptions::k3DGraphics), "0");
    EXPECT_EQ(coordinator->Language().Name(), "Dutch");
    QmOptions stored;
    stored.LoadOptions();
    EXPECT_EQ(stored.Get(QmOptions::kLanguage), "Dutch");
    EXPECT_EQ(stored.Get(QmOptions::kMusic), "0");
    EXPECT_EQ(stored.Get(QmOptions::kAutoUpdates), "1");
}

} // namespace
