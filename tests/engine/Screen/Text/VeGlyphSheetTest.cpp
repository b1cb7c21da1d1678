#include "Screen/Surface/VePNGFile.h"
#include "Screen/Text/VeText.h"

#include "Platform/VeFiles.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

// The whole character set at every size the menus use, rendered and compared with the stored
// sheet in tests/data/text. Run with QM_UPDATE_STORED_IMAGES=1 to write the sheet again after a
// deliberate change of the glyphs, then look at it.
namespace {
constexpr int32_t kSheetWidth = 720;
constexpr uint32_t kBackground = 0x1C2433;

const char* const kLines[] = {
    "ABCDEFGHIJKLMNOPQRSTUVWXYZ",
    "0123456789 !#&'()*+,-./:;?@[\\]_",
    "abcdefghijklmnopqrstuvwxyz !?",
    "\xC0\xC1\xC5\xC6\xC8\xC9\xCA\xCE\xD8 \x86\x9B",
    "Quillmaze: 3 maps left, best 1:02.45!",
};

VeSurface RenderSheet() {
    struct Row {
        VeText text;
        int32_t y;
    };
    // Sizes 1 to 6 with the weights the pages use, and the frame-rate display.
    const VeTextStyle styles[] = {
        VeTextStyle(1, 0xFFFFFF, 1, 1, 1, kSheetWidth - 60, 0, false),
        VeTextStyle(2, 0xFFFFFF, 2, 2, 1, kSheetWidth - 60),
        VeTextStyle(3, 0xFFFFFF, 3, 3, 1, kSheetWidth - 60),
        VeTextStyle(4, 0xE6D514, 3, 2, 1, kSheetWidth - 60),
        VeTextStyle(5, 0x1ADE0C, 4, 2, 1, kSheetWidth - 60),
        VeTextStyle(6, 0xFFFFFF, 4, 2, 0, kSheetWidth - 60),
    };
    std::vector<Row> rows;
    int32_t y = 10;
    for (const VeTextStyle& style : styles) {
        for (const char* line : kLines) {
            rows.push_back({VeText(line, &style), y});
            y += rows.back().text.Height() + 6;
        }
        y += 10;
    }
    VeSurface sheet(kSheetWidth, y);
    sheet.Fill(kBackground);
    for (const Row& row : rows) {
        row.text.DrawOnto(sheet, 10, row.y);
    }
    return sheet;
}
} // namespace

TEST(VeGlyphSheetTest, CharacterSheetMatchesTheStoredImage) {
    const VeSurface sheet = RenderSheet();
    const std::string stored = std::string(QM_SOURCE_DIR) + "/tests/data/text/CharacterSheet.png";
    const char* update = std::getenv("QM_UPDATE_STORED_IMAGES");
    if (update != nullptr && std::string(update) == "1") {
        ASSERT_TRUE(VePNGFile::Save(stored, sheet.width, sheet.height, sheet.Pixels(), sheet.RowLength()));
    }
    const std::string rendered =
        (std::filesystem::temp_directory_path() / "quillmaze-character-sheet.png").string();
    ASSERT_TRUE(VePNGFile::Save(rendered, sheet.width, sheet.height, sheet.Pixels(), sheet.RowLength()));

    ASSERT_TRUE(FileExists(stored)) << "no stored sheet; rendered one is at " << rendered;
    VePNGFile expected;
    expected.Load(stored);
    ASSERT_EQ(expected.width, sheet.width);
    ASSERT_EQ(expected.height, sheet.height);
    int differing = 0;
    for (int32_t i = 0; i < sheet.pixelCount; ++i) {
        differing +=
            (expected.pixels[static_cast<size_t>(i)] & 0xFFFFFF) != (sheet.GetPixel(i) & 0xFFFFFF) ? 1 : 0;
    }
    EXPECT_EQ(differing, 0) << "the glyphs changed; the new sheet is at " << rendered;
}
