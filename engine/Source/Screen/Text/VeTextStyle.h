#pragma once
// The parameters of a text: the grid unit (Size, pixels), the colour, the stroke thickness, the
// extra pixels between characters and between lines, the width limit for word wrap and the height
// limit that caps the lines (0: none), and whether lower-case letters use the small-letter set.
// The setters check their value and halt the program when it is out of range; they return the
// style so that a page can write VeTextStyle().Size(3).Colour(0xFFFFFF).Weight(3).
#include <cstdint>

class VeTextStyle {
public:
    VeTextStyle() = default;
    // Every value through its setter.
    VeTextStyle(int32_t size, uint32_t colour, int32_t weight, int32_t letterSpacing, int32_t lineHeight,
                int32_t maxWidth = 0, int32_t maxHeight = 0, bool smallLetters = true);

    // 1 to 100.
    VeTextStyle& Size(int32_t value);
    VeTextStyle& Colour(uint32_t value);
    // 1 to 100.
    VeTextStyle& Weight(int32_t value);
    // 0 to 100.
    VeTextStyle& LetterSpacing(int32_t value);
    // 0 to 100.
    VeTextStyle& LineHeight(int32_t value);
    // 0 or more; 0 means no wrapping.
    VeTextStyle& MaxWidth(int32_t value);
    // 0 or more; 0 means no cap.
    VeTextStyle& MaxHeight(int32_t value);
    VeTextStyle& SmallLetters(bool value);

    int32_t size = 1;
    uint32_t colour = 0;
    int32_t weight = 1;
    int32_t letterSpacing = 1;
    int32_t lineHeight = 1;
    int32_t maxWidth = 0;
    int32_t maxHeight = 0;
    bool smallLetters = true;
};
