#include "ScenePreview.h"

#include "CharacterArt.h"
#include "DecorationArt.h"
#include "TilesetArt.h"

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

const ArtImage& Get(const AssetSet& set, const std::string& path) {
    const ArtImage* image = set.Find(path);
    if (!image) {
        throw std::runtime_error("the scene needs " + path);
    }
    return *image;
}

std::string Sized(const std::string& stem, int size) {
    return AssetSet::Sized(stem, size);
}

// One character per cell: tileset rows by small letter, coloured blocks by capital, the rest by
// symbol (see the tables below).
ArtImage Scene(const AssetSet& set, const std::vector<std::string>& rows, int size) {
    int w = int(rows[0].size());
    int h = int(rows.size());
    ArtImage image(w * size, h * size);
    const ArtImage& background = Get(set, Sized("Assets/Background", size));
    const ArtImage& tiles = Get(set, Sized("Assets/Blocks/Tileset_Forest", size));
    const ArtImage& decorations = Get(set, Sized("Assets/Decorations/Forest_Decorations", size));
    const std::map<char, int> tileRows = {{'g', 0}, {'e', 1}, {'m', 2}, {'s', 3}, {'c', 4},  {'p', 5},
                                          {'t', 6}, {'l', 7}, {'x', 8}, {'u', 9}, {'r', 10}, {'b', 11}};
    const std::map<char, int> decorationIndex = {
        {'h', 0},  {'i', 1},  {'n', 2},  {'o', 3},  {'z', 6},  {'a', 8}, {'y', 11}, {'T', 13}, {'N', 15},
        {'A', 16}, {'E', 20}, {'V', 21}, {'!', 19}, {'*', 23}, {'&', 7}, {'%', 5},  {'@', 4},  {'$', 22}};
    const std::map<char, std::string> things = {
        {'O', "Assets/Blocks/Orange"},      {'B', "Assets/Blocks/Blue"},
        {'G', "Assets/Blocks/Green"},       {'Y', "Assets/Blocks/Yellow"},
        {'R', "Assets/Blocks/Red"},         {'F', "Assets/Blocks/Finish"},
        {'f', "Assets/Blocks/Fire"},        {'q', "Assets/Gates/Red"},
        {'j', "Assets/Pickups/SuperJump"},  {'v', "Assets/Pickups/SpeedUp"},
        {'w', "Assets/Pickups/FlipScreen"}, {'k', "Assets/Pickups/RedGateKey"},
        {'d', "Assets/Pickups/Disco"},      {'C', "Assets/Characters/Cow/Cow"}};
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            image.BlitOpaque(background, x * size, y * size);
        }
    }
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            char c = rows[size_t(y)][size_t(x)];
            int px = x * size;
            int py = y * size;
            if (auto t = tileRows.find(c); t != tileRows.end()) {
                image.Blit(tiles.Crop(0, t->second * size, size, size), px, py);
            } else if (auto d = decorationIndex.find(c); d != decorationIndex.end()) {
                int i = d->second;
                image.Blit(decorations.Crop((i % DecorationArt::Columns) * size,
                                            (i / DecorationArt::Columns) * size, size, size),
                           px, py);
            } else if (auto th = things.find(c); th != things.end()) {
                image.Blit(Get(set, Sized(th->second, size)), px, py);
            } else if (c >= '0' && c <= '4') {
                image.Blit(CharacterArt::Composed(c - '0', size), px, py);
            }
        }
    }
    return image;
}

} // namespace

void ScenePreview::Paint(AssetSet& set) {
    const std::vector<std::string> small = {
        "ll...........w....", "lt&..V..d.........", ".t..OBGY.......ppF",
        "0tia...i.A..jk.qxx", "ggggfgggggg.Cz.ggg", "eeeeeeeeeeefeeeeee",
    };
    const std::vector<std::string> large = {
        "lll.......................ssssss", "ltl......d.........w......s..F.s",
        ".t..................pppp..s..x.s", ".t.N.....OOBBGG..........qs.....",
        ".t........................s.....", ".tn.o.$.......uuu...v.....m..k..",
        "1t@..E..!..j..2.....o.*...m.....", "rrrrrrrr..rrr.b.gggggg..mmmmmm..",
        "ccccccccffcccyb.eeeeeeffeeeeee.C", "cccccccccccccccceeeeeeeeeeeegggg",
    };
    // The main menu as the game lays it out: the 32-pixel background tiled, a few fallen blocks, the
    // logo 30 pixels from the top and the grey button row below it.
    ArtImage menu(640, 640);
    const ArtImage& background = Get(set, "Assets/Background_32.png");
    for (int y = 0; y < 640; y += 32) {
        for (int x = 0; x < 640; x += 32) {
            menu.BlitOpaque(background, x, y);
        }
    }
    const char* colours[5] = {"Orange", "Blue", "Green", "Yellow", "Red"};
    const int stack[20] = {3, 5, 2, 6, 4, 1, 0, 2, 3, 7, 5, 2, 4, 6, 1, 3, 2, 5, 4, 6};
    for (int c = 0; c < 20; ++c) {
        for (int r = 0; r < stack[c]; ++r) {
            menu.Blit(Get(set, Sized(AssetSet::Name({"Assets/Blocks/", colours[(c * 3 + r * 7) % 5]}), 32)),
                      c * 32, 608 - r * 32);
        }
    }
    const ArtImage& logo = Get(set, "Assets/Logo.png");
    menu.Blit(logo, 320 - logo.Width() / 2, 30);
    for (int b = 0; b < 4; ++b) {
        int top = 170 + b * 62;
        menu.FillRect(120, top, 400, 60, 0x333333);
        menu.FrameRect(120, top, 400, 60, b == 0 ? 0xFF0000 : 0x000000);
    }
    set.AddPreview("The main menu", menu, "Sample scenes");
    set.AddPreview("A map at 64 pixels", Scene(set, small, 64).Crop(0, 0, 64 * 18, 64 * 6), "Sample scenes");
    set.AddPreview("A map at 32 pixels", Scene(set, large, 32), "Sample scenes");
}
