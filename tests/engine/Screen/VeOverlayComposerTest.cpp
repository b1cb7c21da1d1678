#include "Screen/VeOverlayComposer.h"

#include "Screen/Surface/VeSurface.h"

#include <gtest/gtest.h>

#include <vector>

// The key, shades, blends, the colour multiplier, grey and the display size show in the software
// path's stored pictures (VeScreenPathTest); these are the rules those pictures do not show.
TEST(VeOverlayComposerTest, FullAlphaIsOpaqueBrighteningSaturatesAndRowPaddingIsKept) {
    EXPECT_EQ(VeOverlayComposer::ComposePixel(0xFF123456, 256, false), 0xFF123456u);
    EXPECT_EQ(VeOverlayComposer::ComposePixel(0x00C08040, 512, false), 0xFFFFFF80u);
    EXPECT_EQ(VeOverlayComposer::VisibleRows(640, 0.08f), 51);

    VeSurface overlay(2, 4);
    overlay.Fill(0x00FFFFFF);
    std::vector<uint32_t> out(3 * 4, 0x12345678);
    VeOverlayComposer::Compose(overlay, out.data(), 3, 0.5f, 1.0f, false);
    EXPECT_EQ(out[3 + 1], 0xFFFFFFFFu);
    EXPECT_EQ(out[6], 0xFF000000u);
    EXPECT_EQ(out[2], 0x12345678u) << "the padding of each output row is untouched";
}
