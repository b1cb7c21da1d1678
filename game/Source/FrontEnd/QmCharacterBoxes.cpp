#include "FrontEnd/QmCharacterBoxes.h"

#include "Controls/QmControls.h"
#include "Input/VeInput.h"
#include "Platform/VeFiles.h"
#include "Screen/Surface/VeSurface.h"

#include <algorithm>
#include <string>

int QmCharacterBoxes::AvailableCharacters() {
    int count = 0;
    while (FileExists(std::string(ArRacerFace::kFolder) + "Character" + std::to_string(count) + "_64.png")) {
        ++count;
    }
    return count;
}

QmCharacterBoxes::QmCharacterBoxes() {
    const int count = AvailableCharacters();
    for (int k = 0; k < count; ++k) {
        auto face = std::make_unique<ArRacerFace>();
        face->Load(k, false);
        faces.push_back(std::move(face));
    }
}

void QmCharacterBoxes::Choose(int character) {
    chosen = Count() > 0 ? std::clamp(character, 0, Count() - 1) : 0;
}

int QmCharacterBoxes::BoxAt(int x, int y, int left, int top) const {
    if (y < top || y >= top + kBox || x < left) {
        return -1;
    }
    const int k = (x - left) / kStep;
    return k < Count() && x - left - k * kStep < kBox ? k : -1;
}

bool QmCharacterBoxes::Update(QmControls& controls, const VeInput* input, int left, int top) {
    const int before = chosen;
    if (controls.MenuLeft()) {
        Choose(chosen - 1);
    }
    if (controls.MenuRight()) {
        Choose(chosen + 1);
    }
    if (input != nullptr && input->mousePressed[kMouseLeft] != 0) {
        const int under = BoxAt(input->mouseX, input->mouseY, left, top);
        if (under >= 0) {
            Choose(under);
        }
    }
    return chosen != before;
}

void QmCharacterBoxes::Draw(VeSurface& target, int left, int top, int64_t now) {
    for (int k = 0; k < Count(); ++k) {
        const int x = left + kStep * k;
        ArRacerFace& face = *faces[static_cast<size_t>(k)];
        if (k == chosen) {
            target.Rect(x - 4, top - 4, kBox + 8, kBox + 8, kFrameColour, true, true);
            face.Build(0, 0, static_cast<int>((now / kFrameMs) % face.FrameCount()));
        } else {
            target.Rect(x - 2, top - 2, kBox + 4, kBox + 4, kBoxColour, true, true);
            face.Build(0, 0, 0);
        }
        const VeSurface* image = face.Image(kBox);
        if (image != nullptr) {
            target.BlitKeyed(*image, x, top, true);
        }
    }
}

void QmCharacterBoxes::DrawFace(VeSurface& target, int character, int x, int y) const {
    if (character < 0 || character >= Count()) {
        return;
    }
    const VeSurface* image = faces[static_cast<size_t>(character)]->Image(32);
    if (image != nullptr) {
        target.BlitKeyed(*image, x, y, true);
    }
}
