#pragma once
// How a checkbox looks: background and border colours (a second pair while the mouse is over it
// or it has the focus), the border's thickness, the mark drawn when it is checked, and its size.
// It is itself a form element that draws and does nothing, so pages can keep styles and boxes
// alike; checkboxes copy a style at construction.
#include "Form/VeFormElement.h"

class VeTextStyle;

class VeCheckboxStyle : public VeFormElement {
public:
    // The marks a checked box can show.
    enum MarkKind : int32_t {
        MarkCross = 0,  // two diagonal lines
        MarkSquare = 1, // a filled square inside the border
        MarkGlyph = 2,  // the letter "V" drawn as text
    };

    VeCheckboxStyle() {
        width = 20;
        height = 20;
    }

    void Draw(VeSurface& /*target*/, bool /*checkBounds*/, bool /*mouseOver*/) override {}
    void Update(VeInput& /*input*/, bool /*mouseOver*/) override {}
    void StoreValue() override {}

    uint32_t backgroundColour = 0xFFFFFF;
    uint32_t borderColour = 0x000000;
    uint32_t hoverBackgroundColour = 0xFFFFFF;
    uint32_t hoverBorderColour = 0xFF0000;
    int32_t borderThickness = 1;
    // The text style of the "V" mark (its colour is the mark colour); none: one that fits the box.
    const VeTextStyle* markTextStyle = nullptr;
    int32_t markKind = MarkGlyph;
    uint32_t markColour = 0xAAAAAA;
};
