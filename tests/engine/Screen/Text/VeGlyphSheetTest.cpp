#include "Screen/Text/VeText.h"

#include "Support/Screenshot.h"

#include <gtest/gtest.h>

// The whole character set at every size the menus use, rendered and compared pixel for pixel with
// the stored sheet in tests/data/text (QUILLMAZE_UPDATE_IMAGES=1 writes it again after a deliberate
// change of the glyphs; look at it before committing it).
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
    EXPECT_TRUE(MatchesStoredImage("text/CharacterSheet.png", ScreenshotOf(RenderSheet()), 0, 0));
}
