#include "Form/VeCheckbox.h"

#include "engine/Form/FormTestKit.h"
#include "engine/Screen/PixelProbe.h"

#include "Screen/Surface/VeSurface.h"

#include <gtest/gtest.h>

namespace {

class VeCheckboxTest : public ::testing::Test {
protected:
    VeCheckboxTest() : box(&style, 10.0f, 10.0f) {}

    VeSurface Drawn(bool mouseOver = false) {
        VeSurface target(40, 40);
        target.Fill(0x123456);
        box.Draw(target, true, mouseOver);
        return target;
    }

    FormRig rig;
    VeCheckboxStyle style;
    VeCheckbox box;
};

} // namespace

TEST_F(VeCheckboxTest, SpaceAndActivateFlipOnlyTheFocusedBoxSpaceOnEveryPressAndRepeat) {
    rig.Tap(box, {VeKey::Space});
    box.Activate();
    EXPECT_FALSE(box.checked) << "a box without the focus ignores Space and Activate";
    box.selected = true;
    box.Activate();
    EXPECT_TRUE(box.checked);
    box.Activate();
    EXPECT_FALSE(box.checked);

    rig.Tap(box, {VeKey::Space});
    EXPECT_TRUE(box.checked);
    rig.Tap(box, {VeKey::Return, VeKey::X});
    EXPECT_TRUE(box.checked) << "only Space flips it";

    // Held for a second in 10 ms frames: the press and nine repeats (after 300 ms, then every 80).
    int flips = 0;
    bool last = box.checked;
    rig.devices.keys[VeKey::Space] = 1;
    for (int frame = 0; frame <= 100; ++frame) {
        rig.Frame(box, 10);
        flips += box.checked != last ? 1 : 0;
        last = box.checked;
    }
    EXPECT_EQ(flips, 10);

    // The value is "1" or "0", and waits for StoreValue.
    box.StoreValue();
    EXPECT_EQ(box.value, "1");
    box.checked = false;
    EXPECT_EQ(box.value, "1");
    box.StoreValue();
    EXPECT_EQ(box.value, "0");
}

TEST_F(VeCheckboxTest, DrawsBorderBackgroundAndEachMarkWithTheHoverPairWhenHotOrFocused) {
    // Unchecked: nothing inside the border.
    EXPECT_EQ(
        Mismatches(Drawn(), {{10, 10, 0x000000}, {29, 29, 0x000000}, {20, 20, 0xFFFFFF}, {30, 30, 0x123456}}),
        "");
    EXPECT_EQ(ColourAt(Drawn(true), 10, 10), 0xFF0000u);
    box.selected = true;
    EXPECT_EQ(ColourAt(Drawn(), 10, 29), 0xFF0000u);

    // Each kind of mark draws inside the border.
    box.selected = false;
    box.checked = true;
    box.markKind = VeCheckboxStyle::MarkCross;
    EXPECT_EQ(
        Mismatches(Drawn(), {{11, 11, 0xAAAAAA}, {20, 20, 0xAAAAAA}, {28, 12, 0xAAAAAA}, {15, 20, 0xFFFFFF}}),
        "");
    box.markKind = VeCheckboxStyle::MarkSquare;
    EXPECT_EQ(Mismatches(Drawn(), {{11, 11, 0xAAAAAA}, {28, 28, 0xAAAAAA}, {10, 10, 0x000000}}), "");

    // The "V" sits in the middle of the box: ink there, none along the inside of the border.
    box.markKind = VeCheckboxStyle::MarkGlyph;
    VeSurface glyph = Drawn();
    EXPECT_GT(CountColour(glyph, 0xAAAAAA, 11, 11, 29, 29), 12);
    EXPECT_EQ(CountColour(glyph, 0xAAAAAA, 12, 12, 28, 28), CountColour(glyph, 0xAAAAAA));
    EXPECT_EQ(ColourAt(glyph, 10, 10), 0u);
}

TEST_F(VeCheckboxTest, ADisabledBoxDrawsDarkenedAndIgnoresInput) {
    box.enabled = false;
    box.selected = true;
    rig.MoveMouse(15, 15);
    rig.Tap(box, {VeKey::Space});
    box.Activate();
    EXPECT_FALSE(box.checked);
    EXPECT_EQ(VeCursor::Mode(), VeCursorKind::Arrow);
    EXPECT_EQ(Mismatches(Drawn(), {{20, 20, 0x7F7F7F}, {35, 35, 0x123456}}), "");

    box.enabled = true;
    rig.Frame(box);
    EXPECT_EQ(VeCursor::Mode(), VeCursorKind::Hand);
}
