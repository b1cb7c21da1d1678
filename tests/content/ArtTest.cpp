// The shipped images: every file the game loads exists, decodes through the engine's PNG loader and
// has the size its user expects; the magenta key appears exactly where something must show
// through (never in solid blocks, always around pickups and decorations, in the racer's eye areas);
// the sheets cut into whole tiles; and the pictures keep the look the game depends on.
#include "Screen/Surface/VePNGFile.h"
#include "Support/HaltCapture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <map>
#include <ranges>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr uint32_t kKey = 0xFF00FF;
constexpr uint32_t kFinishColour = 0xFE0000;
const int kSizes[3] = {16, 32, 64};
// The editor's buttons, each with a hover picture.
const char* const kEditorButtons[] = {"Save",    "Play",      "MapSizeSmall", "MapSizeLarge", "Options",
                                      "LockedG", "UnlockedG", "EditableG",    "NotEditableG", "Dice",
                                      "Clear",   "Fill",      "Copy"};

// How the key may appear in an image.
enum class Look {
    Opaque, // a solid thing or a full picture: no key at all
    Sprite, // a thing with a shape: key around it (all four corners), something drawn
    Any,    // drawn over white or used as parts: anything goes
};

struct Expected {
    std::string path;
    int width;
    int height;
    Look look;
    uint32_t colour = 0; // when set, a third of the pixels or more are of this colour
};

std::string Sized(const std::string& stem, int size) {
    return stem + "_" + std::to_string(size) + ".png";
}

// Every image with a fixed size: the single-block art at its three sizes and the other pictures.
std::vector<Expected> FixedImages() {
    std::vector<Expected> all;
    for (int s : kSizes) {
        for (const auto& [name, colour] :
             {std::pair{"Orange", 0xE99209u}, std::pair{"Blue", 0x1678D6u}, std::pair{"Green", 0x1ADE0Cu},
              std::pair{"Yellow", 0xE6D514u}, std::pair{"Red", 0xE1120Cu}}) {
            all.push_back({Sized(std::string("Assets/Blocks/") + name, s), s, s, Look::Opaque, colour});
        }
        for (const auto& [stem, look] :
             {std::pair{"Blocks/Blank", Look::Any}, std::pair{"Blocks/Border", Look::Opaque},
              std::pair{"Blocks/Finish", Look::Sprite}, std::pair{"Blocks/Fire", Look::Sprite},
              std::pair{"Blocks/Editor", Look::Opaque}, std::pair{"Blocks/EditorFlash", Look::Any},
              std::pair{"Gates/Red", Look::Any}, std::pair{"Pickups/SuperJump", Look::Sprite},
              std::pair{"Pickups/SpeedUp", Look::Sprite}, std::pair{"Pickups/FlipScreen", Look::Sprite},
              std::pair{"Pickups/RedGateKey", Look::Sprite}, std::pair{"Pickups/Disco", Look::Sprite},
              std::pair{"Background", Look::Opaque}, std::pair{"Characters/Cow/Cow", Look::Sprite}}) {
            all.push_back({Sized(std::string("Assets/") + stem, s), s, s, look});
        }
        std::string racer = "Assets/Characters/Default";
        if (s != 64) {
            racer.append("_").append(std::to_string(s));
        }
        all.push_back({racer + ".png", s, s, Look::Opaque});
        all.push_back({racer + "_Sides.png", s, s, Look::Opaque});
    }
    all.push_back({"Assets/Blocks/Finish_3D.png", 64, 64, Look::Opaque});
    all.push_back({"Assets/Characters/DefaultAnimation/Eye_32.png", 2, 4, Look::Any});
    all.push_back({"Assets/Characters/DefaultAnimation/Eye_64.png", 6, 12, Look::Any});
    all.push_back({"Assets/Icon.png", 64, 64, Look::Sprite});
    for (const char* badge : {"Gold", "Silver", "Bronze", "Badge"}) {
        all.push_back({std::string("Assets/Badges/") + badge + ".png", 32, 32, Look::Sprite});
    }
    for (const char* language : {"Dutch", "English", "French", "Norwegian"}) {
        all.push_back({std::string("Assets/Lang/") + language + ".png", 48, 32, Look::Opaque});
    }
    all.push_back({"Assets/HUD/Panel.png", 256, 40, Look::Opaque});
    all.push_back({"Assets/Menu/Lock.png", 16, 16, Look::Sprite});
    all.push_back({"Assets/Menu/Official.png", 16, 16, Look::Sprite});
    for (const char* button : kEditorButtons) {
        all.push_back({std::string("Assets/EditorGUI/") + button + ".png", 32, 32, Look::Any});
        all.push_back({std::string("Assets/EditorGUI/") + button + "Hover.png", 32, 32, Look::Any});
    }
    for (const char* mark : {"Locked", "Unlocked", "Editable", "NotEditable", "Edited"}) {
        all.push_back({std::string("Assets/EditorGUI/") + mark + ".png", 16, 16, Look::Sprite});
    }
    for (const char* command : {"Select", "Place", "EditName", "MapSizeLarge", "Locked", "Editable",
                                "ResetScore", "Clear", "Save", "Play", "Fill", "Dice", "Copy", "Back"}) {
        all.push_back(
            {std::string("Assets/EditorGUI/DisplayControls/") + command + ".png", 24, 24, Look::Sprite});
    }
    return all;
}

struct Image {
    bool ok = false;
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;
    uint32_t At(int x, int y) const { return pixels[size_t(y) * size_t(width) + size_t(x)] & 0xFFFFFF; }
    bool Key(int x, int y) const { return At(x, y) == kKey; }
    // Key pixels inside the rectangle.
    int KeysIn(int x0, int y0, int w, int h) const {
        int n = 0;
        for (int y = y0; y < y0 + h; ++y) {
            for (int x = x0; x < x0 + w; ++x) {
                n += Key(x, y) ? 1 : 0;
            }
        }
        return n;
    }
};

// Loads through the game's own loader, once per file; a halt (missing or broken file) becomes a
// test failure.
const Image& Load(const std::string& path) {
    static std::map<std::string, Image> loaded;
    auto found = loaded.find(path);
    if (found != loaded.end()) {
        return found->second;
    }
    Image& image = loaded[path];
    MessageBoxCapture capture;
    VePNGFile file;
    try {
        file.Load(std::string(QM_SOURCE_DIR) + "/" + path);
    } catch (const HaltIntercepted& halt) {
        ADD_FAILURE() << path << ": " << halt.title << ": " << halt.text;
        return image;
    }
    image.ok = true;
    image.width = file.width;
    image.height = file.height;
    image.pixels = std::move(file.pixels);
    return image;
}

bool FileExists(const std::string& path) {
    return std::filesystem::exists(std::string(QM_SOURCE_DIR) + "/" + path);
}

// A pixel's channels, its brightness and how far it is from grey.
struct Rgb {
    explicit Rgb(uint32_t c) : r(int((c >> 16) & 0xFF)), g(int((c >> 8) & 0xFF)), b(int(c & 0xFF)) {}
    int Luma() const { return (r * 299 + g * 587 + b * 114) / 1000; }
    int Saturation() const { return std::max({r, g, b}) - std::min({r, g, b}); }
    int r, g, b;
};

int CharacterCount() {
    int count = 0;
    while (FileExists("Assets/Characters/DefaultAnimation/Character" + std::to_string(count) + "_64.png")) {
        ++count;
    }
    return count;
}

// Every file on disk that the game loads, fixed-size or not.
std::vector<std::string> EveryImagePath() {
    std::vector<std::string> paths;
    for (const Expected& e : FixedImages()) {
        paths.push_back(e.path);
    }
    for (int s : kSizes) {
        paths.push_back(Sized("Assets/Blocks/Tileset_Forest", s));
        paths.push_back(Sized("Assets/Decorations/Forest_Decorations", s));
    }
    paths.push_back("Assets/Logo.png");
    for (int c = 0; c < CharacterCount(); ++c) {
        for (int s : {32, 64}) {
            std::string stem =
                "Assets/Characters/DefaultAnimation/Character" + std::to_string(c) + "_" + std::to_string(s);
            paths.push_back(stem + ".png");
            paths.push_back(stem + "_Sides.png");
        }
    }
    return paths;
}

TEST(ArtTest, EveryImageHasItsSizeAndColourSolidThingsAreOpaqueAndShapedThingsShowWhatLiesBehind) {
    for (const Expected& e : FixedImages()) {
        SCOPED_TRACE(e.path);
        const Image& image = Load(e.path);
        if (!image.ok) {
            continue;
        }
        EXPECT_EQ(image.width, e.width);
        EXPECT_EQ(image.height, e.height);
        if (image.width != e.width || image.height != e.height) {
            continue;
        }
        if (e.colour != 0) {
            EXPECT_GT(std::count_if(image.pixels.begin(), image.pixels.end(),
                                    [&](uint32_t p) { return (p & 0xFFFFFF) == e.colour; }),
                      e.width * e.height / 3)
                << "a coloured block is mostly its block colour";
        }
        int keys = image.KeysIn(0, 0, image.width, image.height);
        if (e.look == Look::Opaque) {
            EXPECT_EQ(keys, 0) << "a solid image has transparent pixels";
        } else if (e.look == Look::Sprite) {
            int w = image.width - 1;
            int h = image.height - 1;
            EXPECT_TRUE(image.Key(0, 0) && image.Key(w, 0) && image.Key(0, h) && image.Key(w, h))
                << "the corners of a shaped image are not transparent";
            EXPECT_GT(image.width * image.height - keys, image.width * image.height / 8)
                << "hardly anything is drawn";
        }
    }
}

TEST(ArtTest, NoPixelIsBlendedWithTheKeyAndThePaletteStaysSmall) {
    std::set<uint32_t> colours;
    for (const std::string& path : EveryImagePath()) {
        SCOPED_TRACE(path);
        const Image& image = Load(path);
        int blended = 0;
        for (uint32_t p : image.pixels) {
            uint32_t c = p & 0xFFFFFF;
            colours.insert(c);
            // Anything near magenta that is not the key itself would be a fringe against the key.
            if (c != kKey && Rgb(c).r > 150 && Rgb(c).b > 150 && Rgb(c).g < 90) {
                ++blended;
            }
        }
        EXPECT_EQ(blended, 0) << "pixels mixed with the key";
    }
    colours.erase(kKey);
    colours.erase(kFinishColour);
    EXPECT_LE(colours.size(), 40u) << "the images use more colours than the game's palette";
}

TEST(ArtTest, SheetsCutIntoWholeTilesOfTheSameCountAtEverySize) {
    int rows16 = -1;
    int decorations16 = -1;
    for (int s : kSizes) {
        SCOPED_TRACE(s);
        // Tileset rows are whole opaque blocks: the front face and the six faces of its cube.
        const Image& tiles = Load(Sized("Assets/Blocks/Tileset_Forest", s));
        const Image& sheet = Load(Sized("Assets/Decorations/Forest_Decorations", s));
        if (!tiles.ok || !sheet.ok) {
            continue;
        }
        EXPECT_EQ(tiles.width, 6 * s);
        ASSERT_EQ(tiles.height % s, 0);
        const int rows = tiles.height / s;
        EXPECT_GE(rows, 1);
        EXPECT_LE(rows, 144) << "default block ids run from 6 to 149";
        EXPECT_EQ(tiles.KeysIn(0, 0, tiles.width, tiles.height), 0) << "blocks are solid";
        // Decorations are shaped: neither a wall nor (nearly) empty.
        ASSERT_EQ(sheet.width % s, 0);
        ASSERT_EQ(sheet.height % s, 0);
        const int count = (sheet.width / s) * (sheet.height / s);
        EXPECT_LE(count, 96) << "decoration ids run from 150 to 245";
        for (int t = 0; t < count; ++t) {
            const int keys = sheet.KeysIn((t % (sheet.width / s)) * s, (t / (sheet.width / s)) * s, s, s);
            EXPECT_GT(keys, s * s / 4) << "decoration " << t << " would look like a wall";
            EXPECT_LT(keys, s * s - s) << "decoration " << t << " is (nearly) empty";
        }
        // Every size must offer the same blocks and decorations.
        rows16 = rows16 < 0 ? rows : rows16;
        decorations16 = decorations16 < 0 ? count : decorations16;
        EXPECT_EQ(rows, rows16);
        EXPECT_EQ(count, decorations16);
    }
}

TEST(ArtTest, FinishCarriesTheCyclingColourAndNoOtherColourOnItsPath) {
    std::vector<std::string> paths = {"Assets/Blocks/Finish_3D.png"};
    for (int s : kSizes) {
        paths.push_back(Sized("Assets/Blocks/Finish", s));
    }
    for (const std::string& path : paths) {
        SCOPED_TRACE(path);
        const Image& image = Load(path);
        int marked = 0;
        for (uint32_t p : image.pixels) {
            uint32_t c = p & 0xFFFFFF;
            if (c == kFinishColour) {
                ++marked;
                continue;
            }
            // The cycle passes only through colours with one channel full and another empty; a pixel
            // of such a colour would be repainted by mistake when the cycle reaches it.
            const Rgb rgb(c);
            if (c != kKey) {
                EXPECT_FALSE(std::max({rgb.r, rgb.g, rgb.b}) >= 0xFE && std::min({rgb.r, rgb.g, rgb.b}) == 0)
                    << std::hex << "colour 0x" << c << " lies on the cycle";
            }
        }
        EXPECT_GT(marked, int(image.pixels.size()) / 10) << "too little of the finish changes colour";
    }
}

// The gate is red bars with gaps between them; the background is calm and does not compete with
// the blocks.
TEST(ArtTest, RedGateAndBackgroundKeepTheirLookAtEverySize) {
    for (int s : kSizes) {
        SCOPED_TRACE(s);
        const Image& gate = Load(Sized("Assets/Gates/Red", s));
        const Image& bg = Load(Sized("Assets/Background", s));
        if (!gate.ok || !bg.ok) {
            continue;
        }
        int keys = gate.KeysIn(0, 0, s, s);
        EXPECT_GT(keys, s * s / 5) << "no gaps between the bars";
        int red = 0;
        for (uint32_t p : gate.pixels) {
            uint32_t c = p & 0xFFFFFF;
            red += (c != kKey && Rgb(c).r > Rgb(c).g + Rgb(c).b) ? 1 : 0;
        }
        EXPECT_GT(red, (s * s - keys) * 8 / 10) << "the gate is not in the key's red";
        // The bars reach from the top to the bottom: the middle column of some bar is drawn on every row.
        bool barFound = false;
        for (int x = 0; x < s && !barFound; ++x) {
            barFound = gate.KeysIn(x, 0, 1, s) == 0;
        }
        EXPECT_TRUE(barFound);
        const auto luma = std::views::transform(bg.pixels, [](uint32_t p) { return Rgb(p).Luma(); });
        const auto saturation =
            std::views::transform(bg.pixels, [](uint32_t p) { return Rgb(p).Saturation(); });
        EXPECT_LT(std::ranges::max(saturation), 80) << "a background colour is too vivid";
        EXPECT_LT(std::ranges::max(luma) - std::ranges::min(luma), 48)
            << "the background's contrast is too high";
    }
}

struct EyePlaces {
    int size, leftX, rightX, y, shift;
};

// Where the race draws the eye image on a racer of each size, and how far it shifts it.
const EyePlaces kEyes[2] = {{32, 8, 22, 10, 1}, {64, 16, 42, 20, 3}};

TEST(ArtTest, FourOrMoreCharactersBlinkOverTheirEyesKeepTheSquareAndHaveSolidSidesAtBothSizes) {
    EXPECT_GE(CharacterCount(), 4);
    for (const EyePlaces& e : kEyes) {
        const Image& eye = Load("Assets/Characters/DefaultAnimation/Eye_" + std::to_string(e.size) + ".png");
        if (!eye.ok) {
            continue;
        }
        // The two eye places are mirror images about the racer's middle.
        EXPECT_EQ(e.leftX + e.rightX + eye.width, e.size);
        int zoneW = eye.width + 2 * e.shift;
        int zoneH = eye.height + 2 * e.shift;
        for (int c = 0; c < CharacterCount(); ++c) {
            std::string stem = "Assets/Characters/DefaultAnimation/Character" + std::to_string(c) + "_" +
                               std::to_string(e.size);
            SCOPED_TRACE(stem);
            const Image& sides = Load(stem + "_Sides.png");
            if (sides.ok) {
                EXPECT_EQ(sides.width, e.size);
                EXPECT_EQ(sides.height, e.size);
                EXPECT_EQ(sides.KeysIn(0, 0, sides.width, sides.height), 0) << "the cube's sides are solid";
            }
            const Image& strip = Load(stem + ".png");
            if (!strip.ok) {
                continue;
            }
            EXPECT_EQ(strip.height, e.size);
            EXPECT_EQ(strip.width % e.size, 0);
            EXPECT_GE(strip.width / e.size, 2) << "a blink needs at least an open and a closed frame";
            if (strip.height != e.size || strip.width < 2 * e.size) {
                continue;
            }
            int frames = strip.width / e.size;
            for (int f = 0; f < frames; ++f) { // every key pixel of a frame lies inside its edge
                EXPECT_EQ(strip.KeysIn(f * e.size, 0, e.size, e.size),
                          strip.KeysIn(f * e.size + 1, 1, e.size - 2, e.size - 2))
                    << "frame " << f << " does not keep the square's edge";
            }
            for (int x : {e.leftX, e.rightX}) {
                int zx = x - e.shift;
                int zy = e.y - e.shift;
                EXPECT_EQ(strip.KeysIn(zx, zy, zoneW, zoneH), zoneW * zoneH)
                    << "frame 0 covers an eye wherever the racer looks";
                int last = (frames - 1) * e.size;
                EXPECT_LT(strip.KeysIn(last + zx, zy, zoneW, zoneH), zoneW * zoneH / 2)
                    << "the last frame does not close the eye";
            }
        }
    }
}

TEST(ArtTest, EditorHoverButtonsDifferFromTheirNormalButtons) {
    for (const char* button : kEditorButtons) {
        SCOPED_TRACE(button);
        const Image& normal = Load(std::string("Assets/EditorGUI/") + button + ".png");
        const Image& hover = Load(std::string("Assets/EditorGUI/") + button + "Hover.png");
        EXPECT_NE(normal.pixels, hover.pixels);
    }
}

} // namespace
