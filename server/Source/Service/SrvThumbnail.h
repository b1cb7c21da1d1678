#pragma once
// Thumbnails of shared maps, drawn without a window from the game's own 16-pixel block art, the
// magenta key showing the background. The picture is 160 pixels square and shows the part of the
// map that is played: 10 x 10 cells of 16 pixels for a map of 64-pixel blocks, 20 x 20 cells of 8
// pixels (the art halved) for 32-pixel blocks. It is written as a PNG. Art that cannot be read
// draws as plain colours, so a missing asset folder costs looks, never an upload.
#include "Environment/CoreEnvironmentManager/QmBlocks.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

class SrvThumbnail {
public:
    static constexpr int kArt = 16;
    static constexpr int kSize = 160;

    // Reads the art under the assets folder (the game's "Assets").
    explicit SrvThumbnail(const std::string& assets);

    // The PNG of a map's cells (x-major, as the map record) at its block size.
    std::string Draw(const std::array<BlockId, 400>& blocks, int blockSize) const;
    // The RGB pixels of the same picture, kSize x kSize.
    std::vector<uint8_t> Pixels(const std::array<BlockId, 400>& blocks, int blockSize) const;
    bool HasArt() const { return !art.empty(); }

    static std::string EncodePng(const std::vector<uint8_t>& rgb, int width, int height);

private:
    struct Tile {
        // kArt x kArt RGBA; alpha 0 where the art's key lets the background through.
        std::array<uint8_t, kArt * kArt * 4> rgba{};
    };
    static bool ReadPng(const std::string& path, std::vector<uint8_t>& rgb, int& width, int& height);
    static Tile Cut(const std::vector<uint8_t>& rgb, int width, int left, int top);
    void AddSheet(const std::string& path, BlockId first, bool firstColumnOnly);
    void AddSingle(const std::string& path, BlockId id);

    std::map<BlockId, Tile> art;
    Tile background;
};
