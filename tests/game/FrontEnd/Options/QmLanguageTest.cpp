#include "FrontEnd/Options/QmLanguage.h"

#include "FrontEnd/Options/QmOptions.h"
#include "Platform/VeFiles.h"
#include "Support/HaltCapture.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

namespace {
const std::string kGetLatest = "\n\nPlease download the latest version or contact Velnosoft.";

class QmLanguageTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder = data.path + "/Lang";
        CreateFolder(folder);
        std::vector<std::string> lines;
        for (int i = 1; i <= 150; ++i) {
            lines.push_back("Line " + std::to_string(i));
        }
        WriteTextLinesAtomic(folder + "/English.lang", lines);
        WriteFileAtomic(folder + "/French.lang", "Jouer\r\nQuitter\n\nÉditeur");
    }
    TempUserData data;
    std::string folder;
};
} // namespace

TEST_F(QmLanguageTest, LinesAreNumberedFromOneAndEndAtTheFile) {
    QmLanguage language(folder);
    language.Load("English");
    EXPECT_EQ(language.LineCount(), 150u);
    EXPECT_EQ(language.GetLine(1), "Line 1");
    EXPECT_EQ(language.GetLine(150), "Line 150");
    const std::string file = "in file: '" + folder + "/English.lang'." + kGetLatest;
    for (int outside : {151, 0, -4}) {
        EXPECT_HALT(language.GetLine(outside), "Error: Could not find translation",
                    "Could not find translation line " + std::to_string(outside) + " " + file);
    }
}

TEST_F(QmLanguageTest, SetLanguageLoadsTheChosenLanguage) {
    QmOptions options;
    options.Set("Language", "French");
    QmLanguage language(folder);
    EXPECT_EQ(language.Name(), "English");
    language.SetLanguage(options);
    EXPECT_EQ(language.Name(), "French");
    EXPECT_EQ(language.LineCount(), 4u);
    EXPECT_EQ(language.GetLine(2), "Quitter") << "line ends with or without CR";
    EXPECT_EQ(language.GetLine(3), "");
    EXPECT_EQ(language.GetLine(4), "Éditeur");

    options.Set("Language", "Dutch");
    EXPECT_HALT(language.SetLanguage(options), "Error: Could not load language file",
                "Unable to load language file: '" + folder + "/Dutch.lang'." + kGetLatest);
    EXPECT_EQ(language.GetLine(1), "Jouer") << "a failed load leaves the lines as they were";
}

// (Each language file holds every line of the table: the content tests' LanguageFile; the page
// tests load each one.)
TEST(QmLanguageListTest, TheFourLanguagesAreOfferedByTheirNames) {
    EXPECT_EQ(QmLanguage::Languages(), (std::vector<std::string>{"Dutch", "English", "French", "Norwegian"}));
    EXPECT_FALSE(QmLanguage::IsLanguage("english"));
}
