#include "Form/VeTextInput.h"

#include "Form/VeUsKeyboard.h"
#include "Input/VeInput.h"
#include "Platform/VeClipboard.h"
#include "Platform/VeTime.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeTextStyle.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr float kDisabledShade = 0.5f;

// Rounds towards minus infinity (a click left of or above the text's origin).
int32_t FloorDivide(int32_t value, int32_t divisor) {
    int32_t quotient = value / divisor;
    if ((value % divisor != 0) && ((value < 0) != (divisor < 0))) {
        --quotient;
    }
    return quotient;
}

// Pasted text as one line: line breaks and tabs become single spaces, other control characters go.
std::string OneLine(const std::string& pasted) {
    std::string out;
    out.reserve(pasted.size());
    for (size_t i = 0; i < pasted.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(pasted[i]);
        if (c == '\r' && i + 1 < pasted.size() && pasted[i + 1] == '\n') {
            continue;
        }
        if (c == '\r' || c == '\n' || c == '\t') {
            out.push_back(' ');
        } else if (c >= 0x20 && c != 0x7F) {
            out.push_back(static_cast<char>(c));
        }
    }
    return out;
}

} // namespace

VeTextInput::VeTextInput(VeInput* inputState, float atX, float atY, int32_t boxWidth, int32_t boxHeight,
                         const VeTextStyle& textStyle, int32_t maximum, const std::string& initialText)
    : text(initialText, &textStyle), input(inputState), maxCharacters(maximum) {
    x = atX;
    y = atY;
    width = boxWidth;
    height = boxHeight;
    hoverCursor = VeCursorKind::IBeam;
    caret = Length();
}

void VeTextInput::SetText(const std::string& content, int32_t caretPosition) {
    text.SetText(content);
    text.Draw();
    caret = std::clamp(caretPosition, 0, Length());
}

void VeTextInput::SetPassword() {
    password = true;
    text.SetMasked(true);
    text.Draw();
}

int32_t VeTextInput::Limit() const {
    if (text.wrapPositions.empty()) {
        return maxCharacters;
    }
    // Every wrapped line shorter than a full line leaves cells empty; they count against the limit.
    int64_t limit = int64_t{maxCharacters} + 1;
    int32_t previous = 0;
    for (const int32_t position : text.wrapPositions) {
        limit += position - previous - text.columns;
        previous = position;
    }
    return limit > 0 ? static_cast<int32_t>(std::min<int64_t>(limit, INT32_MAX)) : maxCharacters;
}

bool VeTextInput::CaretVisible() const {
    if (input != nullptr && input->anyKeyDown) {
        return true;
    }
    return GetClockMs() % 1000 < 500;
}

int32_t VeTextInput::CaretRow() const {
    if (text.style.maxWidth <= 0) {
        return 0;
    }
    const auto before = std::lower_bound(text.wrapPositions.begin(), text.wrapPositions.end(), caret);
    return static_cast<int32_t>(before - text.wrapPositions.begin());
}

int32_t VeTextInput::LineStart(int32_t row) const {
    return row > 0 ? text.wrapPositions[static_cast<size_t>(row - 1)] + 1 : 0;
}

void VeTextInput::Draw(VeSurface& target, bool checkBounds, bool /*mouseOver*/) {
    const int32_t left = Left();
    const int32_t top = Top();
    const int32_t right = left + width - 1;
    const int32_t bottom = top + height - 1;
    const uint32_t colour = selected ? selectedFrameColour : frameColour;
    const auto across = static_cast<int32_t>(frameThicknessHorizontal);
    const auto down = static_cast<int32_t>(frameThicknessVertical);
    for (int32_t i = 0; i < across; ++i) {
        target.Line(left, top + i, right, top + i, colour, checkBounds);
        target.Line(left, bottom - i, right, bottom - i, colour, checkBounds);
    }
    for (int32_t i = 0; i < down; ++i) {
        target.Line(left + i, top, left + i, bottom, colour, checkBounds);
        target.Line(right - i, top, right - i, bottom, colour, checkBounds);
    }
    if (backgroundColour != kColourKey) {
        const int32_t innerWidth = width - 2 * down;
        const int32_t innerHeight = height - 2 * across;
        if (innerWidth > 0 && innerHeight > 0) {
            target.Rect(left + down, top + across, innerWidth, innerHeight, backgroundColour, true,
                        checkBounds, backgroundAlpha);
        }
    }
    target.BlitKeyed(text.surface, left + paddingX, top + paddingY, checkBounds);
    if (enabled && selected && CaretVisible()) {
        const int32_t row = CaretRow();
        const int32_t column = caret - LineStart(row);
        target.Rect(left + paddingX + text.Advance() * column, top + paddingY + text.LineStep() * row,
                    text.CellWidth(), text.CellHeight(), text.style.colour, true, checkBounds);
    }
    if (!enabled) {
        target.MultiplyRect(left, top, width, height, kDisabledShade, checkBounds);
    }
}

void VeTextInput::Update(VeInput& state, bool mouseOver) {
    if (!enabled) {
        return;
    }
    if (input == nullptr) {
        input = &state;
    }
    ShowHoverCursor(mouseOver);
    if (selected && !wasSelected) {
        previousRepeatDelay = state.repeatDelay;
        previousRepeatInterval = state.repeatInterval;
        repeatApplied = true;
        state.SetRepeat(keyRepeatDelay, keyRepeatInterval);
    } else if (!selected && wasSelected && repeatApplied) {
        // Give the timing back unless someone else changed it meanwhile.
        if (state.repeatDelay == keyRepeatDelay && state.repeatInterval == keyRepeatInterval) {
            state.SetRepeat(previousRepeatDelay, previousRepeatInterval);
        }
        repeatApplied = false;
    }
    wasSelected = selected;
    if (mouseOver && state.mousePressed[kMouseLeft] != 0) {
        PlaceCaret(state.mouseX, state.mouseY);
    }
    if (selected) {
        HandleKeys(state);
    }
}

void VeTextInput::PlaceCaret(int32_t mouseX, int32_t mouseY) {
    int32_t column = FloorDivide(mouseX - (Left() + paddingX), std::max(text.Advance(), 1));
    int32_t row = FloorDivide(mouseY - (Top() + paddingY), std::max(text.LineStep(), 1)) + 1;
    const auto wraps = static_cast<int32_t>(text.wrapPositions.size());
    if (text.style.maxWidth <= 0 || wraps == 0 || row < 2) {
        caret = std::clamp(column, 0, Length());
        if (wraps > 0 && text.style.maxWidth > 0) {
            caret = std::min(caret, text.wrapPositions[0]);
        }
        return;
    }
    // Below the last line counts as the last line; a click right of a line's end stays on it.
    row = std::min(row, wraps + 1);
    const int32_t start = LineStart(row - 1);
    const int32_t end = row - 1 < wraps ? text.wrapPositions[static_cast<size_t>(row - 1)] : Length();
    caret = std::clamp(start + std::max(column, 0), start, end);
}

void VeTextInput::HandleKeys(VeInput& state) {
    const uint8_t* pressed = state.pressed;
    const bool ctrl = state.held[VeKey::LeftCtrl] != 0 || state.held[VeKey::RightCtrl] != 0;
    const int32_t length = Length();
    std::string& content = text.text;
    if (pressed[VeKey::Backspace] != 0 && caret > 0) {
        content.erase(static_cast<size_t>(caret - 1), 1);
        --caret;
        ContentChanged();
    } else if ((pressed[VeKey::Delete] != 0 || pressed[VeKey::KeypadPeriod] != 0) && caret < length) {
        content.erase(static_cast<size_t>(caret), 1);
        ContentChanged();
    } else if (pressed[VeKey::Left] != 0 && caret > 0) {
        if (ctrl) {
            int32_t space = 0;
            for (int32_t i = caret - 1; i >= 1; --i) {
                if (content[static_cast<size_t>(i)] == ' ') {
                    space = i;
                    break;
                }
            }
            caret = space;
        } else {
            --caret;
        }
    } else if (pressed[VeKey::Right] != 0 && caret < length) {
        if (ctrl) {
            int32_t space = length;
            for (int32_t i = caret + 1; i < length; ++i) {
                if (content[static_cast<size_t>(i)] == ' ') {
                    space = i;
                    break;
                }
            }
            caret = space;
        } else {
            ++caret;
        }
    } else if (pressed[VeKey::Home] != 0) {
        caret = 0;
    } else if (pressed[VeKey::End] != 0) {
        caret = length;
    } else if (pressed[VeKey::V] != 0 && ctrl) {
        Paste();
    } else if (length < Limit()) {
        if (const char typed = VeUsKeyboard::Typed(state); typed != 0) {
            Insert(std::string(1, typed));
        }
    }
}

void VeTextInput::Paste() {
    const int32_t room = Limit() - Length();
    if (room <= 0) {
        return;
    }
    std::string pasted = OneLine(VeClipboard::GetText());
    if (static_cast<int32_t>(pasted.size()) > room) {
        pasted.resize(static_cast<size_t>(room));
    }
    if (!pasted.empty()) {
        Insert(pasted);
    }
}

void VeTextInput::Insert(const std::string& characters) {
    text.text.insert(static_cast<size_t>(caret), characters);
    caret += static_cast<int32_t>(characters.size());
    ContentChanged();
}

void VeTextInput::ContentChanged() {
    // A height limit may cut the text while it is laid out; the caret stays inside.
    text.Draw();
    caret = std::clamp(caret, 0, Length());
}
