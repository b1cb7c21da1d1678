#include "Screen/Surface/VeSurface.h"

#include "Support/HaltCapture.h"
#include "engine/Screen/ScreenTestSupport.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

const char* kPlotTitle = "Halt: Plotting outside of buffer";

// Which pixels of the surface hold colour, as rows of '#' and '.'.
std::vector<std::string> Picture(const VeSurface& s, uint32_t colour) {
    std::vector<std::string> rows;
    for (int y = 0; y < s.height; ++y) {
        std::string row;
        for (int x = 0; x < s.width; ++x) {
            row += s.GetXY(x, y) == colour ? '#' : '.';
        }
        rows.push_back(row);
    }
    return rows;
}

// A surface of that width holding the pixels row by row.
VeSurface Holding(int32_t width, const std::vector<uint32_t>& pixels) {
    VeSurface s(width, static_cast<int32_t>(pixels.size()) / width);
    for (size_t i = 0; i < pixels.size(); ++i) {
        s.SetPixel(static_cast<int32_t>(i), pixels[i]);
    }
    return s;
}

std::vector<uint32_t> PixelsOf(const VeSurface& s) {
    return std::vector<uint32_t>(s.Pixels(), s.Pixels() + s.width * s.height);
}

} // namespace

TEST(VeSurfaceTest, ANewSurfaceIsBlackAndReadsBlackOutsideAndAViewWritesThrough) {
    VeSurface s(7, 3);
    EXPECT_EQ(Picture(s, 0), std::vector<std::string>(3, "#######"));
    s.Fill(0x123456);
    EXPECT_EQ(s.GetXY(6, 2), 0x123456u);
    EXPECT_EQ(s.GetXY(7, 2), 0u) << "outside reads as 0";
    s.Fill(0);
    EXPECT_EQ(s.GetXY(6, 2), 0u);

    // A view writes through to its buffer, row by row with the buffer's stride.
    std::vector<uint32_t> buffer(10 * 4, 0xAAAAAA);
    VeSurface view;
    view.AttachView(buffer.data() + 10 + 2, 3, 2, 10);
    view.Fill(0x111111);
    view.BlendXY(2, 1, 0x222222, 1.0f);
    EXPECT_EQ(buffer[12], 0x111111u);
    EXPECT_EQ(buffer[15], 0xAAAAAAu) << "the fill stops at the view's width";
    EXPECT_EQ(buffer[24], 0x222222u);
    EXPECT_EQ(buffer[34], 0xAAAAAAu) << "below the view is untouched";

    VeSurface unchanged;
    unchanged.AttachView(nullptr, 5, 5, 5);
    EXPECT_EQ(unchanged.width, 0) << "a null pixel pointer leaves the surface as it was";
}

TEST(VeSurfaceTest, BlendPixelRules) {
    VeSurface s = Holding(4, {kColourKey, 0x80000000, 0x102030, kColourKey});
    s.BlendPixel(0, 0x00FF00, 0.5f); // onto the key the colour takes alpha byte 127
    s.BlendPixel(1, 0xFFFFFF, 0.5f); // channels mixed, old alpha kept
    s.BlendPixel(2, 0xFFFFFF, 0.0f); // alpha 0 or less does nothing
    s.BlendPixel(2, 0xFFFFFF, -1.0f);
    s.BlendPixel(3, 0x123456, 0.003f); // too faint for one alpha step: the key stays
    // Positions outside are skipped.
    s.BlendIndex(4, 0xFFFFFF, 1.0f);
    s.BlendIndex(-1, 0xFFFFFF, 1.0f);
    s.BlendXY(0, 1, 0xFFFFFF, 1.0f);
    EXPECT_EQ(PixelsOf(s), (std::vector<uint32_t>{0x7F00FF00, 0x807F7F7F, 0x102030, kColourKey}));
    s.BlendPixel(2, 0x00ABCDEF, 1.0f);
    EXPECT_EQ(s.GetPixel(2), 0x00ABCDEFu);
}

TEST(VeSurfaceTest, MultiplyUsesFiveBitFixedPointAndShadesTheKey) {
    VeSurface s = Holding(3, {0x00FF8040, kColourKey, 0xFF102030});
    s.MultiplyAll(0.5f);
    // The key becomes a half shade; the alpha byte of the others becomes 0.
    EXPECT_EQ(PixelsOf(s), (std::vector<uint32_t>{0x007F4020, 0x7F000000, 0x00081018}));

    s = Holding(2, {0x00F08010, kColourKey});
    s.MultiplyPixel(0, 2.0f); // brightening saturates each channel
    s.MultiplyXY(1, 0, 1.5f); // a brightened key is plain black, never a negative alpha
    s.MultiplyXY(5, 0, 0.5f);
    EXPECT_EQ(PixelsOf(s), (std::vector<uint32_t>{0x00FFFF20, 0}));
}

TEST(VeSurfaceTest, RectOutlineNegativeSizesClippingAndBlend) {
    VeSurface s(6, 5);
    s.Rect(1, 1, 4, 3, 1, false);
    EXPECT_EQ(Picture(s, 1), (std::vector<std::string>{"......", ".####.", ".#..#.", ".####.", "......"}));
    s.Rect(5, 3, -3, -2, 2);
    EXPECT_EQ(Picture(s, 2), (std::vector<std::string>{"......", "..###.", "..###.", "......", "......"}))
        << "negative sizes grow left and up";

    VeSurface c(4, 4);
    c.Rect(-2, 2, 4, 10, 2);
    EXPECT_EQ(Picture(c, 2), (std::vector<std::string>{"....", "....", "##..", "##.."}));

    VeSurface b(1, 1);
    b.Fill(0x000000);
    b.Rect(0, 0, 1, 1, 0xFEFEFE, true, true, 0.5f);
    EXPECT_EQ(b.GetPixel(0), 0x007F7F7Fu);
}

TEST(VeSurfaceTest, CheckedDrawingHaltsOutsideTheBuffer) {
    VeSurface s(10, 10);
    EXPECT_HALT(s.Rect(5, 5, 6, 1, 1, true, true), kPlotTitle,
                "App halted when trying to plot outside of buffer in (VeSurface::Rect)");
    EXPECT_HALT(s.Rect(3, 3, -4, 2, 1, false, true), kPlotTitle,
                "App halted when trying to plot outside of buffer in (VeSurface::Rect)");
    EXPECT_HALT(s.MultiplyRect(0, -1, 2, 2, 0.5f, true), kPlotTitle,
                "App halted when trying to plot outside of buffer in (VeSurface::MultiplyRect)");
    EXPECT_HALT(s.Line(0, 0, 11, 3, 1, true), kPlotTitle,
                "App halted when trying to plot outside of buffer in (VeSurface::Line)");
    EXPECT_HALT(s.Line(-1, 0, 3, 3, 1, true), kPlotTitle,
                "App halted when trying to plot outside of buffer in (VeSurface::Line)");

    MessageBoxCapture none;
    s.Rect(0, 0, 10, 10, 1, true, true);
    s.Rect(10, 10, -10, -10, 1, false, true);
    s.MultiplyRect(0, 0, 10, 10, 0.5f, true);
    s.Line(0, 0, 10, 10, 1, true) /* the far edge is accepted */;
    s.Line(-5, -5, 20, 3, 1, false);
    EXPECT_TRUE(none.boxes.empty());
}

TEST(VeSurfaceTest, LinesStepLikeBresenhamAndMultiplyWithAFactor) {
    VeSurface s(5, 3);
    s.Line(0, 0, 4, 2, 9);
    EXPECT_EQ(Picture(s, 9), (std::vector<std::string>{"##...", "..##.", "....#"}));

    VeSurface m(3, 1);
    m.Fill(0x404040);
    m.Line(2, 0, 1, 0, 0xFFFFFF, false, 0.5f);
    EXPECT_EQ(m.GetPixel(0), 0x404040u);
    EXPECT_EQ(m.GetPixel(1), 0x202020u) << "a factor other than 1 multiplies instead of drawing";
    EXPECT_EQ(m.GetPixel(2), 0x202020u);
}

TEST(VeSurfaceTest, GreyRectClipsAndKeepsKeyAndAlpha) {
    constexpr uint32_t kBlue = 0x00306090;
    constexpr uint32_t kGrey = 0x00606060;
    VeSurface s = Holding(4, {kBlue, kColourKey, 0x80010203, kBlue, kBlue, kBlue, kBlue, kBlue});
    // A start below 0 is taken as 0 and the end is the start plus the width; the key stays and
    // the alpha byte is kept.
    s.GreyRect(-3, 0, 3, 1);
    EXPECT_EQ(PixelsOf(s),
              (std::vector<uint32_t>{kGrey, kColourKey, 0x80020202, kBlue, kBlue, kBlue, kBlue, kBlue}));
    // y beyond the edge starts at 0 and sizes 0 reach the edges; x 2 is inside, so the columns
    // left of it stay.
    s.GreyRect(2, 7, 0, 0);
    EXPECT_EQ(s.GetXY(3, 1), kGrey);
    EXPECT_EQ(s.GetXY(1, 1), kBlue);
    // An end beyond the edge stops there.
    VeSurface t = Holding(2, {kBlue, kBlue, kBlue, kBlue});
    t.GreyRect(1, 1, 100, 100);
    EXPECT_EQ(PixelsOf(t), (std::vector<uint32_t>{kBlue, kBlue, kBlue, kGrey}));
}

TEST(VeSurfaceTest, ColourKeyStep) {
    // Only the exact key with alpha 0 is transparent; a blended pixel keeps its alpha.
    VeSurface s = Holding(4, {0x00FF00FF, 0x00123456, 0x40123456, 0xFFFF00FF});
    s.ApplyColourKey(0xFF00FF, false);
    EXPECT_EQ(PixelsOf(s), (std::vector<uint32_t>{0x00FF00FF, 0xFF123456, 0x40123456, 0xFFFF00FF}));

    s.SetPixel(1, 0x00000001);
    EXPECT_EQ(s.KeyPixel(0, 0xFF00FF, true), 0x00FF00FFu);
    EXPECT_EQ(s.KeyPixel(1), 0x00000001u);
    EXPECT_EQ(PixelsOf(s)[0], 0u);
    EXPECT_EQ(PixelsOf(s)[1], 0xFF000001u);
}

TEST(VeSurfaceTest, ReplaceMirrorAndRotate) {
    VeSurface s = Holding(3, {1, 2, 3, 4, 0x7F000002, 6});
    s.ReplaceColour(0xAA000002, 0x12ABCDEF);
    EXPECT_EQ(PixelsOf(s), (std::vector<uint32_t>{1, 0x00ABCDEF, 3, 4, 0x7FABCDEF, 6})) << "alpha bytes kept";
    s = Holding(3, {1, 2, 3, 4, 5, 6});
    s.MirrorHorizontal();
    EXPECT_EQ(PixelsOf(s), (std::vector<uint32_t>{3, 2, 1, 6, 5, 4}));
    s.Rotate180();
    EXPECT_EQ(PixelsOf(s), (std::vector<uint32_t>{4, 5, 6, 1, 2, 3}));

    std::vector<uint32_t> buffer{1, 2, 9, 3, 4, 9};
    VeSurface view;
    view.AttachView(buffer.data(), 2, 2, 3);
    view.Rotate180();
    EXPECT_EQ(buffer, (std::vector<uint32_t>{4, 3, 9, 2, 1, 9}));
}

TEST(VeSurfaceTest, CopiesAndBlits) {
    VeSurface a(2, 2);
    a.Fill(5);
    VeSurface b(2, 2);
    b.CopyFrom(a);
    EXPECT_EQ(b.GetXY(1, 1), 5u);

    std::vector<uint32_t> buffer{1, 2, 0, 3, 4, 0};
    VeSurface view;
    view.AttachView(buffer.data(), 2, 2, 3);
    b.CopyFrom(view);
    EXPECT_EQ(PixelsOf(b), (std::vector<uint32_t>{1, 2, 3, 4}));

    VeSurface dest(4, 3);
    const VeSurface src = Holding(2, {7, kColourKey, 8, 9});
    constexpr uint32_t kKey = kColourKey;
    dest.Fill(1);
    dest.BlitKeyed(src, 3, 2);   // clipped at the right and bottom
    dest.BlitKeyed(src, -1, -1); // and at the left and top
    EXPECT_EQ(PixelsOf(dest), (std::vector<uint32_t>{9, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 7}));
    dest.Fill(1);
    dest.BlitKeyed(src, 1, 0, true);
    EXPECT_EQ(PixelsOf(dest), (std::vector<uint32_t>{1, 7, 1, 1, 1, 8, 9, 1, 1, 1, 1, 1}))
        << "the key is not copied";
    dest.Blit(src, 1, 0);
    dest.Blit(src, 3, 2);
    EXPECT_EQ(PixelsOf(dest), (std::vector<uint32_t>{1, 7, kKey, 1, 1, 8, 9, 1, 1, 1, 1, 7}))
        << "a plain blit copies the key too";

    VeSurface small(2, 2);
    small.CopyPixels(dest, 3);
    EXPECT_EQ(small.GetPixel(2), dest.GetPixel(2));
}

TEST(VeSurfaceTest, CopiesAndCheckedBlitsAssertOnBadSizes) {
    VeSurface a(2, 2);
    VeSurface b(3, 2);
    VeSurface big(5, 5);
    auto fails = [](auto action) { return FailsAssertionIn("Surface/VeSurface.cpp", action); };
    EXPECT_TRUE(fails([&] { a.CopyFrom(b); }));
    EXPECT_TRUE(fails([&] { a.CopyPixels(big, 5); }));
    EXPECT_TRUE(fails([&] { b.BlitKeyed(a, 2, 0, true); }));
    EXPECT_TRUE(fails([&] { big.BlitKeyed(a, 0, -1, true); }));
    EXPECT_FALSE(fails([&] { big.DrawImage(b, 1, 0, true, kColourKey, 1.0f, 1.0f, true); }))
        << "centred on x 1 the image starts at 0 and fits";
    EXPECT_TRUE(fails([&] { big.DrawImage(b, 0, 0, true, kColourKey, 1.0f, 1.0f, true); }));
}

TEST(VeSurfaceTest, DrawImageCentresBrightensAndBlends) {
    const VeSurface src = Holding(2, {0x00804020, kColourKey});
    VeSurface dest(4, 1);
    // Centred: x = 2 - 1, brightness clamps at 255; then blended at half on the right.
    dest.DrawImage(src, 2, 0, false, kColourKey, 2.0f, 1.0f, true);
    dest.DrawImage(src, 3, 0, false, kColourKey, 1.0f, 0.5f);
    EXPECT_EQ(PixelsOf(dest), (std::vector<uint32_t>{0, 0x00FF8040, 0, 0x00402010}));

    VeSurface same(2, 1);
    same.DrawImage(src, 0, 0);
    EXPECT_EQ(same.GetPixel(1), kColourKey) << "same size at the origin copies everything";
}
