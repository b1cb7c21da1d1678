#include "FrontEnd/Options/QmOptions.h"

#include "Environment/CoreEnvironmentManager/QmTextCipher.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Support/HaltCapture.h"
#include "Support/LogCapture.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {
std::map<std::string, std::string> Defaults() {
    return QmOptions().Values();
}

std::string FileText() {
    std::string bytes;
    ReadFileBytes(QmOptions::FilePath(), bytes);
    return bytes;
}
} // namespace

TEST(QmOptionsTest, SavedOptionsLoadBackWithNameAndPasswordEnciphered) {
    TempUserData data;
    QmOptions options;
    options.Set("Language", "Norwegian");
    options.Set("Fullscreen", "1");
    options.Set("Music", "0");
    options.Set("Username", "Racer One");
    options.Set("Password", "p4ss w\xC3\xB8rd~!");
    options.Set("3DGraphics", "0");
    options.Set("AnimatedMenuBackground", "0");
    options.Set("AutoUpdates", "0");
    options.Set("FPS", "1");
    options.Set("HUD", "0");
    ASSERT_TRUE(options.SaveOptions());

    std::vector<std::string> lines = SplitLines(FileText());
    ASSERT_EQ(lines.size(), 8u);
    EXPECT_EQ(FileText().substr(0, 11), "Norwegian\r\n");
    lines[3] = DecodeText(4, lines[3]);
    lines[4] = DecodeText(4, lines[4]);
    EXPECT_EQ(lines, (std::vector<std::string>{"Norwegian", "1", "0", "Racer One", "p4ss w\xC3\xB8rd~!", "0",
                                               "0", "0"}));

    QmOptions loaded;
    loaded.LoadOptions();
    std::map<std::string, std::string> expected = options.Values();
    expected["FPS"] = "0"; // only the eight stored keys survive a restart
    expected["HUD"] = "1";
    EXPECT_EQ(loaded.Values(), expected) << "no 3D graphics, no shadows";

    // An empty password is an empty fifth line; 3D graphics bring the shadows back at the next load.
    loaded.Set("Password", "");
    loaded.SetOn("3DGraphics", true);
    EXPECT_EQ(loaded.Get("ShadowsEnabled"), "0") << "the derived key changes only when loading";
    ASSERT_TRUE(loaded.SaveOptions());
    EXPECT_EQ(SplitLines(FileText())[4], "");
    loaded.LoadOptions();
    EXPECT_EQ(loaded.Get("Password"), "");
    EXPECT_EQ(loaded.Get("ShadowsEnabled"), "1");
}

TEST(QmOptionsTest, MissingShortOrOddFilesKeepDefaultsForWhatIsMissing) {
    TempUserData data;
    QmOptions options;
    options.Set("Music", "0");
    options.LoadOptions();
    EXPECT_EQ(options.Values(), Defaults()) << "loading a missing file starts from the defaults";
    EXPECT_FALSE(FileExists(QmOptions::FilePath()));

    CreateFolder(data.GameFolder());
    WriteFileAtomic(QmOptions::FilePath(), "French\n1\n0\n");
    options.LoadOptions();
    std::map<std::string, std::string> expected = Defaults();
    expected["Language"] = "French";
    expected["Fullscreen"] = "1";
    expected["Music"] = "0";
    expected["ShadowsEnabled"] = "1";
    EXPECT_EQ(options.Values(), expected);

    // A language the game does not have (or a path) falls back to English instead of halting.
    LogCapture log;
    WriteFileAtomic(QmOptions::FilePath(), "../../secret\r\n1\r\n");
    options.LoadOptions();
    EXPECT_EQ(options.Get("Language"), "English");
    EXPECT_EQ(options.Get("Fullscreen"), "1");
    EXPECT_NE(log.all.find("../../secret"), std::string::npos);

    WriteFileAtomic(QmOptions::FilePath(), "");
    options.LoadOptions();
    EXPECT_EQ(options.Values()["Language"], "English");
    EXPECT_EQ(options.Get("ShadowsEnabled"), "1") << "an empty file still counts as loaded";
}

TEST(QmOptionsTest, UnwritableFileWarnsAndKeepsTheOldOne) {
    TempUserData data;
    QmOptions options;
    options.Set("Username", "kept");
    ASSERT_TRUE(options.SaveOptions());
    const std::string before = FileText();

    std::filesystem::create_directory(QmOptions::FilePath() + ".tmp"); // the temporary file cannot be made
    options.Set("Username", "lost");
    LogCapture log;
    MessageBoxCapture capture;
    EXPECT_FALSE(options.SaveOptions());
    ASSERT_EQ(capture.boxes.size(), 1u);
    const CapturedBox& box = capture.boxes[0];
    EXPECT_EQ(box.title + " / " + box.text + " / " + std::to_string(box.kind),
              "Warning: Options not saved / Could not save options file. / 1");
    EXPECT_NE(log.all.find("Could not save options.\n"), std::string::npos);
    EXPECT_EQ(FileText(), before);
    EXPECT_EQ(options.Get("Username"), "lost") << "the settings themselves stay as they are";
}
