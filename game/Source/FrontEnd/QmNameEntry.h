#pragma once
// The name entry after a run that entered a map's top ten: a prompt and the text input
// "ipt_name", pre-filled with the remembered name, holding the focus with its blinking caret.
// Confirm (Return, keypad Enter or the pad's A) takes the name, Back (Escape or the pad's B)
// declines. The name taken is one the results table can draw: letters in capitals, characters
// the stroke font has no glyph for and the score file's separators left out, blanks trimmed, at
// most 15 characters; when nothing is left the fallback name is used.
#include "Form/VeTextInput.h"
#include "Screen/Text/VeText.h"
#include "Screen/Text/VeTextStyle.h"

#include <memory>
#include <string>

class QmControls;
class VeInput;
class VeSurface;

class QmNameEntry {
public:
    enum class Result { None, Confirmed, Declined };
    static constexpr int kMaxNameLength = 15;
    static constexpr const char* kInputName = "ipt_name";
    static constexpr int kPromptY = 79;
    static constexpr int kInputY = 90;
    static constexpr int kInputWidth = 300;
    static constexpr int kInputHeight = 22;

    // The name as the table can draw it (empty when nothing drawable is left).
    static std::string DrawableName(const std::string& typed);

    // Opens the entry with the prompt text, the text pre-filled and the caret after it.
    void Open(VeInput* input, const std::string& prompt, const std::string& prefilled, int screenWidth);
    void Close();
    bool IsOpen() const { return input != nullptr; }

    // One frame of typing; says whether the player confirmed or declined in this frame (the
    // entry closes then).
    Result Update(VeInput* state, QmControls& controls);
    // The same as the keys, from the page's buttons.
    Result Confirm();
    Result Decline();
    void Draw(VeSurface& target);

    // The name the player confirmed (fallback when nothing drawable was typed).
    std::string TakenName(const std::string& fallback) const;
    const VeTextInput* Input() const { return input.get(); }

private:
    VeTextStyle inputStyle = VeTextStyle(2, 0x000000, 2, 1, 0);
    std::unique_ptr<VeTextInput> input;
    VeText prompt;
    std::string typed;
};
