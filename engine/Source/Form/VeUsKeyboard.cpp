#include "Form/VeUsKeyboard.h"

#include "Input/VeInput.h"

#include <array>

namespace {

struct KeyCharacters {
    int key;
    char plain;
    char shifted;
};

// Letters and the digits 3 to 8 follow their key numbers; these keys need a table.
constexpr std::array<KeyCharacters, 11> kOtherKeys{{
    {VeKey::Num1, '1', '!'},
    {VeKey::Num2, '2', '@'},
    {VeKey::Num9, '9', '('},
    {VeKey::Num0, '0', ')'},
    {VeKey::Minus, 0, '_'},
    {VeKey::Comma, ',', ','},
    {VeKey::Period, '.', '.'},
    {VeKey::Semicolon, ';', ':'},
    {VeKey::Slash, '/', '?'},
    {VeKey::Backslash, '\\', '\\'},
    {VeKey::Space, ' ', ' '},
}};

} // namespace

char VeUsKeyboard::Character(int key, bool shift) {
    if (key >= VeKey::A && key <= VeKey::Z) {
        return static_cast<char>((shift ? 'A' : 'a') + (key - VeKey::A));
    }
    if (key >= VeKey::Num3 && key <= VeKey::Num8) {
        return static_cast<char>('3' + (key - VeKey::Num3));
    }
    for (const KeyCharacters& entry : kOtherKeys) {
        if (entry.key == key) {
            return shift ? entry.shifted : entry.plain;
        }
    }
    return 0;
}

char VeUsKeyboard::Typed(const VeInput& input) {
    const bool shift = input.held[VeKey::LeftShift] != 0 || input.held[VeKey::RightShift] != 0;
    for (int key = VeKey::A; key <= VeKey::Slash; ++key) {
        if (input.pressed[key] != 0) {
            if (const char c = Character(key, shift); c != 0) {
                return c;
            }
        }
    }
    return 0;
}
