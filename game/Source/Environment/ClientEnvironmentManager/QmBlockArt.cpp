#include "Environment/ClientEnvironmentManager/QmBlockArt.h"

#include "Screen/Surface/VeImage.h"

namespace {

std::unique_ptr<VeSurface> LoadImage(const std::string& path) {
    return std::make_unique<VeImage>(path);
}

std::unique_ptr<VeSurface> KeyFilled(int size) {
    auto surface = std::make_unique<VeSurface>(size, size);
    surface->Fill(kColourKey);
    return surface;
}

} // namespace

std::unique_ptr<QmBlockArt> QmBlockArt::Load(const std::string& base, unsigned int filter,
                                             const std::string& threeDPath) {
    auto art = std::make_unique<QmBlockArt>();
    art->filter = filter;
    art->surface16 = LoadImage(base + "_16.png");
    art->surface32 = LoadImage(base + "_32.png");
    art->surface64 = LoadImage(base + "_64.png");
    if (!threeDPath.empty()) {
        art->surface3D = LoadImage(threeDPath);
    }
    return art;
}

std::unique_ptr<QmBlockArt> QmBlockArt::Blank(unsigned int filter) {
    auto art = std::make_unique<QmBlockArt>();
    art->filter = filter;
    art->surface64 = KeyFilled(64);
    art->surface32 = KeyFilled(32);
    art->surface16 = KeyFilled(16);
    return art;
}

std::unique_ptr<VeSurface> QmBlockArt::CutTile(const VeSurface& sheet, int column, int row, int size) {
    auto tile = std::make_unique<VeSurface>(size, size);
    tile->Fill(kColourKey);
    tile->Blit(sheet, -column * size, -row * size);
    return tile;
}

VeSurface* QmBlockArt::Surface(int size) const {
    switch (size) {
    case 64:
        return surface64.get();
    case 32:
        return surface32.get();
    case 16:
        return surface16.get();
    case 3:
        return surface3D.get();
    default:
        return nullptr;
    }
}

VeTexture* QmBlockArt::Texture(int blockSize) const {
    return blockSize == 32 ? second.get() : first.get();
}

std::unique_ptr<VeTexture> QmBlockArt::Layered(const std::vector<std::unique_ptr<VeSurface>>& faces,
                                               unsigned int filter) {
    auto texture = std::make_unique<VeTexture>(faces[0].get(), filter);
    std::array<int, 6> map{};
    for (int face = 0; face < 6; ++face) {
        const int layer = face < static_cast<int>(faces.size()) ? face : 0;
        if (layer > 0) {
            texture->SetFace(faces[layer].get(), layer);
        }
        map[face] = layer;
    }
    texture->SetFaceMap(map);
    return texture;
}

void QmBlockArt::MakeTextures() {
    if (layered && !faces64.empty() && !faces32.empty()) {
        first = Layered(faces64, filter);
        second = Layered(faces32, filter);
        return;
    }
    VeSurface* firstSource = surface3D ? surface3D.get() : surface64.get();
    if (firstSource != nullptr) {
        first = std::make_unique<VeTexture>(firstSource, filter);
    }
    if (surface32) {
        second = std::make_unique<VeTexture>(surface32.get(), filter);
    }
}

void QmBlockArt::RefreshTexture(int blockSize) {
    if (blockSize == 32 && second) {
        second->Refresh();
    } else if (blockSize == 64) {
        RefreshFirstTexture();
    }
}

void QmBlockArt::RefreshFirstTexture() {
    if (first) {
        first->Refresh();
    }
}
