#include "Screen/Surface/VeSurface.h"

#include "Support/HaltCapture.h"

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
    EXPECT_EQ(view.RowLength(), 10);
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
    VeSurface s(4, 1);
    s.SetPixel(0, kColourKey);
    s.BlendPixel(0, 0x00FF00, 0.5f);
    EXPECT_EQ(s.GetPixel(0), 0x7F00FF00u) << "onto the key the colour takes alpha byte 127";

    s.SetPixel(1, 0x80000000 | 0x000000);
    s.BlendPixel(1, 0xFFFFFF, 0.5f);
    EXPECT_EQ(s.GetPixel(1), 0x807F7F7Fu) << "channels mixed, old alpha kept";

    s.SetPixel(2, 0x102030);
    s.BlendPixel(2, 0xFFFFFF, 0.0f);
    s.BlendPixel(2, 0xFFFFFF, -1.0f);
    EXPECT_EQ(s.GetPixel(2), 0x102030u) << "alpha 0 or less does nothing";
    s.BlendPixel(2, 0x00ABCDEF, 1.0f);
    EXPECT_EQ(s.GetPixel(2), 0x00ABCDEFu);

    s.SetPixel(3, kColourKey);
    s.BlendPixel(3, 0x123456, 0.003f);
    EXPECT_EQ(s.GetPixel(3), kColourKey) << "a blend too faint for one alpha step leaves the key";

    s.BlendIndex(4, 0xFFFFFF, 1.0f);
    s.BlendIndex(-1, 0xFFFFFF, 1.0f);
    s.BlendXY(0, 1, 0xFFFFFF, 1.0f);
    EXPECT_EQ(s.GetPixel(3), kColourKey) << "positions outside are skipped";
}

TEST(VeSurfaceTest, MultiplyUsesFiveBitFixedPointAndShadesTheKey) {
    VeSurface s(3, 1);
    s.SetPixel(0, 0x00FF8040);
    s.SetPixel(1, kColourKey);
    s.SetPixel(2, 0xFF102030);
    s.MultiplyAll(0.5f);
    EXPECT_EQ(s.GetPixel(0), 0x007F4020u);
    EXPECT_EQ(s.GetPixel(1), 0x7F000000u);
    EXPECT_EQ(s.GetPixel(2), 0x00081018u) << "the alpha byte becomes 0";

    s.SetPixel(0, 0x00F08010);
    s.MultiplyPixel(0, 2.0f);
    EXPECT_EQ(s.GetPixel(0), 0x00FFFF20u) << "brightening saturates each channel";
    s.SetPixel(1, kColourKey);
    s.MultiplyXY(1, 0, 1.5f);
    EXPECT_EQ(s.GetPixel(1), 0u) << "a brightened key is plain black, never a negative alpha";
    s.MultiplyXY(5, 0, 0.5f);
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
    VeSurface s(4, 2);
    s.Fill(0x00306090);
    s.SetPixel(1, kColourKey);
    s.SetPixel(2, 0x80010203);
    s.GreyRect(-3, 0, 3, 1);
    EXPECT_EQ(s.GetPixel(0), 0x00606060u) << "a start below 0 is taken as 0";
    EXPECT_EQ(s.GetPixel(1), kColourKey);
    EXPECT_EQ(s.GetPixel(2), 0x80020202u) << "alpha byte kept";
    EXPECT_EQ(s.GetPixel(3), 0x00306090u) << "the end is the start plus the width";
    EXPECT_EQ(s.GetXY(0, 1), 0x00306090u);

    s.GreyRect(2, 7, 0, 0);
    EXPECT_EQ(s.GetXY(3, 1), 0x00606060u) << "y beyond the edge starts at 0, sizes 0 reach the edges";
    EXPECT_EQ(s.GetXY(1, 1), 0x00306090u) << "x 2 is inside, so the columns left of it stay";

    VeSurface t(2, 2);
    t.Fill(0x00306090);
    t.GreyRect(1, 1, 100, 100);
    EXPECT_EQ(t.GetXY(1, 1), 0x00606060u) << "an end beyond the edge stops there";
    EXPECT_EQ(t.GetXY(0, 1), 0x00306090u);
}

TEST(VeSurfaceTest, ColourKeyStep) {
    VeSurface s(4, 1);
    s.SetPixel(0, 0x00FF00FF);
    s.SetPixel(1, 0x00123456);
    s.SetPixel(2, 0x40123456);
    s.SetPixel(3, 0xFFFF00FF);
    s.ApplyColourKey(0xFF00FF, false);
    EXPECT_EQ(s.GetPixel(0), 0x00FF00FFu);
    EXPECT_EQ(s.GetPixel(1), 0xFF123456u);
    EXPECT_EQ(s.GetPixel(2), 0x40123456u) << "a blended pixel keeps its alpha";
    EXPECT_EQ(s.GetPixel(3), 0xFFFF00FFu) << "only the exact key is transparent";

    s.SetPixel(0, 0x00FF00FF);
    EXPECT_EQ(s.KeyPixel(0, 0xFF00FF, true), 0x00FF00FFu);
    EXPECT_EQ(s.GetPixel(0), 0u);
    s.SetPixel(1, 0x00000001);
    EXPECT_EQ(s.KeyPixel(1), 0x00000001u);
    EXPECT_EQ(s.GetPixel(1), 0xFF000001u);
}

TEST(VeSurfaceTest, ReplaceMirrorAndRotate) {
    VeSurface s(3, 2);
    for (int i = 0; i < 6; ++i) {
        s.SetPixel(i, static_cast<uint32_t>(i + 1));
    }
    s.SetPixel(4, 0x7F000002);
    s.ReplaceColour(0xAA000002, 0x12ABCDEF);
    EXPECT_EQ(s.GetPixel(1), 0x00ABCDEFu);
    EXPECT_EQ(s.GetPixel(4), 0x7FABCDEFu) << "the alpha byte is kept";
    s.SetPixel(1, 2);
    s.SetPixel(4, 5);
    s.MirrorHorizontal();
    EXPECT_EQ(std::vector<uint32_t>(s.Pixels(), s.Pixels() + 6), (std::vector<uint32_t>{3, 2, 1, 6, 5, 4}));
    s.Rotate180();
    EXPECT_EQ(std::vector<uint32_t>(s.Pixels(), s.Pixels() + 6), (std::vector<uint32_t>{4, 5, 6, 1, 2, 3}));

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
    EXPECT_EQ(std::vector<uint32_t>(b.Pixels(), b.Pixels() + 4), (std::vector<uint32_t>{1, 2, 3, 4}));

    VeSurface dest(4, 3);
    VeSurface src(2, 2);
    src.SetPixel(0, 7);
    src.SetPixel(1, kColourKey);
    src.SetPixel(2, 8);
    src.SetPixel(3, 9);
    dest.Fill(1);
    dest.BlitKeyed(src, 3, 2);
    EXPECT_EQ(dest.GetXY(3, 2), 7u) << "clipped at the right and bottom";
    dest.BlitKeyed(src, -1, -1);
    EXPECT_EQ(dest.GetXY(0, 0), 9u);
    dest.Fill(1);
    dest.BlitKeyed(src, 1, 0, true);
    EXPECT_EQ(dest.GetXY(1, 0), 7u);
    EXPECT_EQ(dest.GetXY(2, 0), 1u) << "the key is not copied";
    dest.Blit(src, 1, 0);
    EXPECT_EQ(dest.GetXY(2, 0), kColourKey) << "a plain blit copies the key too";
    dest.Blit(src, 3, 2);
    EXPECT_EQ(dest.GetXY(3, 2), 7u);

    VeSurface small(2, 2);
    small.CopyPixels(dest, 3);
    EXPECT_EQ(small.GetPixel(2), dest.GetPixel(2));
}

TEST(VeSurfaceTest, CopiesAndCheckedBlitsAssertOnBadSizes) {
    VeSurface a(2, 2);
    VeSurface b(3, 2);
    VeSurface big(5, 5);
    const char* title = "Assertion failed";
    MessageBoxCapture capture;
    auto failsWith = [&](auto action) {
        capture.boxes.clear();
        try {
            action();
        } catch (const HaltIntercepted& halt) {
            return halt.title == title &&
                   halt.text.find("engine/Source/Screen/Surface/VeSurface.cpp") != std::string::npos;
        }
        return false;
    };
    EXPECT_TRUE(failsWith([&] { a.CopyFrom(b); }));
    EXPECT_TRUE(failsWith([&] { a.CopyPixels(big, 5); }));
    EXPECT_TRUE(failsWith([&] { b.BlitKeyed(a, 2, 0, true); }));
    EXPECT_TRUE(failsWith([&] { big.BlitKeyed(a, 0, -1, true); }));
    EXPECT_TRUE(failsWith([&] { big.DrawImage(b, 1, 0, true, kColourKey, 1.0f, 1.0f, true); }) == false)
        << "centred on x 1 the image starts at 0 and fits";
    EXPECT_TRUE(failsWith([&] { big.DrawImage(b, 0, 0, true, kColourKey, 1.0f, 1.0f, true); }));
}

TEST(VeSurfaceTest, DrawImageCentresBrightensAndBlends) {
    VeSurface src(2, 1);
    src.SetPixel(0, 0x00804020);
    src.SetPixel(1, kColourKey);
    VeSurface dest(4, 1);
    dest.Fill(0x00000000);
    dest.DrawImage(src, 2, 0, false, kColourKey, 2.0f, 1.0f, true);
    EXPECT_EQ(dest.GetPixel(1), 0x00FF8040u) << "centred: x = 2 - 1, brightness clamps at 255";
    EXPECT_EQ(dest.GetPixel(2), 0u);
    dest.DrawImage(src, 3, 0, false, kColourKey, 1.0f, 0.5f);
    EXPECT_EQ(dest.GetPixel(3), 0x00402010u);

    VeSurface same(2, 1);
    same.DrawImage(src, 0, 0);
    EXPECT_EQ(same.GetPixel(1), kColourKey) << "same size at the origin copies everything";
}
