#pragma once
// How a button looks: its images or fill colours, its border rings, its look while it has the
// focus, the position and size it is made with, the label's colours and the sound its row plays
// when the selection moves. Colours are 0xRRGGBB; images are drawn with 0xFF00FF as the
// transparent key and are owned elsewhere.
#include <cstdint>
#include <string>

class VeSurface;

class VeButtonStyle {
public:
    VeButtonStyle(int32_t width, int32_t height) : width(width), height(height) {}

    bool showLabel = true;
    const VeSurface* normalImage = nullptr;
    const VeSurface* disabledImage = nullptr;
    const VeSurface* hoverImage = nullptr;
    uint32_t normalFillColour = 0xCCCCCC;
    uint32_t disabledFillColour = 0xCCCCCC;
    uint32_t borderColour = 0xCCCCCC;
    int32_t borderThickness = 3;
    bool hoverFill = false;
    uint32_t hoverFillColour = 0;
    uint32_t hoverBorderColour = 0x0000FF;
    int32_t hoverBorderThickness = 3;
    // Moves the label away from the centre of the button, in pixels.
    int32_t labelOffsetX = 0;
    int32_t labelOffsetY = 0;
    // Where the button goes (whole pixels count).
    float x = 0.0f;
    float y = 0.0f;
    int32_t width;
    int32_t height;
    // While the button has the focus its label takes the hover colour when the switch is on.
    bool hoverLabelColourOn = false;
    uint32_t hoverLabelColour = 0;
    uint32_t disabledLabelColour = 0;
    // The sound a row of these buttons plays when its selection moves; empty: none.
    std::string hoverSound;
};
