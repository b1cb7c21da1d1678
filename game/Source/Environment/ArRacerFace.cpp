#include "Environment/ArRacerFace.h"

#include "Platform/VeFiles.h"

#include <algorithm>
#include <string>

namespace {

std::string CharacterFile(int character, int size, const char* suffix) {
    return std::string(ArRacerFace::kFolder) + "Character" + std::to_string(character) + "_" +
           std::to_string(size) + suffix + ".png";
}

} // namespace

void ArRacerFace::Load(int wanted, bool withTextures) {
    character =
        FileExists(CharacterFile(wanted, 64, "")) && FileExists(CharacterFile(wanted, 32, "")) ? wanted : 0;
    const std::array<int, 2> pixels = {64, 32};
    for (size_t i = 0; i < sizes.size(); ++i) {
        Size& size = sizes[i];
        size.pixels = pixels[i];
        const bool large = size.pixels == 64;
        size.leftEye = large ? 16 : 8;
        size.rightEye = large ? 42 : 22;
        size.eyeY = large ? 20 : 10;
        size.shift = large ? 3 : 1;
        size.frames = std::make_unique<VeImage>(CharacterFile(character, size.pixels, ""));
        size.sides = std::make_unique<VeImage>(CharacterFile(character, size.pixels, "_Sides"));
        size.eye =
            std::make_unique<VeImage>(std::string(kFolder) + "Eye_" + std::to_string(size.pixels) + ".png");
        size.face.Create(size.pixels, size.pixels);
        size.texture.reset();
    }
    frameCount = std::max(1, sizes[0].frames->width / 64);
    lastFrame = -1;
    for (Size& size : sizes) {
        Draw(size, 0, 0, 0);
        if (withTextures) {
            size.texture = std::make_unique<VeTexture>(&size.face, VeFilterNearestMipmapNearest);
            size.texture->SetFace(size.sides.get(), 1);
            size.texture->SetFaceMap({0, 1, 1, 1, 1, 1});
        }
    }
    lastDX = lastDY = 0;
    lastFrame = 0;
}

void ArRacerFace::Draw(Size& size, int eyeDX, int eyeDY, int bodyFrame) {
    size.face.Fill(0xFFFFFF);
    const int dx = eyeDX * size.shift;
    const int dy = eyeDY * size.shift;
    size.face.BlitKeyed(*size.eye, size.leftEye + dx, size.eyeY + dy);
    size.face.BlitKeyed(*size.eye, size.rightEye + dx, size.eyeY + dy);
    const int frame = std::clamp(bodyFrame, 0, frameCount - 1);
    size.face.BlitKeyed(*size.frames, -frame * size.pixels, 0);
}

void ArRacerFace::Build(int eyeDX, int eyeDY, int bodyFrame) {
    if (!Loaded() || (eyeDX == lastDX && eyeDY == lastDY && bodyFrame == lastFrame)) {
        return;
    }
    lastDX = eyeDX;
    lastDY = eyeDY;
    lastFrame = bodyFrame;
    for (Size& size : sizes) {
        Draw(size, eyeDX, eyeDY, bodyFrame);
        if (size.texture) {
            size.texture->Replace(&size.face);
        }
    }
}

const VeSurface* ArRacerFace::Image(int pixels) const {
    for (const Size& size : sizes) {
        if (size.pixels == pixels && Loaded()) {
            return &size.face;
        }
    }
    return nullptr;
}

const VeTexture* ArRacerFace::Texture(int pixels) const {
    for (const Size& size : sizes) {
        if (size.pixels == pixels) {
            return size.texture.get();
        }
    }
    return nullptr;
}
