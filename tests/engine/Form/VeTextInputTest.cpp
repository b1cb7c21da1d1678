#include "Form/VeTextInput.h"

#include "engine/Form/FormTestKit.h"
#include "engine/Screen/PixelProbe.h"

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

    // Each key tapped in turn, with the modifier held throughout when one is given (0: none).
    void Type(std::initializer_list<int> keys, int modifier = 0) {
        rig.devices.keys[modifier] = modifier != 0; // scancode 0 is no key
        for (int key : keys) {
            rig.Tap(*field, {key});
        }
        rig.devices.keys[modifier] = 0;
    }
    void Ctrl(int key) { Type({key}, VeKey::RightCtrl); }
    void Paste(const std::string& clipboard) {
        VeClipboard::SetSource([clipboard] { return clipboard; });
        Ctrl(VeKey::V);
    }
    // The content with "|" at the caret.
    std::string State() const {
        const std::string content = field->Content();
        const size_t caret = static_cast<size_t>(field->caret);
        return content.substr(0, caret) + '|' + content.substr(caret);
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
        return CountColour(target, kInk, left, top, left + 9, top + 17) == 9 * 17;
    }

    FormRig rig;
    std::unique_ptr<VeTextInput> field;
};

} // namespace

TEST_F(VeTextInputTest, KeysTypeTheUsLayoutCharacters) {
    using namespace VeKey;
    struct Row {
        int modifier;
        std::initializer_list<int> keys;
        std::string typed;
    };
    const Row rows[] = {
        {0, {Q, Num1, Num2, Num9, Num0, Num3, Num8}, "q129038"},
        {LeftShift, {Z, Num1, Num2, Num9, Num0, Num3, Num7}, "Z!@()37"},
        // Minus types only with Shift; the punctuation of the table either way.
        {0, {Minus, Comma, Period, Semicolon, Slash, Backslash, Space}, ",.;/\\ "},
        {RightShift, {Minus, Comma, Period, Semicolon, Slash, Backslash}, "_,.:?\\"},
        // Keys outside the table type nothing.
        {0, {Equals, Apostrophe, Keypad1, KeypadMinus, F1, Tab, Return, Grave}, ""},
    };
    for (const Row& row : rows) {
        field->Clear();
        Type(row.keys, row.modifier);
        EXPECT_EQ(State(), row.typed + "|");
    }
}

TEST_F(VeTextInputTest, TypingInsertsAtTheCaretAndLeavesTheValueUntilStored) {
    field->SetText("ac", 1);
    Type({VeKey::B});
    EXPECT_EQ(State(), "ab|c");
    EXPECT_EQ(field->value, "");
    field->StoreValue();
    EXPECT_EQ(field->value, "abc");
    // The text is laid out again: three cells of 10 pixels less the last spacing.
    EXPECT_EQ(field->text.Width(), 29);
}

TEST_F(VeTextInputTest, BackspaceAtTheStartAndDeleteAtTheEndChangeNothing) {
    field->SetText("abc", 0);
    Type({VeKey::Backspace});
    EXPECT_EQ(State(), "|abc");
    field->SetText("abc", 3);
    Type({VeKey::Delete, VeKey::KeypadPeriod});
    EXPECT_EQ(State(), "abc|");

    Type({VeKey::Backspace});
    EXPECT_EQ(State(), "ab|");
    Type({VeKey::Home, VeKey::Delete});
    EXPECT_EQ(State(), "|b");
    Type({VeKey::KeypadPeriod});
    EXPECT_EQ(State(), "|");
}

TEST_F(VeTextInputTest, ArrowsMoveByCharactersOrWithCtrlToTheSpaces) {
    field->SetText("one two three", 13);
    // Each key's caret in turn; Ctrl stops at the spaces, or at either end when none is left.
    const std::tuple<bool, int, std::string> steps[] = {
        {false, VeKey::Right, "one two three|"}, {false, VeKey::Left, "one two thre|e"},
        {false, VeKey::End, "one two three|"},   {true, VeKey::Left, "one two| three"},
        {true, VeKey::Left, "one| two three"},   {true, VeKey::Left, "|one two three"},
        {false, VeKey::Left, "|one two three"},  {true, VeKey::Right, "one| two three"},
        {true, VeKey::Right, "one two| three"},  {true, VeKey::Right, "one two three|"},
        {false, VeKey::Home, "|one two three"},
    };
    for (const auto& [ctrl, key, state] : steps) {
        Type({key}, ctrl ? VeKey::RightCtrl : 0);
        EXPECT_EQ(State(), state) << (ctrl ? "Ctrl+" : "") << key;
    }
}

TEST_F(VeTextInputTest, AFullInputTypesNothingMorePastesAreCutToTheRoomLeftAndBecomeOneLine) {
    field->maxCharacters = 4;
    Type({VeKey::A, VeKey::B, VeKey::C, VeKey::D, VeKey::E, VeKey::F});
    EXPECT_EQ(State(), "abcd|");
    Type({VeKey::Backspace, VeKey::X});
    EXPECT_EQ(State(), "abcx|");

    field->maxCharacters = 10;
    field->SetText("abc", 1);
    Paste("0123456789");
    EXPECT_EQ(State(), "a0123456|bc");
    // Full: nothing goes in, and Ctrl+V does not type a "v" either.
    Ctrl(VeKey::V);
    EXPECT_EQ(State(), "a0123456|bc");

    field->maxCharacters = 30;
    field->SetText("", 0);
    Paste(std::string("top\r\nmid\nend\tx\x01\x7F!"));
    EXPECT_EQ(State(), "top mid end x!|");
    Paste("");
    Type({VeKey::V});
    EXPECT_EQ(State(), "top mid end x!v|");
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
    // Column 2 spans x = 35 to 44 (origin 10 + padding 5). Past the last character: the end; left
    // of the text: the start; a click outside the box leaves the caret.
    const std::tuple<int, int, int> clicks[] = {{37, 30, 2},  {44, 30, 2}, {45, 30, 3},
                                                {205, 58, 6}, {11, 21, 0}, {215, 30, 0}};
    for (const auto& [x, y, caret] : clicks) {
        rig.Click(*field, x, y);
        EXPECT_EQ(field->caret, caret) << x << "," << y;
    }
    // A click that only moved leaves it too.
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

    // Row 2, column 1; right of the last line; right of the second line (its end); right of the
    // first line.
    const std::tuple<int, int, int> clicks[] = {
        {15 + 10 + 3, 25 + 18 + 2, 5}, {200, 25 + 36 + 2, 11}, {200, 25 + 18 + 2, 7}, {60, 25 + 2, 3}};
    for (const auto& [x, y, caret] : clicks) {
        rig.Click(*field, x, y);
        EXPECT_EQ(field->caret, caret) << x << "," << y;
    }

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
    Type({VeKey::K}, VeKey::LeftShift);
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
    EXPECT_EQ(State(), "abc|");
    EXPECT_EQ(VeCursor::Mode(), VeCursorKind::Arrow);

    rig.now = 60000;
    const VeSurface target = Drawn();
    EXPECT_FALSE(CaretAt(target, 3));
    // The white inside is now at half brightness.
    EXPECT_EQ(ColourAt(target, 150, 50), 0x7F7F7Fu);

    field->enabled = true;
    EXPECT_EQ(ColourAt(Drawn(), 150, 50), kPaper);
}
