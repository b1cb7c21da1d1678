#pragma once
// A laid-out text of a page with the room its box gives it, as the pages report them so a check
// can prove that no text overflows its box or button in any language.
#include "Form/VeButtonRow.h"
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

// Every label of a row of buttons with the room inside its button's hover rings.
inline QmTextBoxes RowTextBoxes(const VeButtonRow& row) {
    QmTextBoxes boxes;
    for (const auto& button : row.Buttons()) {
        const int ring = button->look.hoverBorderThickness;
        boxes.emplace_back(button->LabelText(), button->look.width - 2 * ring,
                           button->look.height - 2 * ring);
    }
    return boxes;
}
