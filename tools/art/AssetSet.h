#pragma once
// The images the generator makes, each with its path under the repository root and the group it is
// shown under on the contact sheet. Painters add to it; the main program writes it out.
#include "ArtImage.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

struct ArtAsset {
    std::string path;
    ArtImage image;
    std::string group;
    // False for pictures shown on the contact sheet only.
    bool written = true;
};

class AssetSet {
public:
    // The parts joined; built by appending, which some compilers' overflow checks handle better than
    // chains of operator+ on temporaries.
    static std::string Name(std::initializer_list<std::string_view> parts);
    // stem + "_" + size + ".png", the naming of images made at several block sizes.
    static std::string Sized(std::string_view stem, int size);

    // Adding a path twice is a programming error and throws.
    void Add(const std::string& path, const ArtImage& image, const std::string& group);
    // A picture for the contact sheet only, labelled with label; never written as a game file.
    void AddPreview(const std::string& label, const ArtImage& image, const std::string& group);
    const std::vector<ArtAsset>& Assets() const { return assets; }
    // Null when no image has that path.
    const ArtImage* Find(const std::string& path) const;
    // Writes every image under root; returns how many files changed. Throws on a write failure.
    int WriteAll(const std::string& root) const;
    // Writes each image enlarged by scale into folder, named after its path, for viewing.
    void WritePreviews(const std::string& folder, int scale) const;

private:
    std::vector<ArtAsset> assets;
};
