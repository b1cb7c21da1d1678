#include "Form/VeButton.h"

#include "engine/Form/FormTestKit.h"
#include "engine/Screen/PixelProbe.h"

#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeTextStyle.h"

#include <gtest/gtest.h>

namespace {

constexpr uint32_t kBackdrop = 0x102030;

class VeButtonTest : public ::testing::Test {
protected:
    VeButtonTest() : style(60, 20), labelStyle(1, 0x00FF00, 1, 1, 0) {
        style.x = 10.7f;
        style.y = 5.2f;
        style.disabledLabelColour = 0x404040;
        button = std::make_unique<VeButton>("OK", &style, &labelStyle);
    }

    VeSurface Drawn() {
        VeSurface target(80, 40);
        target.Fill(kBackdrop);
        button->Draw(target, true, false);
        return target;
    }
    // Pixels of the colour inside the label's box ("OK" is 11 x 5 at size 1, centred at
    // 10 + 30 - 5 = 35, 5 + 10 - 2 = 13); -1 when any lies outside it.
    static int LabelPixels(const VeSurface& target, uint32_t colour) {
        const int inside = CountColour(target, colour, 35, 13, 46, 18);
        return inside == CountColour(target, colour) ? inside : -1;
    }
    // One frame with the mouse at (x, y), the left button down or up: whether it counted as a click.
    bool ClickFrame(int mouseX, int mouseY, bool down) {
        rig.MoveMouse(mouseX, mouseY);
        rig.devices.buttons = down ? 1 : 0;
        rig.input->Update();
        const bool over = button->MouseOver(*rig.input);
        button->Update(*rig.input, over);
        const bool clicked = button->Clicked(*rig.input, over);
        rig.input->ClearPressed();
        return clicked;
    }

    FormRig rig;
    VeButtonStyle style;
    VeTextStyle labelStyle;
    std::unique_ptr<VeButton> button;
};

} // namespace

TEST_F(VeButtonTest, DrawsFillBorderRingsAndACentredLabelOnWholePixels) {
    const VeSurface target = Drawn();
    // Three rings of the border colour, then the fill (both 0xCCCCCC by default).
    EXPECT_EQ(Mismatches(target, {{10, 5, 0xCCCCCC},
                                  {69, 24, 0xCCCCCC},
                                  {9, 5, kBackdrop},
                                  {70, 24, kBackdrop},
                                  {10, 25, kBackdrop}}),
              "");
    EXPECT_GT(LabelPixels(target, 0x00FF00), 10);

    style.borderColour = 0x000000;
    button->SetStyle(&style);
    EXPECT_EQ(Mismatches(Drawn(), {{12, 7, 0x000000}, {13, 8, 0xCCCCCC}}), "");

    button->look.showLabel = false;
    EXPECT_EQ(LabelPixels(Drawn(), 0x00FF00), 0);

    // A button made without styles takes them later.
    VeButton later("LATER");
    later.SetStyle(&style);
    later.SetLabelStyle(labelStyle);
    EXPECT_EQ(later.width, 60);
    EXPECT_EQ(later.LabelText().Width(), 5 * 6 - 1) << "the label is laid out in the late style";
}

TEST_F(VeButtonTest, TheFocusedButtonShowsTheHoverLook) {
    style.hoverBorderThickness = 2;
    style.hoverLabelColourOn = true;
    style.hoverLabelColour = 0xFFFF00;
    button->SetStyle(&style);
    button->selected = true;
    VeSurface focused = Drawn();
    EXPECT_EQ(Mismatches(focused, {{10, 5, 0x0000FF}, {11, 6, 0x0000FF}, {12, 7, 0xCCCCCC}}), "");
    EXPECT_GT(LabelPixels(focused, 0xFFFF00), 10);
    EXPECT_EQ(LabelPixels(focused, 0x00FF00), 0);

    // Losing the focus gives the label its own colour back.
    button->selected = false;
    VeSurface plain = Drawn();
    EXPECT_EQ(ColourAt(plain, 10, 5), 0xCCCCCCu);
    EXPECT_EQ(LabelPixels(plain, 0xFFFF00), 0);
    EXPECT_GT(LabelPixels(plain, 0x00FF00), 10);

    // A hover fill covers the box instead of the rings; the label stays on top.
    button->look.hoverFill = true;
    button->look.hoverFillColour = 0x880000;
    button->selected = true;
    VeSurface filled = Drawn();
    EXPECT_EQ(Mismatches(filled, {{10, 5, 0x880000}, {20, 15, 0x880000}}), "");
    EXPECT_GT(LabelPixels(filled, 0xFFFF00), 10);
}

TEST_F(VeButtonTest, ImagesReplaceTheFillsAndKeepTheirTransparentKey) {
    VeSurface normal(60, 20);
    normal.Fill(0x00AA00);
    normal.Rect(0, 0, 5, 5, kColourKey);
    VeSurface hover(60, 20);
    hover.Fill(kColourKey);
    hover.Rect(20, 5, 10, 10, 0xAA00AA);
    style.normalImage = &normal;
    style.hoverImage = &hover;
    style.borderThickness = 0;
    style.hoverBorderThickness = 0;
    button->SetStyle(&style);
    button->look.showLabel = false;

    // The key shows what is beneath; the hover image is drawn over the normal one.
    EXPECT_EQ(Mismatches(Drawn(), {{20, 15, 0x00AA00}, {10, 5, kBackdrop}}), "");
    button->selected = true;
    EXPECT_EQ(Mismatches(Drawn(), {{35, 15, 0xAA00AA}, {20, 15, 0x00AA00}}), "");
}

TEST_F(VeButtonTest, ADisabledButtonIsDarkenedAndAnswersNoPress) {
    style.disabledFillColour = 0xC0C0C0;
    button->SetStyle(&style);
    button->enabled = false;
    button->selected = true;
    const VeSurface target = Drawn();
    EXPECT_EQ(Mismatches(target, {{20, 10, 0x606060}, {75, 30, kBackdrop}}), "")
        << "the disabled fill at half brightness";
    EXPECT_GT(LabelPixels(target, 0x404040), 10) << "the label in the disabled colour";

    rig.MoveMouse(30, 10);
    rig.devices.buttons = 1;
    rig.devices.keys[VeKey::Return] = 1;
    rig.input->Update();
    button->Update(*rig.input, true);
    EXPECT_FALSE(button->Clicked(*rig.input, true));
    EXPECT_FALSE(button->Confirmed(*rig.input));
    EXPECT_EQ(VeCursor::Mode(), VeCursorKind::Arrow);

    // Enabled again it answers both.
    button->enabled = true;
    EXPECT_TRUE(button->Clicked(*rig.input, true));
    EXPECT_TRUE(button->Confirmed(*rig.input));
}

TEST_F(VeButtonTest, ClicksCountOnlyOverTheButtonInTheirFirstFrameWhereTheHandShows) {
    EXPECT_FALSE(ClickFrame(5, 5, true)) << "outside";
    EXPECT_EQ(VeCursor::Mode(), VeCursorKind::Arrow);
    EXPECT_FALSE(ClickFrame(30, 10, true)) << "the button was already down when it came over";
    EXPECT_EQ(VeCursor::Mode(), VeCursorKind::Hand) << "the mouse over the button shows the hand";
    EXPECT_FALSE(ClickFrame(30, 10, false));
    EXPECT_TRUE(ClickFrame(30, 10, true));
    EXPECT_FALSE(ClickFrame(30, 10, true)) << "held";
    EXPECT_FALSE(ClickFrame(30, 10, false));
    EXPECT_TRUE(ClickFrame(70, 25, true)) << "the far corner is inside";
    EXPECT_FALSE(ClickFrame(71, 25, false));
    EXPECT_FALSE(ClickFrame(71, 25, true));
}

TEST_F(VeButtonTest, ConfirmKeysPressTheFocusedButton) {
    for (int key : {VeKey::Space, VeKey::Return, VeKey::KeypadEnter}) {
        button->selected = true;
        rig.devices.keys[key] = 1;
        rig.input->Update();
        EXPECT_TRUE(button->Confirmed(*rig.input)) << key;
        EXPECT_TRUE(button->Pressed(*rig.input, false)) << key;
        button->selected = false;
        EXPECT_FALSE(button->Confirmed(*rig.input)) << key;
        rig.input->ClearPressed();
        rig.devices.keys[key] = 0;
        rig.input->Update();
    }
    button->selected = true;
    rig.devices.keys[VeKey::Escape] = 1;
    rig.input->Update();
    EXPECT_FALSE(button->Confirmed(*rig.input));
}
