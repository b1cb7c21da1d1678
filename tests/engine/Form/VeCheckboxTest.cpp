#include "Form/VeCheckbox.h"

#include "engine/Form/FormTestKit.h"

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
    static uint32_t At(const VeSurface& target, int32_t px, int32_t py) {
        return target.GetXY(px, py) & 0xFFFFFF;
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
}

TEST_F(VeCheckboxTest, StoreValueWritesOneOrZero) {
    VeCheckbox ticked(&style, 0.0f, 0.0f, true);
    ticked.StoreValue();
    EXPECT_EQ(ticked.value, "1");
    ticked.checked = false;
    EXPECT_EQ(ticked.value, "1") << "the value waits for StoreValue";
    ticked.StoreValue();
    EXPECT_EQ(ticked.value, "0");
}

TEST_F(VeCheckboxTest, DrawsBorderBackgroundAndEachMarkWithTheHoverPairWhenHotOrFocused) {
    VeSurface plain = Drawn();
    EXPECT_EQ(At(plain, 10, 10), 0x000000u);
    EXPECT_EQ(At(plain, 29, 29), 0x000000u);
    EXPECT_EQ(At(plain, 20, 20), 0xFFFFFFu) << "unchecked: nothing inside";
    EXPECT_EQ(At(plain, 30, 30), 0x123456u);

    EXPECT_EQ(At(Drawn(true), 10, 10), 0xFF0000u);
    box.selected = true;
    EXPECT_EQ(At(Drawn(), 10, 29), 0xFF0000u);

    // Each kind of mark draws inside the border.
    box.selected = false;
    box.checked = true;
    box.markKind = VeCheckboxStyle::MarkCross;
    VeSurface cross = Drawn();
    EXPECT_EQ(At(cross, 11, 11), 0xAAAAAAu);
    EXPECT_EQ(At(cross, 20, 20), 0xAAAAAAu);
    EXPECT_EQ(At(cross, 28, 12), 0xAAAAAAu);
    EXPECT_EQ(At(cross, 15, 20), 0xFFFFFFu);

    box.markKind = VeCheckboxStyle::MarkSquare;
    VeSurface square = Drawn();
    EXPECT_EQ(At(square, 11, 11), 0xAAAAAAu);
    EXPECT_EQ(At(square, 28, 28), 0xAAAAAAu);
    EXPECT_EQ(At(square, 10, 10), 0x000000u);

    // The "V" sits in the middle of the box: ink there, none along the inside of the border.
    box.markKind = VeCheckboxStyle::MarkGlyph;
    VeSurface glyph = Drawn();
    int ink = 0;
    for (int32_t py = 11; py < 29; ++py) {
        for (int32_t px = 11; px < 29; ++px) {
            const bool isInk = At(glyph, px, py) == 0xAAAAAAu;
            ink += isInk ? 1 : 0;
            if (px == 11 || py == 11 || px == 28 || py == 28) {
                EXPECT_FALSE(isInk) << px << "," << py;
            }
        }
    }
    EXPECT_GT(ink, 12);
    EXPECT_EQ(glyph.GetXY(10, 10) & 0xFFFFFF, 0u);
}

TEST_F(VeCheckboxTest, ADisabledBoxDrawsDarkenedAndIgnoresInput) {
    box.enabled = false;
    box.selected = true;
    rig.MoveMouse(15, 15);
    rig.Tap(box, {VeKey::Space});
    box.Activate();
    EXPECT_FALSE(box.checked);
    EXPECT_EQ(VeCursor::Mode(), VeCursorKind::Arrow);
    const VeSurface target = Drawn();
    EXPECT_EQ(At(target, 20, 20), 0x7F7F7Fu);
    EXPECT_EQ(At(target, 35, 35), 0x123456u);

    box.enabled = true;
    rig.Frame(box);
    EXPECT_EQ(VeCursor::Mode(), VeCursorKind::Hand);
}
