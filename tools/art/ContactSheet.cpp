#include "ContactSheet.h"

#include "PixelFont.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr uint32_t kSheet = 0x2B2B2E;
constexpr uint32_t kCheckA = 0x8E8E8E;
constexpr uint32_t kCheckB = 0xA6A6A6;
constexpr uint32_t kLabel = 0xD8D8D8;
constexpr uint32_t kTitle = 0xFFFFFF;
constexpr int kGap = 10;

std::string ShortName(const std::string& path) {
    std::string name = path;
    if (name.rfind("Assets/", 0) == 0) {
        name = name.substr(7);
    }
    if (name.size() > 4 && name.substr(name.size() - 4) == ".png") {
        name = name.substr(0, name.size() - 4);
    }
    return name;
}

struct Placed {
    const ArtAsset* asset;
    int x, y, w, h;
};

} // namespace

ArtImage ContactSheet::Build(const AssetSet& set, int width) {
    std::vector<std::string> groups;
    for (const ArtAsset& a : set.Assets()) {
        if (std::find(groups.begin(), groups.end(), a.group) == groups.end()) {
            groups.push_back(a.group);
        }
    }
    // Lay out first, then draw on an image of the height that needed.
    std::vector<Placed> placed;
    std::vector<std::pair<std::string, int>> titles;
    int y = kGap;
    for (const std::string& group : groups) {
        titles.push_back({group, y});
        y += PixelFont::Height * 2 + kGap;
        int x = kGap;
        int rowHeight = 0;
        for (const ArtAsset& a : set.Assets()) {
            if (a.group != group) {
                continue;
            }
            std::string label = ShortName(a.path);
            int w = std::max(a.image.Width(), PixelFont::Width(label));
            int h = a.image.Height() + PixelFont::Height + 4;
            if (x + w > width - kGap && x > kGap) {
                x = kGap;
                y += rowHeight + kGap;
                rowHeight = 0;
            }
            placed.push_back({&a, x, y, w, h});
            x += w + kGap;
            rowHeight = std::max(rowHeight, h);
        }
        y += rowHeight + kGap * 2;
    }
    ArtImage sheet(width, y, kSheet);
    for (const auto& [title, ty] : titles) {
        PixelFont::Draw(sheet, kGap, ty, title, kTitle, 2);
    }
    for (const Placed& p : placed) {
        const ArtImage& image = p.asset->image;
        for (int j = 0; j < image.Height(); ++j) {
            for (int i = 0; i < image.Width(); ++i) {
                uint32_t c = image.Get(i, j);
                if (c == kKey) {
                    c = ((i / 4) + (j / 4)) % 2 == 0 ? kCheckA : kCheckB;
                }
                sheet.Set(p.x + i, p.y + j, c);
            }
        }
        PixelFont::Draw(sheet, p.x, p.y + image.Height() + 3, ShortName(p.asset->path), kLabel);
    }
    return sheet;
}
