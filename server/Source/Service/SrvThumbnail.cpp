#include "SrvThumbnail.h"

#include <png.h>

namespace {
bool IsKey(const uint8_t* p) {
    return p[0] == 255 && p[1] == 0 && p[2] == 255;
}
} // namespace

SrvThumbnail::SrvThumbnail(const std::string& assets) {
    for (int i = 0; i < kArt * kArt; ++i) {
        background.rgba[i * 4 + 0] = 36;
        background.rgba[i * 4 + 1] = 44;
        background.rgba[i * 4 + 2] = 66;
        background.rgba[i * 4 + 3] = 255;
    }
    std::vector<uint8_t> rgb;
    int width = 0, height = 0;
    if (ReadPng(assets + "/Background_16.png", rgb, width, height) && width >= kArt && height >= kArt) {
        background = Cut(rgb, width, 0, 0);
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
        for (int i = 0; i < kArt * kArt; ++i) {
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

SrvThumbnail::Tile SrvThumbnail::Cut(const std::vector<uint8_t>& rgb, int width, int left, int top) {
    Tile tile;
    for (int y = 0; y < kArt; ++y) {
        for (int x = 0; x < kArt; ++x) {
            const uint8_t* p = &rgb[((top + y) * width + left + x) * 3];
            uint8_t* out = &tile.rgba[(y * kArt + x) * 4];
            out[0] = p[0];
            out[1] = p[1];
            out[2] = p[2];
            out[3] = IsKey(p) ? 0 : 255;
        }
    }
    return tile;
}

void SrvThumbnail::AddSingle(const std::string& path, BlockId id) {
    std::vector<uint8_t> rgb;
    int width = 0, height = 0;
    if (ReadPng(path, rgb, width, height) && width >= kArt && height >= kArt) {
        art[id] = Cut(rgb, width, 0, 0);
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
            art[id++] = Cut(rgb, width, column * kArt, row * kArt);
        }
    }
}

// Each pixel is the mean of a square of art pixels (one pixel, or 2 x 2 for the smaller cells);
// where most of the square is keyed, the background's pixel shows instead.
std::vector<uint8_t> SrvThumbnail::Pixels(const std::array<BlockId, 400>& blocks, int blockSize) const {
    const int cells = blockSize == 32 ? 20 : 10;
    const int cell = kSize / cells;
    const int step = kArt / cell;
    std::vector<uint8_t> rgb(kSize * kSize * 3);
    for (int cx = 0; cx < cells; ++cx) {
        for (int cy = 0; cy < cells; ++cy) {
            BlockId id = blocks[cx * 20 + cy];
            auto found = art.find(id);
            const Tile& tile = found == art.end() ? background : found->second;
            for (int y = 0; y < cell; ++y) {
                for (int x = 0; x < cell; ++x) {
                    int sum[3] = {0, 0, 0};
                    int count = 0;
                    for (int dy = 0; dy < step; ++dy) {
                        for (int dx = 0; dx < step; ++dx) {
                            const uint8_t* p = &tile.rgba[((y * step + dy) * kArt + x * step + dx) * 4];
                            if (p[3]) {
                                sum[0] += p[0];
                                sum[1] += p[1];
                                sum[2] += p[2];
                                ++count;
                            }
                        }
                    }
                    uint8_t* out = &rgb[((cy * cell + y) * kSize + cx * cell + x) * 3];
                    const uint8_t* back = &background.rgba[((y * step) * kArt + x * step) * 4];
                    for (int c = 0; c < 3; ++c) {
                        out[c] = count * 2 >= step * step ? static_cast<uint8_t>(sum[c] / count) : back[c];
                    }
                    if (found == art.end() && id != Block::Blank) {
                        out[0] = out[1] = out[2] = 200; // a block without art: a plain grey square
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

std::string SrvThumbnail::Draw(const std::array<BlockId, 400>& blocks, int blockSize) const {
    return EncodePng(Pixels(blocks, blockSize), kSize, kSize);
}
