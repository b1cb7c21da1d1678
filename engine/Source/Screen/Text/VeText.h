#pragma once
// A laid-out text rendered into its own surface. The string is bytes, one byte per character.
// Draw lays it out (one line, or word wrap within MaxWidth with hard breaks inside words that do
// not fit, at most MaxHeight worth of lines; a text longer than that is cut) and renders it into a
// new surface of exactly the size it needs, cleared to the transparent key 0xFF00FF. Pages draw
// that surface with the key like any image and redraw the text only when it changes.
//
// Sizes, with u = Size and w = Weight: a cell is 4u + w wide and 4u + w high (plus 4u when small
// letters are in effect); characters advance by a cell plus LetterSpacing, lines by a cell plus
// LineHeight; no spacing follows the last character or line.
#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeTextStyle.h"
#include "Screen/VeFpsText.h"

#include <string>
#include <vector>

class VeText {
public:
    // Stores the string (upper-cased on request), applies the style if one is given, and draws.
    explicit VeText(const std::string& text = std::string(), const VeTextStyle* style = nullptr,
                    bool upperCase = false);

    // Takes the style's values through its checking setters and draws.
    void SetStyle(const VeTextStyle& newStyle);
    // Stores the string; the owner redraws.
    void SetText(const std::string& newText, bool upperCase = false);
    // Lays out and renders into a new surface.
    void Draw();
    // Every character drawn as "X" (password fields); the owner redraws.
    void SetMasked(bool on) { masked = on; }

    bool SmallLettersInEffect() const { return style.smallLetters && style.size >= 2; }
    int32_t CellWidth() const;
    int32_t CellHeight() const;
    int32_t Advance() const { return CellWidth() + style.letterSpacing; }
    int32_t LineStep() const { return CellHeight() + style.lineHeight; }
    int32_t Width() const { return surface.width; }
    int32_t Height() const { return surface.height; }

    // Draws the rendered text onto another surface with its top-left at (x, y) (centred on x when
    // asked), skipping the key. An outline colour other than the key surrounds every stroke pixel
    // with a one-pixel rim in that colour, so the text reads on any background.
    void DrawOnto(VeSurface& target, int32_t x, int32_t y, bool centreX = false, float alpha = 1.0f,
                  uint32_t outlineColour = kColourKey) const;
    // Lays out, renders and draws a string in one step (the frame-rate display and other short
    // texts that change every frame).
    static void DrawString(VeSurface& target, const std::string& text, int32_t x, int32_t y,
                           const VeTextStyle& style, bool centreX = false, float alpha = 1.0f,
                           uint32_t outlineColour = kColourKey);
    // The screen's frame-rate display: capitals and digits in the asked style, centred, with the
    // second colour as the outline. Plug it in with VeScreen::SetFpsTextDrawer.
    static void DrawFpsText(VeSurface& overlay, const VeFpsText& fps);

    VeSurface surface;
    VeTextStyle style;
    std::string text;
    bool styleApplied = false;
    int32_t lines = 0;
    int32_t columns = 0;
    bool masked = false;
    std::vector<int32_t> wrapPositions;

private:
    void Layout(int32_t& width, int32_t& height);
    void Render();
    void Thicken();
};
