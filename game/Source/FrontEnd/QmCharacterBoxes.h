#pragma once
// The character boxes: every character the game has art for at 64 pixels, each in a 64 x 64 box,
// the boxes 70 pixels apart from the given left edge. The chosen box is framed and its racer plays
// its body animation; the others show their first frame. Left and right move the choice within
// the characters available, a click on a box chooses it.
#include "Environment/ArRacerFace.h"

#include <cstdint>
#include <memory>
#include <vector>

class QmControls;
class VeInput;
class VeSurface;

class QmCharacterBoxes {
public:
    static constexpr int kBox = 64;
    static constexpr int kStep = 70;
    static constexpr int kFrameMs = 120;
    static constexpr uint32_t kFrameColour = 0xE6D514;
    static constexpr uint32_t kBoxColour = 0x2E2B3A;

    // How many characters have their 64-pixel art, counted from character 0.
    static int AvailableCharacters();

    // Loads the art of every available character.
    QmCharacterBoxes();

    int Count() const { return static_cast<int>(faces.size()); }
    // The whole row's width in pixels.
    int Width() const { return Count() > 0 ? kStep * (Count() - 1) + kBox : 0; }
    int Chosen() const { return chosen; }
    // Clamped to the characters available.
    void Choose(int character);

    // Left and right (keys or pad) move the choice, a click on a box at (left, top) chooses it;
    // true when the choice changed.
    bool Update(QmControls& controls, const VeInput* input, int left, int top);
    // The character whose box lies under the point, or -1.
    int BoxAt(int x, int y, int left, int top) const;
    // Draws the boxes at (left, top); now (ms) moves the chosen racer's animation.
    void Draw(VeSurface& target, int left, int top, int64_t now);
    // A character's 32-pixel face at (x, y), as its box last showed it.
    void DrawFace(VeSurface& target, int character, int x, int y) const;

private:
    std::vector<std::unique_ptr<ArRacerFace>> faces;
    int chosen = 0;
};
