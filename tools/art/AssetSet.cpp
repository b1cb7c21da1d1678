#include "AssetSet.h"

#include "PngWriter.h"

#include <algorithm>
#include <stdexcept>

std::string AssetSet::Name(std::initializer_list<std::string_view> parts) {
    std::string name;
    for (std::string_view part : parts) {
        name.append(part.data(), part.size());
    }
    return name;
}

std::string AssetSet::Sized(std::string_view stem, int size) {
    std::string number = std::to_string(size);
    return Name({stem, "_", number, ".png"});
}

void AssetSet::Add(const std::string& path, const ArtImage& image, const std::string& group) {
    if (Find(path)) {
        throw std::runtime_error("image drawn twice: " + path);
    }
    assets.push_back({path, image, group});
}

void AssetSet::AddPreview(const std::string& label, const ArtImage& image, const std::string& group) {
    assets.push_back({label, image, group, false});
}

const ArtImage* AssetSet::Find(const std::string& path) const {
    for (const ArtAsset& a : assets) {
        if (a.path == path) {
            return &a.image;
        }
    }
    return nullptr;
}

int AssetSet::WriteAll(const std::string& root) const {
    int changedCount = 0;
    for (const ArtAsset& a : assets) {
        if (!a.written) {
            continue;
        }
        bool changed = false;
        if (!PngWriter::WriteIfChanged(root + "/" + a.path, PngWriter::Encode(a.image), changed)) {
            throw std::runtime_error("cannot write " + root + "/" + a.path);
        }
        changedCount += changed ? 1 : 0;
    }
    return changedCount;
}

void AssetSet::WritePreviews(const std::string& folder, int scale) const {
    for (const ArtAsset& a : assets) {
        if (!a.written) {
            continue;
        }
        std::string name = a.path;
        std::replace(name.begin(), name.end(), '/', '_');
        int s = std::max(1, std::min(scale, 2048 / std::max(1, std::max(a.image.Width(), a.image.Height()))));
        bool changed = false;
        PngWriter::WriteIfChanged(folder + "/" + name, PngWriter::Encode(a.image.Scaled(s)), changed);
    }
}
