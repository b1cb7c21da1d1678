#include "Screen/VeOverlayComposer.h"

#include "Screen/Surface/VeSurface.h"

#include <gtest/gtest.h>

#include <vector>

TEST(VeOverlayComposerTest, PixelsOverBlackFollowTheTextureAlphaRules) {
    EXPECT_EQ(VeOverlayComposer::ComposePixel(kColourKey, 256, false), 0xFF000000u)
        << "the key is transparent";
    EXPECT_EQ(VeOverlayComposer::ComposePixel(0x00123456, 256, false), 0xFF123456u) << "alpha 0 is opaque";
    EXPECT_EQ(VeOverlayComposer::ComposePixel(0xFF123456, 256, false), 0xFF123456u);
    EXPECT_EQ(VeOverlayComposer::ComposePixel(0x7F000000, 256, false), 0xFF000000u) << "a shade over black";
    EXPECT_EQ(VeOverlayComposer::ComposePixel(0x80FF8000, 256, false), 0xFF804000u) << "blended, 128 of 255";
    EXPECT_EQ(VeOverlayComposer::ComposePixel(0x00808080, 128, false), 0xFF404040u);
    EXPECT_EQ(VeOverlayComposer::ComposePixel(0x00C08040, 512, false), 0xFFFFFF80u)
        << "brightening saturates";
    EXPECT_EQ(VeOverlayComposer::ComposePixel(0x00FF0000, 256, true), 0xFF4C4C4Cu) << "grey by luminance";
}

TEST(VeOverlayComposerTest, OnlyTheTopDisplaySizeRowsAreShown) {
    EXPECT_EQ(VeOverlayComposer::VisibleRows(640, 0.08f), 51);
    EXPECT_EQ(VeOverlayComposer::VisibleRows(640, 1.0f), 640);
    EXPECT_EQ(VeOverlayComposer::VisibleRows(640, 3.0f), 640);
    EXPECT_EQ(VeOverlayComposer::VisibleRows(640, -1.0f), 0);

    VeSurface overlay(2, 4);
    overlay.Fill(0x00FFFFFF);
    std::vector<uint32_t> out(3 * 4, 0x12345678);
    VeOverlayComposer::Compose(overlay, out.data(), 3, 0.5f, 1.0f, false);
    EXPECT_EQ(out[0], 0xFFFFFFFFu);
    EXPECT_EQ(out[3 + 1], 0xFFFFFFFFu);
    EXPECT_EQ(out[6], 0xFF000000u) << "rows below the display size are black";
    EXPECT_EQ(out[2], 0x12345678u) << "the padding of each output row is untouched";
}
