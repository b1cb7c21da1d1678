#pragma once
// The racer and the other characters. The race builds a racer's face each frame: it fills a square
// with white, draws the eye image at the two eye places (shifted by where the racer looks) and draws
// a body frame on top, so every body frame leaves the eye areas as the key and shows the white
// through them. Blink frames close the eyes with lids. All characters keep the square silhouette
// and differ by hat, colour and pattern.
//
// Files (in Assets/Characters/DefaultAnimation/):
//   Eye_32.png, Eye_64.png                the eye image for 32- and 64-pixel racers
//   Character<k>_<size>.png               body frames of character k side by side, frame 0 open
//                                         eyes, the last frame closed eyes (size 32 and 64)
//   Character<k>_<size>_Sides.png         the cube's other faces for character k
// and Assets/Characters/Default*.png are character 0 with open eyes looking ahead.
#include "ArtImage.h"
#include "AssetSet.h"

class CharacterArt {
public:
    static constexpr int Count = 5;
    static constexpr int Frames = 3;
    static void Paint(AssetSet& set);
    // The eye places of a racer of the given size (32 or 64): left eye, right eye, eye size and how
    // far the race shifts the eyes.
    struct EyeLayout {
        int leftX, rightX, y, width, height, shift;
    };
    static EyeLayout Eyes(int size);
    static ArtImage Eye(int size);
    static ArtImage BodyFrame(int character, int size, int frame);
    static ArtImage Sides(int character, int size);
    // The racer as the race would show it: white, eyes looking ahead, body frame 0 on top.
    static ArtImage Composed(int character, int size);

private:
    static ArtImage Default16();
    static ArtImage Default16Sides();
};
