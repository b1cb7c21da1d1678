#include "Screen/Text/VeTextStyle.h"

#include "Platform/VeMessageBox.h"

namespace {
constexpr int32_t kLargest = 100;
} // namespace

VeTextStyle::VeTextStyle(int32_t sizeValue, uint32_t colourValue, int32_t weightValue, int32_t spacingValue,
                         int32_t lineHeightValue, int32_t maxWidthValue, int32_t maxHeightValue,
                         bool smallLettersValue) {
    Size(sizeValue);
    Colour(colourValue);
    Weight(weightValue);
    LetterSpacing(spacingValue);
    LineHeight(lineHeightValue);
    MaxWidth(maxWidthValue);
    MaxHeight(maxHeightValue);
    SmallLetters(smallLettersValue);
}

VeTextStyle& VeTextStyle::Size(int32_t value) {
    if (value < 1) {
        Halt("Halt: Text size too small",
             "App halted when loading text. Size is too small. (VeTextStyle::Size)");
    }
    if (value > kLargest) {
        Halt("Halt: Text size too large",
             "App halted when loading text. Size is too large. (VeTextStyle::Size)");
    }
    size = value;
    return *this;
}

VeTextStyle& VeTextStyle::Colour(uint32_t value) {
    colour = value;
    return *this;
}

VeTextStyle& VeTextStyle::Weight(int32_t value) {
    if (value < 1) {
        Halt("Halt: Text Weight too small",
             "App halted when loading text. Weight is too small. (VeTextStyle::Weight)");
    }
    if (value > kLargest) {
        Halt("Halt: Text Weight too large",
             "App halted when loading text. Weight is too large. (VeTextStyle::Weight)");
    }
    weight = value;
    return *this;
}

VeTextStyle& VeTextStyle::LetterSpacing(int32_t value) {
    if (value < 0) {
        Halt("Halt: Text letter spacing too small",
             "App halted when loading text. Letter spacing is too small. (VeTextStyle::LetterSpacing)");
    }
    if (value > kLargest) {
        Halt("Halt: Text letter spacing too large",
             "App halted when loading text. Letter spacing is too large. (VeTextStyle::LetterSpacing)");
    }
    letterSpacing = value;
    return *this;
}

VeTextStyle& VeTextStyle::LineHeight(int32_t value) {
    if (value < 0) {
        Halt("Halt: Text line height too small",
             "App halted when loading text. Line height is too small. (VeTextStyle::LineHeight)");
    }
    if (value > kLargest) {
        Halt("Halt: Text line height too large",
             "App halted when loading text. Line height is too large. (VeTextStyle::LineHeight)");
    }
    lineHeight = value;
    return *this;
}

VeTextStyle& VeTextStyle::MaxWidth(int32_t value) {
    if (value < 0) {
        Halt("Halt: Text maximum width too small",
             "App halted when loading text. Maximum width is too small. (VeTextStyle::MaxWidth)");
    }
    maxWidth = value;
    return *this;
}

VeTextStyle& VeTextStyle::MaxHeight(int32_t value) {
    if (value < 0) {
        Halt("Halt: Text maximum height too small",
             "App halted when loading text. Maximum height is too small. (VeTextStyle::MaxHeight)");
    }
    maxHeight = value;
    return *this;
}

VeTextStyle& VeTextStyle::SmallLetters(bool value) {
    smallLetters = value;
    return *this;
}
