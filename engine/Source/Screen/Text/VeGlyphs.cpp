#include "Screen/Text/VeGlyphs.h"

#include "Screen/Surface/VeSurface.h"

#include <array>
#include <cstdlib>
#include <vector>

namespace {

// A glyph's shape as text: paths of points "x,y x,y ..." joined by strokes, separated by ';'; a
// part starting with '#' is a block "#x0,y0 x1,y1".
struct GlyphSource {
    unsigned char character;
    const char* shape;
};

// Capitals, digits and punctuation in half units of the 4 x 4 grid: 0 to 8 across and down.
constexpr GlyphSource kMainSet[] = {
    {'!', "0,0 6,0; 0,0 2,4; 2,0 2,4; 4,0 4,4; 6,0 4,4; #2,0 4,4; #2,6 4,8"},
    {'#', "2,0 2,8; 6,0 6,8; 0,2 8,2; 0,6 8,6"},
    {'&', "8,8 2,2 2,1 3,0 5,0 6,1 6,2 1,5 1,7 2,8 4,8 8,4"},
    {'\'', "4,0 4,3"},
    {'(', "6,0 4,2 4,6 6,8"},
    {')', "2,0 4,2 4,6 2,8"},
    {'*', "4,1 4,7; 1,2 7,6; 7,2 1,6"},
    {'+', "4,1 4,7; 1,4 7,4"},
    {',', "#3,6 4,7; 4,7 3,8"},
    {'-', "1,4 7,4"},
    {'.', "#3,7 4,8"},
    {'/', "8,0 0,8"},
    {'0', "2,0 6,0 8,2 8,6 6,8 2,8 0,6 0,2 2,0; 6,2 2,6"},
    {'1', "2,2 4,0 4,8; 2,8 6,8"},
    {'2', "0,2 2,0 6,0 8,2 8,3 0,8 8,8"},
    {'3', "0,0 6,0 8,2 6,4 8,6 6,8 0,8; 2,4 6,4"},
    {'4', "6,8 6,0 0,6 8,6"},
    {'5', "8,0 0,0 0,4 6,4 8,6 6,8 0,8"},
    {'6', "8,0 2,0 0,2 0,6 2,8 6,8 8,6 6,4 0,4"},
    {'7', "0,0 8,0 8,2 2,8"},
    {'8', "2,0 6,0 8,2 6,4 8,6 6,8 2,8 0,6 2,4 0,2 2,0; 2,4 6,4"},
    {'9', "0,8 6,8 8,6 8,2 6,0 2,0 0,2 2,4 8,4"},
    {':', "#3,1 4,2; #3,6 4,7"},
    {';', "#3,1 4,2; #3,6 4,7; 4,7 3,8"},
    {'?', "0,2 2,0 6,0 8,2 4,5; #3,7 4,8"},
    {'@', "6,5 6,3 3,3 3,5 8,5 8,2 6,0 2,0 0,2 0,6 2,8 8,8"},
    {'A', "0,8 0,2 2,0 6,0 8,2 8,8; 0,4 8,4"},
    {'B', "0,0 6,0 8,2 6,4 0,4; 6,4 8,6 6,8 0,8 0,0"},
    {'C', "8,0 2,0 0,2 0,6 2,8 8,8"},
    {'D', "0,0 6,0 8,2 8,6 6,8 0,8 0,0"},
    {'E', "8,0 0,0 0,8 8,8; 0,4 6,4"},
    {'F', "8,0 0,0 0,8; 0,4 6,4"},
    {'G', "8,0 2,0 0,2 0,6 2,8 8,8 8,4 4,4"},
    {'H', "0,0 0,8; 8,0 8,8; 0,4 8,4"},
    {'I', "2,0 6,0; 4,0 4,8; 2,8 6,8"},
    {'J', "4,0 8,0 8,6 6,8 2,8 0,6"},
    {'K', "0,0 0,8; 0,4 2,4 8,0; 2,4 8,8"},
    {'L', "0,0 0,8 8,8"},
    {'M', "0,8 0,0 4,4 8,0 8,8"},
    {'N', "0,8 0,0 8,8 8,0"},
    {'O', "2,0 6,0 8,2 8,6 6,8 2,8 0,6 0,2 2,0"},
    {'P', "0,8 0,0 6,0 8,2 6,4 0,4"},
    {'Q', "2,0 6,0 8,2 8,6 6,8 2,8 0,6 0,2 2,0; 4,4 8,8"},
    {'R', "0,8 0,0 6,0 8,2 6,4 0,4; 4,4 8,8"},
    {'S', "8,0 2,0 0,2 2,4 6,4 8,6 6,8 0,8"},
    {'T', "0,0 8,0; 4,0 4,8"},
    {'U', "0,0 0,6 2,8 6,8 8,6 8,0"},
    {'V', "0,0 0,4 4,8 8,4 8,0"},
    {'W', "0,0 0,8 4,4 8,8 8,0"},
    {'X', "0,0 8,8; 8,0 0,8"},
    {'Y', "0,0 4,4 8,0; 4,4 4,8"},
    {'Z', "0,0 8,0 0,8 8,8"},
    {'[', "6,0 2,0 2,8 6,8"},
    {'\\', "0,0 8,8"},
    {']', "2,0 6,0 6,8 2,8"},
    {'_', "0,8 8,8"},
    // a ring and o slash: lower-case forms in the lower part of the cell.
    {0x86, "1,3 7,3 7,8; 7,5 1,5 1,8 7,8; 3,0 5,0 5,2 3,2 3,0"},
    {0x9B, "1,3 7,3 7,8 1,8 1,3; 8,2 0,8"},
    // A grave, A acute, A ring, AE: the letter shrinks below its accent.
    {0xC0, "0,8 0,5 1,4 7,4 8,5 8,8; 0,6 8,6; 2,1 4,2"},
    {0xC1, "0,8 0,5 1,4 7,4 8,5 8,8; 0,6 8,6; 4,2 6,1"},
    {0xC5, "0,8 0,5 1,4 7,4 8,5 8,8; 0,6 8,6; 3,0 5,0 5,2 3,2 3,0"},
    {0xC6, "0,8 0,2 2,0 8,0; 4,0 4,8 8,8; 0,4 7,4"},
    // E grave, E acute and E circumflex share the E.
    {0xC8, "8,0 0,0 0,8 8,8; 0,4 6,4"},
    {0xC9, "8,0 0,0 0,8 8,8; 0,4 6,4"},
    {0xCA, "8,0 0,0 0,8 8,8; 0,4 6,4"},
    // I circumflex, O slash.
    {0xCE, "2,4 6,4; 4,4 4,8; 2,8 6,8; 2,2 4,0 6,2"},
    {0xD8, "2,0 6,0 8,2 8,6 6,8 2,8 0,6 0,2 2,0; 8,0 0,8"},
};

// Forms of the accented letters for texts with room above the capitals (small letters in
// effect): the whole letter with its accent above the cell's capital height.
constexpr GlyphSource kTallForms[] = {
    {0x86, "1,2 7,2 8,3 8,8; 8,5 1,5 0,6 0,7 1,8 8,8; 3,-2 5,-2 5,0 3,0 3,-2"},
    {0x9B, "1,2 7,2 8,3 8,7 7,8 1,8 0,7 0,3 1,2; 8,1 0,9"},
    {0xC0, "0,8 0,2 2,0 6,0 8,2 8,8; 0,4 8,4; 2,-3 4,-1"},
    {0xC1, "0,8 0,2 2,0 6,0 8,2 8,8; 0,4 8,4; 4,-1 6,-3"},
    {0xC5, "0,8 0,2 2,0 6,0 8,2 8,8; 0,4 8,4; 2,-4 6,-4 6,-1 2,-1 2,-4"},
    {0xCE, "2,0 6,0; 4,0 4,8; 2,8 6,8; 2,-1 4,-3 6,-1"},
};

// Lower-case letters, "!" and "?": row 8 is the baseline, 2 the top of the body, -2 the top of
// ascenders and 11 the foot of descenders.
constexpr GlyphSource kSmallSet[] = {
    {'!', "4,-2 4,3; 4,7 4,8"},
    {'?', "0,0 2,-2 6,-2 8,0 8,1 4,4 4,5; 4,7 4,8"},
    {'a', "1,2 7,2 8,3 8,8; 8,5 1,5 0,6 0,7 1,8 8,8"},
    {'b', "0,-2 0,8 7,8 8,7 8,3 7,2 0,2"},
    {'c', "8,2 1,2 0,3 0,7 1,8 8,8"},
    {'d', "8,-2 8,8 1,8 0,7 0,3 1,2 8,2"},
    {'e', "0,5 8,5 8,3 7,2 1,2 0,3 0,7 1,8 8,8"},
    {'f', "7,-2 4,-2 3,-1 3,8; 0,2 6,2"},
    {'g', "8,2 8,10 7,11 1,11; 8,8 1,8 0,7 0,3 1,2 8,2"},
    {'h', "0,-2 0,8; 0,2 7,2 8,3 8,8"},
    {'i', "2,2 4,2 4,8; 2,8 6,8; 4,-1 4,0"},
    {'j', "3,2 6,2 6,10 5,11 1,11 0,10; 6,-1 6,0"},
    {'k', "0,-2 0,8; 0,6 7,2; 2,5 7,8"},
    {'l', "2,-2 4,-2 4,7 5,8 7,8"},
    {'m', "0,8 0,2 7,2 8,3 8,8; 4,2 4,8"},
    {'n', "0,8 0,2 7,2 8,3 8,8"},
    {'o', "1,2 7,2 8,3 8,7 7,8 1,8 0,7 0,3 1,2"},
    {'p', "0,11 0,2 7,2 8,3 8,7 7,8 0,8"},
    {'q', "8,11 8,2 1,2 0,3 0,7 1,8 8,8"},
    {'r', "0,2 0,8; 0,4 2,2 7,2 8,3"},
    {'s', "8,2 1,2 0,3 0,4 1,5 7,5 8,6 8,7 7,8 0,8"},
    {'t', "3,-1 3,7 4,8 7,8; 0,2 7,2"},
    {'u', "0,2 0,7 1,8 8,8 8,2"},
    {'v', "0,2 0,4 4,8 8,4 8,2"},
    {'w', "0,2 0,8 4,5 8,8 8,2"},
    {'x', "0,2 8,8; 8,2 0,8"},
    {'y', "0,2 0,7 1,8 8,8; 8,2 8,10 7,11 1,11"},
    {'z', "0,2 8,2 0,8 8,8"},
};

using Segment = std::array<int8_t, 4>;

struct Glyph {
    bool present = false;
    std::vector<Segment> strokes;
    std::vector<Segment> blocks;
};

using GlyphTable = std::array<Glyph, 256>;

Glyph Parse(const char* shape) {
    Glyph glyph;
    glyph.present = true;
    const char* p = shape;
    while (*p != '\0') {
        while (*p == ' ' || *p == ';') {
            ++p;
        }
        if (*p == '\0') {
            break;
        }
        const bool block = *p == '#';
        if (block) {
            ++p;
        }
        std::vector<int8_t> points;
        while (*p != '\0' && *p != ';') {
            char* end = nullptr;
            const long value = std::strtol(p, &end, 10);
            if (end == p) {
                ++p;
                continue;
            }
            points.push_back(static_cast<int8_t>(value));
            p = end;
        }
        if (block && points.size() >= 4) {
            glyph.blocks.push_back({points[0], points[1], points[2], points[3]});
        } else if (points.size() == 2) {
            glyph.strokes.push_back({points[0], points[1], points[0], points[1]});
        } else {
            for (size_t i = 0; i + 3 < points.size(); i += 2) {
                glyph.strokes.push_back({points[i], points[i + 1], points[i + 2], points[i + 3]});
            }
        }
    }
    return glyph;
}

template <size_t N> GlyphTable Build(const GlyphSource (&sources)[N]) {
    GlyphTable table;
    for (const GlyphSource& source : sources) {
        table[source.character] = Parse(source.shape);
    }
    return table;
}

const GlyphTable& MainTable() {
    static const GlyphTable table = Build(kMainSet);
    return table;
}

const GlyphTable& TallTable() {
    static const GlyphTable table = Build(kTallForms);
    return table;
}

const GlyphTable& SmallTable() {
    static const GlyphTable table = Build(kSmallSet);
    return table;
}

// Grid point (half units) to pixel, rounded down: rows may go up to four half units above the
// cell's top-left (the room above the capitals when small letters are in effect).
struct Mapping {
    int32_t originX;
    int32_t originY;
    int32_t unit;

    int32_t X(int32_t g) const { return originX + g * unit / 2; }
    int32_t Y(int32_t g) const { return originY + (g + 4) * unit / 2 - 2 * unit; }
};

void DrawGlyph(VeSurface& surface, const Glyph& glyph, const Mapping& map, uint32_t colour) {
    for (const Segment& s : glyph.strokes) {
        surface.Line(map.X(s[0]), map.Y(s[1]), map.X(s[2]), map.Y(s[3]), colour);
    }
    for (const Segment& b : glyph.blocks) {
        const int32_t left = map.X(b[0]);
        const int32_t top = map.Y(b[1]);
        surface.Rect(left, top, map.X(b[2]) - left + 1, map.Y(b[3]) - top + 1, colour);
    }
}

} // namespace

bool VeGlyphs::HasMain(unsigned char character) {
    return MainTable()[character].present;
}

bool VeGlyphs::HasSmall(unsigned char character) {
    return SmallTable()[character].present;
}

void VeGlyphs::DrawMain(VeSurface& surface, unsigned char character, int32_t x, int32_t y, int32_t unit,
                        uint32_t colour, bool roomAbove) {
    const Glyph& tall = TallTable()[character];
    const Glyph& glyph = roomAbove && tall.present ? tall : MainTable()[character];
    if (glyph.present) {
        DrawGlyph(surface, glyph, Mapping{x, y, unit}, colour);
    }
}

void VeGlyphs::DrawSmall(VeSurface& surface, unsigned char character, int32_t x, int32_t y, int32_t unit,
                         uint32_t colour) {
    const Glyph& glyph = SmallTable()[character];
    if (glyph.present) {
        DrawGlyph(surface, glyph, Mapping{x, y, unit}, colour);
    }
}
