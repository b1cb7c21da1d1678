#include "Screen/Surface/VeImage.h"

#include <cstring>

VeImage::VeImage(const std::string& imagePath) : path(imagePath) {
    if (path.empty()) {
        return;
    }
    png.Load(path);
    Create(png.width, png.height);
    Fill(0);
    for (int32_t y = 0; y < height; ++y) {
        std::memcpy(Pixels() + RowLength() * y, png.pixels.data() + static_cast<size_t>(png.width) * y,
                    static_cast<size_t>(width) * 4);
    }
}
