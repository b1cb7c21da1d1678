#include "Form/VeTextInput.h"

#include "engine/Form/FormTestKit.h"

#include "Platform/VeClipboard.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeTextStyle.h"
#include "Support/Screenshot.h"

#include <gtest/gtest.h>

namespace {

constexpr uint32_t kInk = 0x0000AA;
constexpr uint32_t kPaper = 0xFFFFFF;

// Size 2, weight 1, spacing 1: cells are 9 pixels wide (17 high with the small letters' room),
// characters advance by 10 pixels and lines by 18.
VeTextStyle InputStyle(int32_t maxWidth = 0) {
    return VeTextStyle(2, kInk, 1, 1, 1, maxWidth);
}

class VeTextInputTest : public ::testing::Test {
protected:
    void SetUp() override {
        field = std::make_unique<VeTextInput>(rig.input.get(), 10.0f, 20.0f, 200, 40, InputStyle(), 12);
        field->selected = true;
    }
    void TearDown() override { VeClipboard::SetSource(nullptr); }

    void Type(std::initializer_list<int> keys) {
        for (int key : keys) {
            rig.Tap(*field, {key});
        }
    }
    void Shifted(int key) { rig.TapWith(*field, VeKey::LeftShift, key); }
    void Ctrl(int key) { rig.TapWith(*field, VeKey::RightCtrl, key); }
    void SetClipboard(const std::string& text) {
        VeClipboard::SetSource([text] { return text; });
    }
    // Draws the input on a grey surface at the rig's current time.
    VeSurface Drawn() {
        VeSurface target(240, 80);
        target.Fill(0x808080);
        field->Draw(target, true, false);
        return target;
    }
    // The caret's cell at the column (single line): every pixel of the cell is ink.
    static bool CaretAt(const VeSurface& target, int32_t column, int32_t row = 0) {
        const int32_t left = 10 + 5 + 10 * column;
        const int32_t top = 20 + 5 + 18 * row;
        for (int32_t py = top; py < top + 17; ++py) {
            for (int32_t px = left; px < left + 9; ++px) {
                if ((target.GetXY(px, py) & 0xFFFFFF) != kInk) {
                    return false;
                }
            }
        }
        return true;
    }

    FormRig rig;
    std::unique_ptr<VeTextInput> field;
};

} // namespace

TEST_F(VeTextInputTest, KeysTypeTheUsLayoutCharacters) {
    Type({VeKey::Q, VeKey::Num1, VeKey::Num2, VeKey::Num9, VeKey::Num0, VeKey::Num3, VeKey::Num8});
    EXPECT_EQ(field->Content(), "q12903"
                                "8");
    field->Clear();
    for (int key : {VeKey::Z, VeKey::Num1, VeKey::Num2, VeKey::Num9, VeKey::Num0, VeKey::Num3, VeKey::Num7}) {
        Shifted(key);
    }
    EXPECT_EQ(field->Content(), "Z!@()37");

    // Minus types only with Shift; the punctuation of the table either way.
    field->Clear();
    Type({VeKey::Minus, VeKey::Comma, VeKey::Period, VeKey::Semicolon, VeKey::Slash, VeKey::Backslash,
          VeKey::Space});
    EXPECT_EQ(field->Content(), ",.;/\\ ");
    field->Clear();
    for (int key :
         {VeKey::Minus, VeKey::Comma, VeKey::Period, VeKey::Semicolon, VeKey::Slash, VeKey::Backslash}) {
        rig.TapWith(*field, VeKey::RightShift, key);
    }
    EXPECT_EQ(field->Content(), "_,.:?\\");

    // Keys outside the table type nothing.
    field->Clear();
    Type({VeKey::Equals, VeKey::Apostrophe, VeKey::Keypad1, VeKey::KeypadMinus, VeKey::F1, VeKey::Tab,
          VeKey::Return, VeKey::Grave});
    EXPECT_EQ(field->Content(), "");
    EXPECT_EQ(field->caret, 0);
}

TEST_F(VeTextInputTest, TypingInsertsAtTheCaretAndLeavesTheValueUntilStored) {
    field->SetText("ac", 1);
    Type({VeKey::B});
    EXPECT_EQ(field->Content(), "abc");
    EXPECT_EQ(field->caret, 2);
    EXPECT_EQ(field->value, "");
    field->StoreValue();
    EXPECT_EQ(field->value, "abc");
    // The text is laid out again: three cells of 10 pixels less the last spacing.
    EXPECT_EQ(field->text.Width(), 29);
}

TEST_F(VeTextInputTest, BackspaceAtTheStartAndDeleteAtTheEndChangeNothing) {
    field->SetText("abc", 0);
    Type({VeKey::Backspace});
    EXPECT_EQ(field->Content(), "abc");
    EXPECT_EQ(field->caret, 0);

    field->SetText("abc", 3);
    Type({VeKey::Delete, VeKey::KeypadPeriod});
    EXPECT_EQ(field->Content(), "abc");
    EXPECT_EQ(field->caret, 3);

    Type({VeKey::Backspace});
    EXPECT_EQ(field->Content(), "ab");
    EXPECT_EQ(field->caret, 2);
    Type({VeKey::Home, VeKey::Delete});
    EXPECT_EQ(field->Content(), "b");
    Type({VeKey::KeypadPeriod});
    EXPECT_EQ(field->Content(), "");
    EXPECT_EQ(field->caret, 0);
}

TEST_F(VeTextInputTest, ArrowsMoveByCharactersOrWithCtrlToTheSpaces) {
    field->SetText("one two three", 13);
    Type({VeKey::Right});
    EXPECT_EQ(field->caret, 13);
    Type({VeKey::Left, VeKey::Left});
    EXPECT_EQ(field->caret, 11);

    field->caret = 13;
    Ctrl(VeKey::Left);
    EXPECT_EQ(field->caret, 7);
    Ctrl(VeKey::Left);
    EXPECT_EQ(field->caret, 3);
    Ctrl(VeKey::Left);
    EXPECT_EQ(field->caret, 0) << "no space before the first word";
    Type({VeKey::Left});
    EXPECT_EQ(field->caret, 0);

    Ctrl(VeKey::Right);
    EXPECT_EQ(field->caret, 3);
    Ctrl(VeKey::Right);
    EXPECT_EQ(field->caret, 7);
    Ctrl(VeKey::Right);
    EXPECT_EQ(field->caret, 13) << "no space after the last word";

    Type({VeKey::Home});
    EXPECT_EQ(field->caret, 0);
    Type({VeKey::End});
    EXPECT_EQ(field->caret, 13);
    EXPECT_EQ(field->Content(), "one two three") << "moving the caret types nothing";
}

TEST_F(VeTextInputTest, AFullInputTypesNothingMorePastesAreCutToTheRoomLeftAndBecomeOneLine) {
    field->maxCharacters = 4;
    Type({VeKey::A, VeKey::B, VeKey::C, VeKey::D, VeKey::E, VeKey::F});
    EXPECT_EQ(field->Content(), "abcd");
    Type({VeKey::Backspace, VeKey::X});
    EXPECT_EQ(field->Content(), "abcx");

    field->maxCharacters = 10;
    field->SetText("abc", 1);
    SetClipboard("0123456789");
    Ctrl(VeKey::V);
    EXPECT_EQ(field->Content(), "a0123456bc");
    EXPECT_EQ(field->caret, 8);
    // Full: nothing goes in, and Ctrl+V does not type a "v" either.
    Ctrl(VeKey::V);
    EXPECT_EQ(field->Content(), "a0123456bc");

    field->maxCharacters = 30;
    field->SetText("", 0);
    SetClipboard(std::string("top\r\nmid\nend\tx\x01\x7F!"));
    Ctrl(VeKey::V);
    EXPECT_EQ(field->Content(), "top mid end x!");
    EXPECT_EQ(field->caret, 14);
    SetClipboard("");
    Ctrl(VeKey::V);
    Type({VeKey::V});
    EXPECT_EQ(field->Content(), "top mid end x!v");
}

TEST_F(VeTextInputTest, AHeldKeyRepeatsWithTheInputsOwnTimingWhileFocused) {
    field->selected = false;
    field->keyRepeatDelay = 200;
    field->keyRepeatInterval = 50;
    rig.Frame(*field);
    EXPECT_EQ(rig.input->repeatDelay, 300);

    field->selected = true;
    rig.Frame(*field);
    EXPECT_EQ(rig.input->repeatDelay, 200);
    EXPECT_EQ(rig.input->repeatInterval, 50);

    // Held for 400 ms in 10 ms frames: the press, then repeats after more than 200 ms and then
    // every time more than 50 ms have passed.
    field->SetText("abcdefghijkl", 12);
    rig.devices.keys[VeKey::Backspace] = 1;
    for (int frame = 0; frame <= 40; ++frame) {
        rig.Frame(*field, 10);
    }
    rig.devices.keys[VeKey::Backspace] = 0;
    rig.Frame(*field);
    // Presses at 0, 210, 270, 330 and 390 ms.
    EXPECT_EQ(field->Content(), "abcdefg");

    // Losing the focus gives the old timing back.
    field->selected = false;
    rig.Frame(*field);
    EXPECT_EQ(rig.input->repeatDelay, 300);
    EXPECT_EQ(rig.input->repeatInterval, 75);
}

TEST_F(VeTextInputTest, TheCaretBlinksWithTheClockUnlessAKeyIsHeld) {
    field->SetText("abc", 2);
    // Shown in the first half of every second, hidden in the second.
    for (const auto& [at, shown] :
         {std::pair{42100, true}, {42499, true}, {42500, false}, {42999, false}, {43000, true}}) {
        rig.now = at;
        EXPECT_EQ(CaretAt(Drawn(), 2), shown) << at;
    }

    // In the hidden half a held key (any key) keeps it on.
    rig.devices.keys[VeKey::LeftShift] = 1;
    rig.input->Update();
    rig.now = 43700;
    EXPECT_TRUE(CaretAt(Drawn(), 2));
    rig.devices.keys[VeKey::LeftShift] = 0;
    rig.input->Update();
    EXPECT_FALSE(CaretAt(Drawn(), 2));

    // Only the focused input shows a caret.
    rig.now = 44000;
    field->selected = false;
    EXPECT_FALSE(CaretAt(Drawn(), 2));
}

TEST_F(VeTextInputTest, AClickPutsTheCaretUnderTheMouseWhichShowsTheTextCursor) {
    field->SetText("abcdef", 0);
    // Column 2 spans x = 35 to 44 (origin 10 + padding 5).
    rig.Click(*field, 37, 30);
    EXPECT_EQ(field->caret, 2);
    rig.Click(*field, 44, 30);
    EXPECT_EQ(field->caret, 2);
    rig.Click(*field, 45, 30);
    EXPECT_EQ(field->caret, 3);
    // Past the last character: the end; left of the text: the start.
    rig.Click(*field, 205, 58);
    EXPECT_EQ(field->caret, 6);
    rig.Click(*field, 11, 21);
    EXPECT_EQ(field->caret, 0);
    // A click outside the box, or a click that only moved, leaves the caret.
    rig.Click(*field, 215, 30);
    EXPECT_EQ(field->caret, 0);
    rig.MoveMouse(60, 30);
    rig.Frame(*field);
    EXPECT_EQ(field->caret, 0);
    EXPECT_EQ(VeCursor::Mode(), VeCursorKind::IBeam) << "the mouse over an input asks for the text cursor";
}

TEST_F(VeTextInputTest, WrappedTextPlacesAndDrawsTheCaretByLine) {
    // Six characters fit a 50-pixel line: "abc def ghi" wraps after "abc " and "def ".
    field = std::make_unique<VeTextInput>(rig.input.get(), 10.0f, 20.0f, 200, 60, InputStyle(50), 30);
    field->selected = true;
    field->SetText("abc def ghi", 0);
    ASSERT_EQ(field->text.wrapPositions, (std::vector<int32_t>{3, 7}));

    rig.Click(*field, 15 + 10 + 3, 25 + 18 + 2); // row 2, column 1
    EXPECT_EQ(field->caret, 5);
    rig.Click(*field, 200, 25 + 36 + 2); // right of the last line
    EXPECT_EQ(field->caret, 11);
    rig.Click(*field, 200, 25 + 18 + 2); // right of the second line: its end
    EXPECT_EQ(field->caret, 7);
    rig.Click(*field, 60, 25 + 2); // right of the first line
    EXPECT_EQ(field->caret, 3);

    rig.now = 50000;
    field->caret = 5;
    EXPECT_TRUE(CaretAt(Drawn(), 1, 1));
    field->caret = 8;
    EXPECT_TRUE(CaretAt(Drawn(), 0, 2));

    // Lines shorter than a full line leave cells empty, and those count against the limit.
    EXPECT_EQ(field->Limit(), 31 + (3 - 0 - 5) + (7 - 3 - 5));
}

TEST_F(VeTextInputTest, APasswordShowsOneXPerCharacterAndKeepsTheRealValue) {
    field->SetPassword();
    Type({VeKey::S, VeKey::Num3});
    Shifted(VeKey::K);
    EXPECT_EQ(field->Content(), "s3K");
    field->StoreValue();
    EXPECT_EQ(field->value, "s3K");

    EXPECT_TRUE(SamePicture(field->text.surface, VeText("XXX", &field->text.style).surface));
}

TEST_F(VeTextInputTest, ADisabledInputIgnoresInputAndDrawsDarkened) {
    field->SetText("abc", 3);
    field->enabled = false;
    Type({VeKey::D, VeKey::Backspace, VeKey::Home});
    Ctrl(VeKey::V);
    rig.Click(*field, 20, 30);
    EXPECT_EQ(field->Content(), "abc");
    EXPECT_EQ(field->caret, 3);
    EXPECT_EQ(VeCursor::Mode(), VeCursorKind::Arrow);

    rig.now = 60000;
    const VeSurface target = Drawn();
    EXPECT_FALSE(CaretAt(target, 3));
    // The white inside is now at half brightness.
    EXPECT_EQ(target.GetXY(150, 50) & 0xFFFFFF, 0x7F7F7Fu);

    field->enabled = true;
    EXPECT_EQ(Drawn().GetXY(150, 50) & 0xFFFFFF, kPaper);
}
