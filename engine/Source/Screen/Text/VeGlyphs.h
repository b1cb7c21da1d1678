#pragma once
// The built-in stroke glyphs. Each character is a few one-pixel lines between grid points and a
// few filled blocks, scaled by the text size u. Points are in half units of u (pixel = point * u / 2,
// rounded down), with the cell's top-left corner at (0, 0).
//
// Main set: capitals, digits and punctuation on the 4 x 4 grid (points 0 to 8). It also holds the
// bytes the language files use for accented letters: 0xC0 A grave, 0xC1 A acute, 0xC5 A ring,
// 0xC6 AE, 0xC8 to 0xCA E grave, acute and circumflex (drawn as E), 0xCE I circumflex, 0xD8 O
// slash, and from the DOS Latin code page 0x86 a ring and 0x9B o slash (lower-case forms). When
// the text has room above its capitals (small letters in effect) the accented letters keep their
// full size and carry the accent above it; otherwise the letter shrinks under the accent.
//
// Small-letter set: "a" to "z", "!" and "?", as wide as the capitals and sitting on their baseline
// (row 8): row 2 is the top of the lower-case body, row -2 the top of ascenders and row 11 the foot
// of descenders. The text shifts its origin down by 2u when small letters are in effect, so the
// ascenders and accents fit in the cell.
//
// A block from point (x0, y0) to (x1, y1) fills the pixels from the first point to the second,
// both included.
#include <cstdint>

class VeSurface;

class VeGlyphs {
public:
    static bool HasMain(unsigned char character);
    static bool HasSmall(unsigned char character);
    // Draws the glyph with the cell's top-left at (x, y) in colour; a character without a glyph
    // draws nothing.
    static void DrawMain(VeSurface& surface, unsigned char character, int32_t x, int32_t y, int32_t unit,
                         uint32_t colour, bool roomAbove = false);
    static void DrawSmall(VeSurface& surface, unsigned char character, int32_t x, int32_t y, int32_t unit,
                          uint32_t colour);
};
