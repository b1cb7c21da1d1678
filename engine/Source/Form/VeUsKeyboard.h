#pragma once
// The characters keys type in a text input, as on a US keyboard: letters (capitals with Shift),
// digits (Shift gives ! @ ( ) on 1, 2, 9 and 0 and the digit itself on 3 to 8), "_" on Shift+Minus
// (plain Minus types nothing), ", . \" and the space either way, "; :" and "/ ?". Other keys type
// nothing.
#include <cstdint>

class VeInput;

class VeUsKeyboard {
public:
    // The character the key types, or 0.
    static char Character(int key, bool shift);
    // The first character typed by a key pressed this frame (either Shift key held counts), or 0.
    static char Typed(const VeInput& input);
};
