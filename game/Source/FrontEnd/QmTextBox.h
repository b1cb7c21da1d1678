#pragma once
// A laid-out text of a page with the room its box gives it, as the pages report them so a check
// can prove that no text overflows its box or button in any language.
#include "Screen/Text/VeText.h"

#include <string>
#include <vector>

struct QmTextBox {
    std::string text;
    int textWidth = 0;
    int textHeight = 0;
    int boxWidth = 0;
    int boxHeight = 0;

    QmTextBox() = default;
    QmTextBox(const VeText& laidOut, int width, int height)
        : text(laidOut.text), textWidth(laidOut.Width()), textHeight(laidOut.Height()), boxWidth(width),
          boxHeight(height) {}
    bool Fits() const { return textWidth <= boxWidth && textHeight <= boxHeight; }
};

using QmTextBoxes = std::vector<QmTextBox>;
