#pragma once
// A single- or multi-line text input. The content is the string of its text (drawn as one "X" per
// character for passwords, while the content keeps the real characters); value is only updated by
// StoreValue.
//
// While it has the focus it takes the keys of this frame (first presses and auto-repeats), the
// first that applies winning: Backspace, Delete (or keypad period), Left and Right (with Ctrl, to
// the previous or next space), Home, End, Ctrl+V (pastes the clipboard, cut to the room left), or
// one typed character (US layout, VeUsKeyboard) while the content is below its limit. A left click
// on the input puts the caret under the mouse. On gaining the focus it applies its own key repeat
// timing to the input state, and gives the previous timing back when it loses the focus.
//
// The caret is a block of one character cell in the text colour, shown only while the input has
// the focus: in the first half of every second of the process clock, and always while a key is
// held.
#include "Form/VeFormElement.h"
#include "Screen/Text/VeText.h"

#include <string>

class VeTextStyle;

class VeTextInput : public VeFormElement {
public:
    VeTextInput(VeInput* input, float x, float y, int32_t width, int32_t height, const VeTextStyle& textStyle,
                int32_t maxCharacters, const std::string& initialText = std::string());

    void Draw(VeSurface& target, bool checkBounds, bool mouseOver) override;
    void Update(VeInput& input, bool mouseOver) override;
    void StoreValue() override { value = text.text; }

    // Replaces the content and puts the caret at the position (clamped to the content).
    void SetText(const std::string& content, int32_t caretPosition);
    void Clear() { SetText(std::string(), 0); }
    // Shows the content masked from now on.
    void SetPassword();
    const std::string& Content() const { return text.text; }
    // How many characters the content may hold at most now (depends on how the text wraps).
    int32_t Limit() const;
    // Whether the caret would be drawn now.
    bool CaretVisible() const;

    VeText text;
    // 0xFF00FF: no background.
    uint32_t backgroundColour = 0xFFFFFF;
    float backgroundAlpha = 1.0f;
    VeInput* input;
    int32_t paddingX = 5;
    int32_t paddingY = 5;
    int32_t maxCharacters;
    uint32_t selectedFrameColour = 0xFF0000;
    uint32_t frameColour = 0x000000;
    float frameThicknessHorizontal = 1.0f;
    float frameThicknessVertical = 1.0f;
    int32_t keyRepeatDelay = 300;
    int32_t keyRepeatInterval = 40;
    int32_t caret = 0;
    bool password = false;

private:
    void HandleKeys(VeInput& state);
    void PlaceCaret(int32_t mouseX, int32_t mouseY);
    void Paste();
    void Insert(const std::string& characters);
    void ContentChanged();
    int32_t Length() const { return static_cast<int32_t>(text.text.size()); }
    // The line the caret is on (0 without a width limit) and where that line starts.
    int32_t CaretRow() const;
    int32_t LineStart(int32_t row) const;

    // The repeat timing of the input state before this input applied its own.
    int32_t previousRepeatDelay = 0;
    int32_t previousRepeatInterval = 0;
    bool repeatApplied = false;
};
