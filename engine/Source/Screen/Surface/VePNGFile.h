#pragma once
// PNG images as 0x00RRGGBB pixels, top row first. Transparency rests on the magenta key alone:
// RGB pixels exactly (255, 0, 255) stay 0x00FF00FF and the alpha of RGBA images is dropped.
// Palette, grey and grey-with-alpha images (and RGB images with a transparent colour) are turned
// into RGB, and their transparent pixels (alpha below 128) become the key. 16-bit samples are
// reduced to 8 bits. A missing, foreign or broken file halts with a message naming the step.
#include <cstdint>
#include <string>
#include <vector>

class VePNGFile {
public:
    void Load(const std::string& path);

    // Encodes width by height pixels (0x??RRGGBB, rowLength pixels per row, top row first) as an
    // 8-bit RGB PNG and writes it atomically. Returns false (and logs why) when it cannot.
    static bool Save(const std::string& path, int32_t width, int32_t height, const uint32_t* pixels,
                     int32_t rowLength);

    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint32_t> pixels;
};
