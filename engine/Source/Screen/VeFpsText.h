#pragma once
// What the screen asks to be drawn for the frame-rate display. The screen does not draw text
// itself; whoever owns a text renderer plugs a drawer in with VeScreen::SetFpsTextDrawer.
#include <cstdint>
#include <functional>
#include <string>

class VeSurface;

struct VeFpsText {
    std::string text;
    int32_t centreX = 0; // the text is centred horizontally on this x
    int32_t top = 10;
    int32_t size = 4;
    int32_t weight = 4;
    int32_t letterSpacing = 1;
    uint32_t colour = 0;
    uint32_t secondColour = 0;
    float alpha = 1.0f;
};

using VeFpsTextDrawer = std::function<void(VeSurface& overlay, const VeFpsText& text)>;
