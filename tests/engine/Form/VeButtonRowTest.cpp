// The button row through its public interface: walking it, activation by keys, mouse and pad,
// and what it sounds and shows while the mouse moves over it.
#include "Form/VeButtonRow.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/VeCursor.h"

#include "FormTestKit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {
class ButtonRowTest : public ::testing::Test {
protected:
    ButtonRowTest() : target(640, 640), row(&target, rig.input.get(), nullptr, [this] { return pad; }) {
        row.SetSoundPlayer([this](const std::string& name) { sounds.push_back(name); });
        style.hoverSound = "Hover";
        row.SetButtonStyle(&style);
        for (const char* label : {"ONE", "TWO", "THREE"}) {
            row.AddButton(label);
        }
        row.Layout();
        row.Arrange(VeButtonRow::Direction::Vertical, 320.0f, 100.0f);
        VeButtonRow::ResetPadLatch();
    }

    // One frame: input read, the row drawn, the label asked for, presses cleared.
    bool Frame(const std::string& label) {
        rig.input->Update();
        row.MouseMoved(static_cast<float>(rig.input->mouseX), static_cast<float>(rig.input->mouseY));
        row.Draw(false);
        const bool activated = row.Activated(label);
        rig.input->ClearPressed();
        return activated;
    }

    FormRig rig;
    VeSurface target;
    VeButtonStyle style{200, 40};
    GamePad::State pad;
    std::vector<std::string> sounds;
    VeButtonRow row;
};
} // namespace

TEST_F(ButtonRowTest, WalksOnlyEnabledButtonsAndWraps) {
    row.SetEnabled("TWO", false);
    row.SelectNext();
    EXPECT_EQ(row.SelectedLabel(), "THREE");
    row.SelectNext();
    EXPECT_EQ(row.SelectedLabel(), "ONE");
    row.SelectPrevious();
    EXPECT_EQ(row.SelectedLabel(), "THREE");
    row.SelectByLabel("TWO");
    EXPECT_EQ(row.SelectedLabel(), "THREE");
    row.SelectFirst();
    EXPECT_EQ(row.SelectedLabel(), "ONE");

    row.SetEnabled("THREE", false);
    row.SelectNext();
    row.SelectPrevious();
    row.SelectLast();
    EXPECT_EQ(row.SelectedLabel(), "ONE");
}

TEST_F(ButtonRowTest, KeysActivateOnlyTheSelectedButton) {
    row.SelectByLabel("TWO");
    rig.devices.keys[VeKey::Return] = 1;
    rig.input->Update();
    EXPECT_FALSE(row.Activated("ONE"));
    EXPECT_TRUE(row.Activated("TWO"));
    rig.input->ClearPressed();
    rig.devices.keys[VeKey::Return] = 0;
    EXPECT_FALSE(Frame("TWO"));
    EXPECT_EQ(std::count(sounds.begin(), sounds.end(), "Select"), 1);
}

TEST_F(ButtonRowTest, ClickActivatesAndDisabledButtonSaysSo) {
    const VeButton& two = *row.Button("TWO");
    rig.MoveMouse(static_cast<int>(two.x) + 10, static_cast<int>(two.y) + 10);
    Frame("");
    EXPECT_EQ(row.SelectedLabel(), "TWO");
    EXPECT_EQ(VeCursor::Mode(), VeCursorKind::Hand);
    EXPECT_EQ(sounds, std::vector<std::string>({"Hover"}));

    rig.devices.buttons = 1;
    EXPECT_TRUE(Frame("TWO"));
    rig.devices.buttons = 0;
    Frame("");

    sounds.clear();
    row.SetEnabled("TWO", false);
    rig.devices.buttons = 1;
    EXPECT_FALSE(Frame("TWO"));
    EXPECT_EQ(sounds.back(), "Disabled");

    rig.devices.buttons = 0;
    rig.MoveMouse(5, 5);
    Frame("");
    EXPECT_EQ(VeCursor::Mode(), VeCursorKind::Arrow);
}

TEST_F(ButtonRowTest, HeldPadAActivatesOnceUntilEverythingIsReleased) {
    pad.a = true;
    EXPECT_TRUE(Frame("ONE"));
    EXPECT_FALSE(Frame("ONE"));
    pad.a = false;
    pad.leftX = 0.9f; // the stick still pushed: not yet released
    Frame("ONE");
    pad.a = true;
    EXPECT_FALSE(Frame("ONE"));
    pad = GamePad::State{};
    Frame("ONE");
    pad.a = true;
    EXPECT_TRUE(Frame("ONE"));
    row.SetActive(false);
    pad = GamePad::State{};
    Frame("ONE");
    pad.a = true;
    EXPECT_FALSE(Frame("ONE"));
}
