#pragma once
// The steered racer's face as the race shows it, at 64 and 32 pixels: a white square with the
// two eyes (shifted by where the racer looks: 3 pixels a step at 64, 1 at 32) and the current body
// frame of the character's animation on top, transparent where the frame holds the key. The cube
// in the 3D view shows the face in front and the character's side art on its other faces.
//
// Files: "Assets/Characters/DefaultAnimation/Character<k>_<size>.png" (body frames side by side),
// "..._Sides.png" and "Eye_<size>.png". An unknown character number falls back to character 0.
#include "Screen/Surface/VeImage.h"
#include "Screen/Surface/VeTexture.h"

#include <array>
#include <memory>

class ArRacerFace {
public:
    static constexpr const char* kFolder = "Assets/Characters/DefaultAnimation/";

    // Loads the character's art and builds the face looking ahead with open eyes.
    void Load(int character, bool withTextures);
    // Redraws both faces (only when something changed) and uploads their textures again.
    void Build(int eyeDX, int eyeDY, int bodyFrame);
    int FrameCount() const { return frameCount; }
    int Character() const { return character; }
    bool Loaded() const { return character >= 0; }
    // The face for block size 64 or 32 (others: null).
    const VeSurface* Image(int size) const;
    const VeTexture* Texture(int size) const;

private:
    struct Size {
        int pixels = 0;
        int leftEye = 0;
        int rightEye = 0;
        int eyeY = 0;
        int shift = 0;
        std::unique_ptr<VeImage> frames;
        std::unique_ptr<VeImage> sides;
        std::unique_ptr<VeImage> eye;
        VeSurface face;
        std::unique_ptr<VeTexture> texture;
    };

    void Draw(Size& size, int eyeDX, int eyeDY, int bodyFrame);

    std::array<Size, 2> sizes;
    int character = -1;
    int frameCount = 1;
    int lastDX = 0;
    int lastDY = 0;
    int lastFrame = -1;
};
