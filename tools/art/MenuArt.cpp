#include "MenuArt.h"

#include "ArtPalette.h"
#include "BlockArt.h"
#include "CharacterArt.h"
#include "Shading.h"

#include <cmath>
#include <string>
#include <vector>

using P = ArtPalette;

namespace {

// Letters of the logo on a grid of blocks, seven rows high; '#' is a block.
struct Letter {
    char name;
    std::vector<const char*> rows;
};

const std::vector<Letter>& Letters() {
    static const std::vector<Letter> letters = {
        {'Q', {".###.", "#...#", "#...#", "#...#", "#.#.#", "#..#.", ".##.#"}},
        {'U', {"#...#", "#...#", "#...#", "#...#", "#...#", "#...#", ".###."}},
        {'I', {"###", ".#.", ".#.", ".#.", ".#.", ".#.", "###"}},
        {'L', {"#...", "#...", "#...", "#...", "#...", "#...", "####"}},
        {'M', {"#...#", "##.##", "#.#.#", "#.#.#", "#...#", "#...#", "#...#"}},
        {'A', {".###.", "#...#", "#...#", "#####", "#...#", "#...#", "#...#"}},
        {'Z', {"#####", "....#", "...#.", "..#..", ".#...", "#....", "#####"}},
        {'E', {"####", "#...", "#...", "###.", "#...", "#...", "####"}},
    };
    return letters;
}

const Letter& Find(char c) {
    for (const Letter& l : Letters()) {
        if (l.name == c) {
            return l;
        }
    }
    return Letters()[0];
}

} // namespace

ArtImage MenuArt::Logo() {
    const std::string name = "QUILLMAZE";
    const int cell = 12;
    const int margin = 3;
    const int shadow = 5;
    int columns = 0;
    for (char c : name) {
        columns += int(std::string(Find(c).rows[0]).size()) + 1;
    }
    columns -= 1;
    int width = columns * cell + 2 * margin + shadow;
    int height = 7 * cell + 2 * margin + shadow;
    ArtImage letters(width, height);
    const uint32_t colours[5] = {P::O2, P::B2, P::G2, P::Y2, P::R2};
    int x0 = margin;
    int index = 0;
    for (char c : name) {
        const Letter& l = Find(c);
        int w = int(std::string(l.rows[0]).size());
        ArtImage block = BlockArt::SolidBlock(cell, colours[index % 5]);
        for (int row = 0; row < 7; ++row) {
            for (int col = 0; col < w; ++col) {
                if (l.rows[size_t(row)][col] == '#') {
                    letters.BlitOpaque(block, x0 + col * cell, margin + row * cell);
                }
            }
        }
        x0 += (w + 1) * cell;
        ++index;
    }
    // A hard drop shadow down and to the right, then a dark outline around everything, so the logo
    // reads on the busy menu background.
    ArtImage logo(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (int d = 1; d <= shadow; ++d) {
                if (!letters.IsKey(x - d, y - d)) {
                    logo.Set(x, y, P::Ink);
                    break;
                }
            }
        }
    }
    logo.Blit(letters, 0, 0);
    Shading::Outline(logo, P::Ink);
    return logo;
}

ArtImage MenuArt::Icon() {
    ArtImage icon = CharacterArt::Composed(0, 64);
    // Round the corners off.
    const int cut[4] = {3, 2, 1, 1};
    for (int k = 0; k < 4; ++k) {
        for (int i = 0; i < cut[k]; ++i) {
            icon.Set(i, k, kKey);
            icon.Set(63 - i, k, kKey);
            icon.Set(i, 63 - k, kKey);
            icon.Set(63 - i, 63 - k, kKey);
        }
        icon.Set(cut[k], k, P::Ink);
        icon.Set(63 - cut[k], k, P::Ink);
        icon.Set(cut[k], 63 - k, P::Ink);
        icon.Set(63 - cut[k], 63 - k, P::Ink);
    }
    return icon;
}

ArtImage MenuArt::Badge(int kind) {
    const int size = 32;
    ArtImage image(size, size);
    // The ribbon: two tails behind the medal.
    ArtImage ribbon(size, size);
    ribbon.FillPolygon({{7, 1}, {14, 1}, {19, 17}, {12, 17}}, P::B2);
    ribbon.FillPolygon({{18, 1}, {25, 1}, {20, 17}, {13, 17}}, P::R2);
    Shading::Bevel(ribbon, 1);
    Shading::OutlineOwnHue(ribbon);
    image.Blit(ribbon, 0, 0);
    uint32_t base = kind == 0 ? P::Y2 : kind == 1 ? P::S3 : kind == 2 ? P::O1 : P::B2;
    ArtImage medal(size, size);
    float cx = 16.0f;
    float cy = 20.5f;
    if (kind == 3) {
        // A cloth rosette with a scalloped edge.
        for (int k = 0; k < 12; ++k) {
            float a = k * 6.28318f / 12.0f;
            medal.FillEllipse(cx + std::cos(a) * 8.0f, cy + std::sin(a) * 8.0f, 2.6f, 2.6f, base);
        }
        medal.FillEllipse(cx, cy, 9.0f, 9.0f, base);
        Shading::Bevel(medal, 1);
        medal.FillEllipse(cx, cy, 5.5f, 5.5f, P::B3);
        medal.FillEllipse(cx, cy, 3.0f, 3.0f, P::White);
    } else {
        medal.FillEllipse(cx, cy, 10.0f, 10.0f, base);
        Shading::Sphere(medal, cx, cy, 10.0f, 10.0f, false);
        // An embossed ring and star.
        ArtImage ring(size, size);
        ring.FillArc(cx, cy, 6.5f, 7.6f, 0.0f, 6.2832f, P::Darker(base));
        image.Blit(medal, 0, 0);
        medal.Blit(ring, 0, 0);
        std::vector<ArtPoint> star;
        for (int k = 0; k < 10; ++k) {
            float a = -1.5708f + k * 3.14159f / 5.0f;
            float r = k % 2 == 0 ? 5.0f : 2.2f;
            star.push_back({cx + std::cos(a) * r, cy + 0.3f + std::sin(a) * r});
        }
        medal.FillPolygon(star, P::Lighter(base));
    }
    Shading::OutlineOwnHue(medal);
    image.Blit(medal, 0, 0);
    Shading::Sparkle(image, 9, 14, 0, P::White);
    image.Set(10, 13, P::White);
    return image;
}

ArtImage MenuArt::Flag(int language) {
    const int w = 48;
    const int h = 32;
    ArtImage flag(w, h, P::White);
    auto band = [&](int x, int y, int bw, int bh, uint32_t c) { flag.FillRect(x, y, bw, bh, c); };
    switch (language) {
    case 0: // Dutch: red, white and blue bands
        band(0, 0, w, 11, P::R2);
        band(0, 21, w, 11, P::B1);
        break;
    case 1: { // English: the union flag
        band(0, 0, w, h, P::B0);
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < w; ++x) {
                float u = (x + 0.5f) / w;
                float v = (y + 0.5f) / h;
                float d1 = std::fabs(u - v) * w;
                float d2 = std::fabs(u - (1.0f - v)) * w;
                if (d1 < 4.5f || d2 < 4.5f) {
                    flag.Set(x, y, P::White);
                }
                // The red diagonals sit off centre, as on the real flag.
                bool upperLeft = u < 0.5f;
                if ((d1 < 1.6f && ((u - v) > 0) == upperLeft) ||
                    (d2 < 1.6f && ((u - (1.0f - v)) < 0) == upperLeft)) {
                    flag.Set(x, y, P::R2);
                }
            }
        }
        band(19, 0, 10, h, P::White);
        band(0, 11, w, 10, P::White);
        band(21, 0, 6, h, P::R2);
        band(0, 13, w, 6, P::R2);
        break;
    }
    case 2: // French: blue, white and red
        band(0, 0, 16, h, P::B1);
        band(32, 0, 16, h, P::R2);
        break;
    default: // Norwegian: a blue cross edged in white on red
        band(0, 0, w, h, P::R2);
        band(13, 0, 8, h, P::White);
        band(0, 12, w, 8, P::White);
        band(15, 0, 4, h, P::B0);
        band(0, 14, w, 4, P::B0);
        break;
    }
    // Cloth light: a lit top row and left column, a shaded bottom and right, and a dark edge.
    ArtImage before = flag;
    for (int x = 1; x < w - 1; ++x) {
        flag.Set(x, 1, P::Lighter(before.Get(x, 1)));
        flag.Set(x, h - 2, P::Darker(before.Get(x, h - 2)));
    }
    for (int y = 1; y < h - 1; ++y) {
        flag.Set(1, y, P::Lighter(before.Get(1, y)));
        flag.Set(w - 2, y, P::Darker(before.Get(w - 2, y)));
    }
    flag.FrameRect(0, 0, w, h, P::Ink);
    return flag;
}

ArtImage MenuArt::Panel() {
    // The race's head-up panel: a dark plate with room for the map's name on the left and a
    // recessed slot for the current badge (32 x 32 at x 216, y 4) on the right.
    const int w = 256;
    const int h = 40;
    ArtImage panel(w, h, P::S0);
    for (int x = 1; x < w - 1; ++x) {
        panel.Set(x, 1, P::S1);
        panel.Set(x, h - 2, P::Ink);
    }
    for (int y = 1; y < h - 1; ++y) {
        panel.Set(1, y, P::S1);
        panel.Set(w - 2, y, P::Ink);
    }
    panel.FrameRect(0, 0, w, h, P::Ink);
    // The five block colours as a small strip along the left edge.
    const uint32_t colours[5] = {P::O2, P::B2, P::G2, P::Y2, P::R2};
    for (int k = 0; k < 5; ++k) {
        panel.FillRect(4, 5 + k * 6, 4, 5, colours[k]);
        panel.Set(4, 5 + k * 6, P::Lighter(colours[k]));
    }
    // The badge slot.
    panel.FillRect(215, 3, 34, 34, P::Ink);
    panel.FillRect(216, 4, 33, 33, P::S1);
    panel.FillRect(216, 4, 32, 32, P::S0);
    return panel;
}

ArtImage MenuArt::LockMark() {
    return ArtImage::FromGrid({"................", ".....SSSSSS.....", "....SWSSSSWS....", "....SW....SS....",
                               "....SW....SS....", "...OOOOOOOOOO...", "...OYYYYYYYYO...", "...OYLYYYYYYO...",
                               "...OYLYIIYYYO...", "...OYLYIIYYYO...", "...OYYYYIYYYO...", "...OYYYYIYYYO...",
                               "...OYYYYYYYDO...", "...OODDDDDDOO...", "....OOOOOOOO....",
                               "................"},
                              {{'S', P::S2},
                               {'W', P::White},
                               {'O', P::Y0},
                               {'Y', P::Y2},
                               {'L', P::Y3},
                               {'D', P::Y1},
                               {'I', P::Ink}});
}

ArtImage MenuArt::OfficialMark() {
    ArtImage star(16, 16);
    std::vector<ArtPoint> points;
    for (int k = 0; k < 10; ++k) {
        float a = -1.5708f + k * 3.14159f / 5.0f;
        float r = k % 2 == 0 ? 7.2f : 3.0f;
        points.push_back({8.0f + std::cos(a) * r, 8.6f + std::sin(a) * r});
    }
    star.FillPolygon(points, P::Y2);
    Shading::Bevel(star, 1);
    Shading::OutlineOwnHue(star);
    return star;
}

void MenuArt::Paint(AssetSet& set) {
    set.Add("Assets/Logo.png", Logo(), "Menus");
    set.Add("Assets/Icon.png", Icon(), "Menus");
    const char* badges[4] = {"Gold", "Silver", "Bronze", "Badge"};
    for (int k = 0; k < 4; ++k) {
        set.Add(AssetSet::Name({"Assets/Badges/", badges[k], ".png"}), Badge(k), "Menus");
    }
    const char* languages[4] = {"Dutch", "English", "French", "Norwegian"};
    for (int k = 0; k < 4; ++k) {
        set.Add(AssetSet::Name({"Assets/Lang/", languages[k], ".png"}), Flag(k), "Menus");
    }
    set.Add("Assets/HUD/Panel.png", Panel(), "Menus");
    set.Add("Assets/Menu/Lock.png", LockMark(), "Menus");
    set.Add("Assets/Menu/Official.png", OfficialMark(), "Menus");
}
