#include "Screen/Text/VeText.h"

#include "Screen/Text/VeGlyphs.h"

#include "Support/HaltCapture.h"
#include "engine/Screen/PixelProbe.h"
#include "engine/Screen/ScreenTestSupport.h"

#include <array>
#include <sstream>

namespace {
// Size 1, weight 1: cells of 5 x 5 pixels.
VeTextStyle Tiny(int32_t spacing = 1, int32_t maxWidth = 0, int32_t maxHeight = 0) {
    return VeTextStyle(1, 0xFFFFFF, 1, spacing, 1, maxWidth, maxHeight, false);
}

// Pixels other than the key in columns left to right - 1 and rows top to bottom - 1 (-1: to the edge).
int CountInk(const VeSurface& surface, int32_t left = 0, int32_t top = 0, int32_t right = -1,
             int32_t bottom = -1) {
    right = right < 0 ? surface.width : right;
    bottom = bottom < 0 ? surface.height : bottom;
    return (right - left) * (bottom - top) - CountColour(surface, kColourKey, left, top, right, bottom);
}

// The text's size, lines, columns and wrap positions in one line.
std::string Layout(const VeText& text) {
    std::ostringstream out;
    out << text.Width() << "x" << text.Height() << " lines " << text.lines << " columns " << text.columns
        << " wraps";
    for (int32_t at : text.wrapPositions) {
        out << " " << at;
    }
    return out.str();
}

} // namespace

TEST(VeTextTest, CellsAndSpacingGiveTheSurfaceSizeAndShoutedTextIsUpperCase) {
    VeTextStyle style = Tiny(0);
    VeText text("AB", &style);
    EXPECT_EQ(Layout(text), "10x5 lines 1 columns 2 wraps");

    // Size 3, weight 3 with small letters: 15 wide, 15 + 12 high, advance by the spacing too.
    VeTextStyle menu(3, 0xFFFFFF, 3, 3, 1);
    VeText title("Play", &menu);
    EXPECT_EQ(Layout(title), "69x27 lines 1 columns 4 wraps");

    // Every pixel starts as the key: a space draws nothing but takes its cell and its spacing.
    style.LetterSpacing(2);
    VeText blank("   ", &style);
    EXPECT_EQ(blank.Width(), 19);
    EXPECT_EQ(CountInk(blank.surface), 0);
    EXPECT_EQ(Layout(VeText("", &style)), "0x5 lines 1 columns 0 wraps");

    // Shouted text is upper case until set otherwise.
    VeText shouted("quillmaze 1.0", nullptr, true);
    EXPECT_EQ(shouted.text, "QUILLMAZE 1.0");
    shouted.SetText("again", false);
    EXPECT_EQ(shouted.text, "again");
}

TEST(VeTextTest, WrapsAtSpacesAndBreaksLongWordsHard) {
    // Advance 6: 30 pixels hold 5 characters, and a sixth since it needs no spacing after it.
    VeTextStyle style = Tiny(1, 30);
    VeText text("HELLO WORLD AGAIN", &style);
    EXPECT_EQ(Layout(text), "35x17 lines 3 columns 6 wraps 5 11");

    VeText word("ABCDEFGHIJKLMNO", &style);
    EXPECT_EQ(Layout(word), "35x17 lines 3 columns 6 wraps 5 11");
    // Line 2 starts with "G" at the left edge; "M" starts line 3.
    VeTextStyle plain = Tiny();
    VeText g("G", &plain);
    VeText m("M", &plain);
    for (int32_t y = 0; y < 5; ++y) {
        for (int32_t x = 0; x < 5; ++x) {
            EXPECT_EQ(word.surface.GetXY(x, 6 + y), g.surface.GetXY(x, y));
            EXPECT_EQ(word.surface.GetXY(x, 12 + y), m.surface.GetXY(x, y));
        }
    }

    // The first line broken inside a word keeps its full width, so no letter is cut off.
    EXPECT_EQ(Layout(VeText("ABCDEFGH", &style)), "35x11 lines 2 columns 6 wraps 5");

    // Short enough for one line: no wrap positions, as without a limit.
    EXPECT_EQ(Layout(VeText("HELLO", &style)), "29x5 lines 1 columns 5 wraps");

    // Line height adds between lines only.
    style.LineHeight(4);
    text.SetStyle(style);
    EXPECT_EQ(text.Height(), 3 * 9 - 4);
}

TEST(VeTextTest, HeightCapCutsTheString) {
    // Two lines of 6 pixels fit in 12.
    VeTextStyle style = Tiny(1, 30, 12);
    VeText text("HELLO WORLD AGAIN AND AGAIN", &style);
    EXPECT_EQ(text.text, "HELLO WORLD ");
    EXPECT_EQ(Layout(text), "35x11 lines 2 columns 6 wraps 5");

    // Room for a single line: the text keeps one line's worth.
    style.MaxHeight(6);
    VeText one("ABCDEFGHIJKLMNOPQRSTUVWXYZ", &style);
    EXPECT_EQ(one.text, "ABCDEF");
    EXPECT_EQ(Layout(one), "35x5 lines 1 columns 6 wraps");
}

TEST(VeTextTest, NarrowLimitsNeverStall) {
    VeTextStyle style = Tiny(1, 1);
    VeText text("A B C", &style);
    EXPECT_EQ(text.lines, 5);
    EXPECT_EQ(text.Width(), 5);

    std::string every;
    for (int c = 1; c < 256; ++c) {
        every += static_cast<char>(c);
    }
    style.MaxWidth(100);
    VeText hostile(every, &style);
    EXPECT_GT(hostile.lines, 1);
    EXPECT_LE(hostile.Width(), 6 * 17);
}

TEST(VeTextTest, SmallLettersNeedTheSwitchAndSizeTwo) {
    VeTextStyle style = Tiny();
    style.SmallLetters(true);
    VeText tiny("abc!", &style);
    EXPECT_FALSE(tiny.SmallLettersInEffect());
    // Lower case has no glyph without the small set; "!" falls back to the main set.
    EXPECT_EQ(CountInk(tiny.surface, 0, 0, 17), 0);
    EXPECT_GT(CountInk(tiny.surface, 18, 0), 0);

    VeTextStyle two(2, 0xFFFFFF, 1, 1, 1, 0, 0, true);
    VeText small("abc", &two);
    EXPECT_TRUE(small.SmallLettersInEffect());
    EXPECT_EQ(small.Height(), 8 + 1 + 8);
    EXPECT_GT(CountInk(small.surface), 0);

    two.SmallLetters(false);
    VeText off("abc", &two);
    EXPECT_EQ(CountInk(off.surface), 0);
    EXPECT_EQ(off.Height(), 9);

    // With small letters the capitals move down by 2u, leaving room for ascenders.
    two.SmallLetters(true);
    VeText capital("A", &two);
    EXPECT_EQ(CountInk(capital.surface, 0, 0, -1, 4), 0);
    EXPECT_GT(CountInk(capital.surface, 0, 4, -1, 5), 0);
    // Accented capitals use that room for the accent and keep the letter's full size.
    VeText grave("\xC0", &two);
    EXPECT_GT(CountInk(grave.surface, 0, 0, -1, 4), 0);
    EXPECT_EQ(CountInk(grave.surface, 0, 4, -1, grave.Height()), CountInk(capital.surface));
}

TEST(VeTextTest, EveryGlyphStaysInsideItsCell) {
    std::string mainSet = "!#&'()*+,-./0123456789:;?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]_";
    for (unsigned char c : {0x86, 0x9B, 0xC0, 0xC1, 0xC5, 0xC6, 0xC8, 0xC9, 0xCA, 0xCE, 0xD8}) {
        mainSet += static_cast<char>(c);
    }
    const std::string smallSet = "!?abcdefghijklmnopqrstuvwxyz";
    // Drawn at (100, 100) with one-pixel strokes, a glyph's ink lies within 4u of the corner;
    // small letters and the accents of texts with small letters reach 2u above it, and small
    // letters and o slash 2u below the baseline.
    enum Kind { Main, MainWithRoom, Small };
    for (int32_t size = 1; size <= 9; ++size) {
        auto check = [size](const std::string& set, Kind kind) {
            for (char c : set) {
                VeSurface surface(300, 300);
                surface.Fill(kColourKey);
                const unsigned char byte = static_cast<unsigned char>(c);
                if (kind == Small) {
                    VeGlyphs::DrawSmall(surface, byte, 100, 100, size, 0xFFFFFF);
                } else {
                    VeGlyphs::DrawMain(surface, byte, 100, 100, size, 0xFFFFFF, kind == MainWithRoom);
                }
                const int32_t top = kind == Main ? 100 : 100 - 2 * size;
                const int32_t bottom = kind == Main ? 100 + 4 * size : 100 + 6 * size;
                const int inside = CountInk(surface, 100, top, 101 + 4 * size, bottom + 1);
                ASSERT_EQ(CountInk(surface), inside) << c << " size " << size << " kind " << kind;
                ASSERT_GT(inside, 0) << c << " size " << size << " kind " << kind;
            }
        };
        check(mainSet, Main);
        check(mainSet, MainWithRoom);
        if (size >= 2) {
            check(smallSet, Small);
        }
    }
}

TEST(VeTextTest, StyleSettersHaltOutOfRange) {
    EXPECT_HALT(VeTextStyle().Size(0), "Halt: Text size too small",
                "App halted when loading text. Size is too small. (VeTextStyle::Size)");
    EXPECT_HALT(VeTextStyle().Size(101), "Halt: Text size too large",
                "App halted when loading text. Size is too large. (VeTextStyle::Size)");
    EXPECT_HALT(VeTextStyle().Weight(0), "Halt: Text Weight too small",
                "App halted when loading text. Weight is too small. (VeTextStyle::Weight)");
    EXPECT_HALT(VeTextStyle().LetterSpacing(-1), "Halt: Text letter spacing too small",
                "App halted when loading text. Letter spacing is too small. (VeTextStyle::LetterSpacing)");
    EXPECT_HALT(VeTextStyle().LineHeight(-1), "Halt: Text line height too small",
                "App halted when loading text. Line height is too small. (VeTextStyle::LineHeight)");
    EXPECT_HALT(VeTextStyle().MaxWidth(-1), "Halt: Text maximum width too small",
                "App halted when loading text. Maximum width is too small. (VeTextStyle::MaxWidth)");
    EXPECT_HALT(VeTextStyle().MaxHeight(-1), "Halt: Text maximum height too small",
                "App halted when loading text. Maximum height is too small. (VeTextStyle::MaxHeight)");

    // The limits themselves are accepted; 0 means no limit.
    VeTextStyle edge;
    edge.Size(100).Weight(100).LetterSpacing(0).LineHeight(100).MaxWidth(0).MaxHeight(0);
    edge.Size(1).Weight(1).LetterSpacing(100).LineHeight(0);
    EXPECT_EQ(edge.letterSpacing, 100);

    // A style filled in directly is checked when a text takes it, in the setters' order.
    VeTextStyle raw;
    raw.size = 2;
    raw.weight = 0;
    raw.letterSpacing = -5;
    VeText text("A");
    EXPECT_HALT(text.SetStyle(raw), "Halt: Text Weight too small",
                "App halted when loading text. Weight is too small. (VeTextStyle::Weight)");
    raw.weight = 1;
    EXPECT_HALT(VeText("A", &raw), "Halt: Text letter spacing too small",
                "App halted when loading text. Letter spacing is too small. (VeTextStyle::LetterSpacing)");
}

TEST(VeTextTest, DrawsOntoSurfacesCentredAndOutlined) {
    VeSurface target(40, 20);
    target.Fill(0x101010);
    VeTextStyle style(1, 0xFF0000, 1, 1, 1, 0, 0, false);
    VeText text("I", &style);
    // "I" at size 1: the bar across (0.5 to 1.5 units) and the stem at x 2.
    text.DrawOnto(target, 20, 5, true);
    EXPECT_EQ(target.GetXY(18 + 2, 7), 0xFF0000u);
    EXPECT_EQ(target.GetXY(18 + 2, 4), 0x101010u);

    VeSurface outlined(40, 20);
    outlined.Fill(0x101010);
    VeText::DrawString(outlined, "I", 10, 5, style, false, 1.0f, 0x000000);
    EXPECT_EQ(Mismatches(outlined,
                         {{12, 7, 0xFF0000}, {11, 7, 0}, {13, 7, 0}, {14, 7, 0x101010}, {12, 3, 0x101010}}),
              "");

    // Off the edges: clipped, nothing else touched.
    VeText::DrawString(outlined, "WIDE TEXT", -20, 17, style, false, 1.0f, 0x000000);
    EXPECT_EQ(outlined.GetXY(39, 0), 0x101010u);
}

// The frame-rate display through the screen, which hands the text to the drawer only while it is on.
TEST_F(ScreenTestBase, FrameRateDisplayIsDrawnByTheScreenInTheColoursOfTheVsyncState) {
    VeScreen& screen = OpenScreen(true);
    screen.SetFpsTextDrawer(&VeText::DrawFpsText);
    const std::array<uint32_t, 4> colours = {0xFF0000, 0x000080, 0x00FF00, 0x000040};
    screen.SetFpsDisplay(true, colours, 1.0f / 60.0f);
    screen.SetFpsDisplay(false, colours, 1.0f / 50.0f);
    EXPECT_EQ(screen.frameRate.fps, 50) << "switching off restarts the measure from this frame";
    for (bool shown : {false, true}) {
        screen.SetFpsDisplay(shown, colours, 1.0f / 50.0f);
        screen.overlay.Fill(0x404040);
        const ScreenshotImage frame = PresentAndRead();
        ASSERT_EQ(frame.width, 640);
        // The text at size 4, weight 4: cells of 21 pixels less one spacing, 20 high, centred on
        // x 320 with its top at y 10, in the colours of the synchronisation state.
        const std::string text =
            std::string(screen.vsync ? "VSYNC + " : "") + "FPS: " + std::to_string(screen.frameRate.fps);
        const uint32_t colour = colours[screen.vsync ? 2 : 0];
        const uint32_t rim = colours[screen.vsync ? 3 : 1];
        const int32_t textWidth = static_cast<int32_t>(text.size()) * 21 - 1;
        const int32_t left = 320 - textWidth / 2;
        EXPECT_EQ(CountColour(frame, colour, 0, 0, 640, 60) > 300, shown);
        EXPECT_EQ(CountColour(frame, rim, 0, 0, 640, 60) > 100, shown);
        // Nothing but the background outside the text's box.
        const int boxBackground = CountColour(frame, 0x404040, left - 1, 9, left + textWidth + 1, 31);
        EXPECT_EQ(CountColour(frame, 0x404040, 0, 0, 640, 60) - boxBackground,
                  640 * 60 - (textWidth + 2) * 22);
    }
}
