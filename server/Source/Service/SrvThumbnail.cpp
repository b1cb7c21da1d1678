#include "SrvThumbnail.h"

#include <png.h>

namespace {
constexpr int kArt = 16; // the art size the thumbnail halves

bool IsKey(const uint8_t* p) {
    return p[0] == 255 && p[1] == 0 && p[2] == 255;
}
} // namespace

SrvThumbnail::SrvThumbnail(const std::string& assets) {
    for (int i = 0; i < kCell * kCell; ++i) {
        background.rgba[i * 4 + 0] = 36;
        background.rgba[i * 4 + 1] = 44;
        background.rgba[i * 4 + 2] = 66;
        background.rgba[i * 4 + 3] = 255;
    }
    std::vector<uint8_t> rgb;
    int width = 0, height = 0;
    if (ReadPng(assets + "/Background_16.png", rgb, width, height) && width >= kArt && height >= kArt) {
        background = Halve(rgb, width, 0, 0);
    }
    const char* coloured[] = {"Orange", "Blue", "Green", "Yellow", "Red"};
    for (int i = 0; i < 5; ++i) {
        AddSingle(assets + "/Blocks/" + coloured[i] + "_16.png", Block::FirstDefault + i);
    }
    AddSheet(assets + "/Blocks/Tileset_Forest_16.png", Block::LastColoured + 1, true);
    AddSheet(assets + "/Decorations/Forest_Decorations_16.png", Block::FirstDecoration, false);
    AddSingle(assets + "/Pickups/Disco_16.png", Block::DiscoConfusion);
    AddSingle(assets + "/Gates/Red_16.png", Block::RedGate);
    AddSingle(assets + "/Pickups/RedGateKey_16.png", Block::RedGateKey);
    AddSingle(assets + "/Pickups/FlipScreen_16.png", Block::FlipVision);
    AddSingle(assets + "/Pickups/SpeedUp_16.png", Block::SpeedUp);
    AddSingle(assets + "/Pickups/SuperJump_16.png", Block::JumpImpulse);
    AddSingle(assets + "/Blocks/Fire_16.png", Block::Fire);
    AddSingle(assets + "/Blocks/Finish_16.png", Block::Finish);
    AddSingle(assets + "/Characters/Default_16.png", Block::Start);
    // Enemies are racers too: the racer's art, tinted red.
    auto racer = art.find(Block::Start);
    if (racer != art.end()) {
        Tile enemy = racer->second;
        for (int i = 0; i < kCell * kCell; ++i) {
            enemy.rgba[i * 4 + 1] = static_cast<uint8_t>(enemy.rgba[i * 4 + 1] / 3);
            enemy.rgba[i * 4 + 2] = static_cast<uint8_t>(enemy.rgba[i * 4 + 2] / 3);
        }
        art[Block::Enemy] = enemy;
    }
}

bool SrvThumbnail::ReadPng(const std::string& path, std::vector<uint8_t>& rgb, int& width, int& height) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str())) {
        return false;
    }
    if (image.width == 0 || image.height == 0 || image.width > 4096 || image.height > 4096) {
        png_image_free(&image);
        return false;
    }
    image.format = PNG_FORMAT_RGB;
    rgb.assign(PNG_IMAGE_SIZE(image), 0);
    if (!png_image_finish_read(&image, nullptr, rgb.data(), 0, nullptr)) {
        png_image_free(&image);
        return false;
    }
    width = static_cast<int>(image.width);
    height = static_cast<int>(image.height);
    return true;
}

// Each pixel of the tile is the mean of a 2 x 2 square of the art, keyed pixels left out.
SrvThumbnail::Tile SrvThumbnail::Halve(const std::vector<uint8_t>& rgb, int width, int left, int top) {
    Tile tile;
    for (int y = 0; y < kCell; ++y) {
        for (int x = 0; x < kCell; ++x) {
            int sum[3] = {0, 0, 0};
            int count = 0;
            for (int dy = 0; dy < 2; ++dy) {
                for (int dx = 0; dx < 2; ++dx) {
                    const uint8_t* p = &rgb[((top + y * 2 + dy) * width + left + x * 2 + dx) * 3];
                    if (!IsKey(p)) {
                        sum[0] += p[0];
                        sum[1] += p[1];
                        sum[2] += p[2];
                        ++count;
                    }
                }
            }
            uint8_t* out = &tile.rgba[(y * kCell + x) * 4];
            for (int c = 0; c < 3; ++c) {
                out[c] = static_cast<uint8_t>(count ? sum[c] / count : 0);
            }
            out[3] = count >= 2 ? 255 : 0;
        }
    }
    return tile;
}

void SrvThumbnail::AddSingle(const std::string& path, BlockId id) {
    std::vector<uint8_t> rgb;
    int width = 0, height = 0;
    if (ReadPng(path, rgb, width, height) && width >= kArt && height >= kArt) {
        art[id] = Halve(rgb, width, 0, 0);
    }
}

// A sheet of 16-pixel tiles in reading order; with firstColumnOnly one tile per row (a tileset row
// is one block whose other columns are its other faces).
void SrvThumbnail::AddSheet(const std::string& path, BlockId first, bool firstColumnOnly) {
    std::vector<uint8_t> rgb;
    int width = 0, height = 0;
    if (!ReadPng(path, rgb, width, height)) {
        return;
    }
    int columns = firstColumnOnly ? 1 : width / kArt;
    BlockId id = first;
    BlockId last = firstColumnOnly ? Block::LastDefault : Block::LastDecoration;
    for (int row = 0; row < height / kArt; ++row) {
        for (int column = 0; column < columns && id <= last; ++column) {
            art[id++] = Halve(rgb, width, column * kArt, row * kArt);
        }
    }
}

std::vector<uint8_t> SrvThumbnail::Pixels(const std::array<BlockId, 400>& blocks) const {
    std::vector<uint8_t> rgb(kSize * kSize * 3);
    for (int cx = 0; cx < 20; ++cx) {
        for (int cy = 0; cy < 20; ++cy) {
            BlockId id = blocks[cx * 20 + cy];
            auto found = art.find(id);
            const Tile* tile = found == art.end() ? nullptr : &found->second;
            for (int y = 0; y < kCell; ++y) {
                for (int x = 0; x < kCell; ++x) {
                    const uint8_t* back = &background.rgba[(y * kCell + x) * 4];
                    const uint8_t* front = tile ? &tile->rgba[(y * kCell + x) * 4] : nullptr;
                    const uint8_t* p = (front && front[3]) ? front : back;
                    uint8_t* out = &rgb[((cy * kCell + y) * kSize + cx * kCell + x) * 3];
                    out[0] = p[0];
                    out[1] = p[1];
                    out[2] = p[2];
                    if (!tile && id != Block::Blank) {
                        out[0] = 200; // a block without art: a plain grey square
                        out[1] = 200;
                        out[2] = 200;
                    }
                }
            }
        }
    }
    return rgb;
}

std::string SrvThumbnail::EncodePng(const std::vector<uint8_t>& rgb, int width, int height) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_RGB;
    png_alloc_size_t size = 0;
    if (!png_image_write_get_memory_size(image, size, 0, rgb.data(), 0, nullptr)) {
        return std::string();
    }
    std::string png(size, '\0');
    if (!png_image_write_to_memory(&image, png.data(), &size, 0, rgb.data(), 0, nullptr)) {
        return std::string();
    }
    png.resize(size);
    return png;
}

std::string SrvThumbnail::Draw(const std::array<BlockId, 400>& blocks) const {
    return EncodePng(Pixels(blocks), kSize, kSize);
}
