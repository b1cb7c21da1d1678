#include "Screen/Surface/VeSurface.h"

#include "Platform/VeLog.h"
#include "Platform/VeMessageBox.h"

#include <GL/glew.h>
#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace {

VeOverlayFormat overlayFormat;

[[noreturn]] void HaltPlotting(const char* where) {
    Halt("Halt: Plotting outside of buffer",
         std::string("App halted when trying to plot outside of buffer in (VeSurface::") + where + ")");
}

// Multiplies the colour channels of a non-key pixel in 5-bit fixed point; the alpha byte becomes 0.
inline uint32_t MultiplyColour(uint32_t pixel, int32_t f) {
    if (f <= 0) {
        return 0;
    }
    if (f <= 32) {
        uint32_t rb = ((pixel & 0xFF00FFu) * static_cast<uint32_t>(f) >> 5) & 0xFF00FFu;
        uint32_t g = ((pixel & 0x00FF00u) * static_cast<uint32_t>(f) >> 5) & 0x00FF00u;
        return rb | g;
    }
    // Brightening: each channel saturates at 255 instead of spilling into its neighbour.
    uint32_t r = std::min<uint32_t>(255, ((pixel >> 16) & 0xFF) * static_cast<uint32_t>(f) >> 5);
    uint32_t g = std::min<uint32_t>(255, ((pixel >> 8) & 0xFF) * static_cast<uint32_t>(f) >> 5);
    uint32_t b = std::min<uint32_t>(255, (pixel & 0xFF) * static_cast<uint32_t>(f) >> 5);
    return r << 16 | g << 8 | b;
}

inline uint32_t MultiplyValue(uint32_t pixel, int32_t fixedFactor, uint32_t keyShade) {
    return pixel == kColourKey ? keyShade : MultiplyColour(pixel, fixedFactor);
}

// Multiplies a run of pixels. Darkening (the common case) is written without branches so that the
// compiler can vectorise it.
void MultiplySpan(uint32_t* p, int32_t count, int32_t fixedFactor, uint32_t keyShade) {
    if (fixedFactor > 0 && fixedFactor <= 32) {
        const uint32_t f = static_cast<uint32_t>(fixedFactor);
        for (int32_t i = 0; i < count; ++i) {
            uint32_t c = p[i];
            uint32_t scaled =
                (((c & 0xFF00FFu) * f >> 5) & 0xFF00FFu) | (((c & 0x00FF00u) * f >> 5) & 0x00FF00u);
            p[i] = c == kColourKey ? keyShade : scaled;
        }
        return;
    }
    for (int32_t i = 0; i < count; ++i) {
        p[i] = MultiplyValue(p[i], fixedFactor, keyShade);
    }
}

inline int32_t FixedFactor(float factor) {
    float scaled = factor * 32.0f;
    if (!(scaled > 0.0f)) {
        return 0;
    }
    return scaled >= 8192.0f ? 8192 : static_cast<int32_t>(scaled);
}

inline uint32_t KeyShade(float factor) {
    float a = (1.0f - factor) * 255.0f;
    if (!(a > 0.0f)) {
        return 0;
    }
    return static_cast<uint32_t>(std::min(a, 255.0f)) << 24;
}

inline uint32_t Blend(uint32_t old, uint32_t colour, float alpha) {
    if (alpha == 1.0f) {
        return colour;
    }
    if (!(alpha > 0.0f)) {
        return old;
    }
    if (old == kColourKey) {
        uint32_t a = static_cast<uint32_t>(std::min(alpha, 1.0f) * 255.0f) & 0xFF;
        return a != 0 ? (colour & 0xFFFFFFu) | a << 24 : old;
    }
    float keep = 1.0f - alpha;
    auto mix = [&](int shift) {
        float value = static_cast<float>((old >> shift) & 0xFF) * keep +
                      static_cast<float>((colour >> shift) & 0xFF) * alpha;
        return static_cast<uint32_t>(std::clamp(value, 0.0f, 255.0f)) << shift;
    };
    return (old & 0xFF000000u) | mix(16) | mix(8) | mix(0);
}

inline uint32_t Brighten(uint32_t pixel, float brightness) {
    auto channel = [&](int shift) {
        float value = static_cast<float>((pixel >> shift) & 0xFF) * brightness;
        return static_cast<uint32_t>(std::clamp(value, 0.0f, 255.0f)) << shift;
    };
    return channel(16) | channel(8) | channel(0);
}

} // namespace

VeSurface::VeSurface(int32_t w, int32_t h) {
    Create(w, h);
}

VeSurface::~VeSurface() {
    Free();
}

VeSurface::VeSurface(VeSurface&& other) noexcept {
    MovePixelsFrom(other);
}

VeSurface& VeSurface::operator=(VeSurface&& other) noexcept {
    if (this != &other) {
        Free();
        MovePixelsFrom(other);
    }
    return *this;
}

void VeSurface::MovePixelsFrom(VeSurface& other) {
    sdlSurface = std::exchange(other.sdlSurface, nullptr);
    externalPixels = std::exchange(other.externalPixels, nullptr);
    width = std::exchange(other.width, 0);
    height = std::exchange(other.height, 0);
    stride = std::exchange(other.stride, 0);
    pixelCount = std::exchange(other.pixelCount, 0);
    format = std::exchange(other.format, nullptr);
    pixels = std::exchange(other.pixels, nullptr);
}

void VeSurface::SetOverlayFormat(const VeOverlayFormat& newFormat) {
    overlayFormat = newFormat;
}

VeOverlayFormat VeSurface::GetOverlayFormat() {
    return overlayFormat;
}

void VeSurface::Create(int32_t w, int32_t h) {
    Free();
    if (w < 0 || h < 0 || static_cast<int64_t>(w) * h > (int64_t{1} << 28)) {
        Halt("Halt: Could not create surface", "App halted when creating a surface of " + std::to_string(w) +
                                                   " by " + std::to_string(h) +
                                                   " pixels (VeSurface::Create)");
    }
    int bits = overlayFormat.bitsPerPixel != 0 ? overlayFormat.bitsPerPixel : 32;
    uint32_t red = overlayFormat.redMask != 0 ? overlayFormat.redMask : 0x00FF0000u;
    uint32_t green = overlayFormat.greenMask != 0 ? overlayFormat.greenMask : 0x0000FF00u;
    uint32_t blue = overlayFormat.blueMask != 0 ? overlayFormat.blueMask : 0x000000FFu;
    // SDL zero-fills the new pixels.
    sdlSurface = SDL_CreateRGBSurface(0, w, h, bits, red, green, blue, 0xFF000000u);
    if (sdlSurface == nullptr) {
        Halt("Halt: Could not create surface", "App halted when creating a surface of " + std::to_string(w) +
                                                   " by " + std::to_string(h) +
                                                   " pixels (VeSurface::Create): " + SDL_GetError());
    }
    VE_ASSERT(sdlSurface->pitch == sdlSurface->w * 4);
    SyncFromSdl();
}

void VeSurface::AttachView(uint32_t* viewPixels, int32_t w, int32_t h, int32_t viewStride,
                           SDL_PixelFormat* pixelFormat) {
    if (viewPixels == nullptr) {
        return;
    }
    Free();
    externalPixels = viewPixels;
    pixels = viewPixels;
    width = w;
    height = h;
    stride = viewStride;
    pixelCount = w * h;
    format = pixelFormat;
}

void VeSurface::SyncFromSdl() {
    if (sdlSurface == nullptr) {
        return;
    }
    width = sdlSurface->w;
    height = sdlSurface->h;
    pixelCount = width * height;
    format = sdlSurface->format;
    pixels = static_cast<uint32_t*>(sdlSurface->pixels);
}

void VeSurface::Free() {
    if (sdlSurface != nullptr) {
        SDL_FreeSurface(sdlSurface);
    }
    sdlSurface = nullptr;
    externalPixels = nullptr;
    pixels = nullptr;
    width = height = stride = pixelCount = 0;
    format = nullptr;
}

uint32_t VeSurface::GetPixel(int32_t index) const {
    return index >= 0 && index < pixelCount ? pixels[index] : 0;
}

uint32_t VeSurface::GetXY(int32_t x, int32_t y) const {
    return Inside(x, y) ? pixels[RowLength() * y + x] : 0;
}

void VeSurface::Fill(uint32_t colour) {
    if (pixels == nullptr) {
        return;
    }
    int32_t row = RowLength();
    if (row == width) {
        if (colour == 0) {
            std::memset(pixels, 0, static_cast<size_t>(pixelCount) * 4);
        } else {
            std::fill(pixels, pixels + pixelCount, colour);
        }
        return;
    }
    for (int32_t y = 0; y < height; ++y) {
        std::fill(pixels + row * y, pixels + row * y + width, colour);
    }
}

void VeSurface::BlendPixel(int32_t index, uint32_t colour, float alpha) {
    pixels[index] = Blend(pixels[index], colour, alpha);
}

void VeSurface::BlendXY(int32_t x, int32_t y, uint32_t colour, float alpha) {
    if (Inside(x, y)) {
        BlendPixel(RowLength() * y + x, colour, alpha);
    }
}

void VeSurface::BlendIndex(int32_t index, uint32_t colour, float alpha) {
    if (index >= 0 && index < pixelCount) {
        BlendPixel(index, colour, alpha);
    }
}

void VeSurface::MultiplyPixel(int32_t index, float factor) {
    pixels[index] = MultiplyValue(pixels[index], FixedFactor(factor), KeyShade(factor));
}

void VeSurface::MultiplyXY(int32_t x, int32_t y, float factor) {
    if (Inside(x, y)) {
        MultiplyPixel(RowLength() * y + x, factor);
    }
}

void VeSurface::MultiplyAll(float factor) {
    int32_t fixed = FixedFactor(factor);
    uint32_t shade = KeyShade(factor);
    int32_t row = RowLength();
    if (row == width) {
        MultiplySpan(pixels, pixelCount, fixed, shade);
        return;
    }
    for (int32_t y = 0; y < height; ++y) {
        MultiplySpan(pixels + row * y, width, fixed, shade);
    }
}

void VeSurface::Rect(int32_t x, int32_t y, int32_t w, int32_t h, uint32_t colour, bool filled, bool checked,
                     float alpha) {
    if (w < 0) {
        w = -w;
        x -= w;
    }
    if (h < 0) {
        h = -h;
        y -= h;
    }
    if (checked && (!Inside(x, y) || !Inside(x + w - 1, y + h - 1))) {
        HaltPlotting("Rect");
    }
    if (w == 0 || h == 0) {
        return;
    }
    if (filled) {
        int32_t left = std::max(x, 0);
        int32_t right = std::min(x + w, width);
        int32_t top = std::max(y, 0);
        int32_t bottom = std::min(y + h, height);
        int32_t row = RowLength();
        for (int32_t py = top; py < bottom; ++py) {
            uint32_t* p = pixels + row * py;
            if (alpha == 1.0f) {
                std::fill(p + left, p + std::max(left, right), colour);
            } else {
                for (int32_t px = left; px < right; ++px) {
                    p[px] = Blend(p[px], colour, alpha);
                }
            }
        }
        return;
    }
    // The corners are known to be inside when checked, so the edges need no second check.
    Line(x, y, x + w - 1, y, colour);
    Line(x + w - 1, y + 1, x + w - 1, y + h - 2, colour);
    Line(x + w - 1, y + h - 1, x + 1, y + h - 1, colour);
    Line(x, y + h - 1, x, y + 1, colour);
}

void VeSurface::MultiplyRect(int32_t x, int32_t y, int32_t w, int32_t h, float factor, bool checked) {
    if (checked && (!Inside(x, y) || !Inside(x + w - 1, y + h - 1))) {
        HaltPlotting("MultiplyRect");
    }
    int32_t left = std::max(x, 0);
    int32_t right = std::min(x + w, width);
    int32_t top = std::max(y, 0);
    int32_t bottom = std::min(y + h, height);
    int32_t fixed = FixedFactor(factor);
    uint32_t shade = KeyShade(factor);
    int32_t row = RowLength();
    for (int32_t py = top; py < bottom && left < right; ++py) {
        MultiplySpan(pixels + row * py + left, right - left, fixed, shade);
    }
}

void VeSurface::Line(int32_t x0, int32_t y0, int32_t x1, int32_t y1, uint32_t colour, bool checked,
                     float factor) {
    if (checked) {
        auto outside = [&](int32_t x, int32_t y) { return x < 0 || x > width || y < 0 || y > height; };
        if (outside(x0, y0) || outside(x1, y1)) {
            HaltPlotting("Line");
        }
    }
    int32_t fixed = FixedFactor(factor);
    uint32_t shade = KeyShade(factor);
    int32_t row = RowLength();
    auto plot = [&](int32_t x, int32_t y) {
        if (!Inside(x, y)) {
            return;
        }
        uint32_t& p = pixels[row * y + x];
        p = factor == 1.0f ? colour : MultiplyValue(p, fixed, shade);
    };
    int64_t dx = std::llabs(int64_t{x1} - x0);
    int64_t dy = std::llabs(int64_t{y1} - y0);
    int32_t sx = x0 < x1 ? 1 : -1;
    int32_t sy = y0 < y1 ? 1 : -1;
    int64_t err = dx - dy;
    int32_t x = x0;
    int32_t y = y0;
    while (x != x1 || y != y1) {
        plot(x, y);
        int64_t e2 = 2 * err;
        if (e2 > -dy) {
            err -= dy;
            x += sx;
        }
        if (e2 < dx) {
            err += dx;
            y += sy;
        }
    }
    plot(x1, y1);
}

void VeSurface::GreyRect(int32_t x, int32_t y, int32_t w, int32_t h) {
    if (x < 0 || x >= width) {
        x = 0;
    }
    if (y < 0 || y >= height) {
        y = 0;
    }
    int32_t right = w <= 0 ? width : static_cast<int32_t>(std::min<int64_t>(int64_t{x} + w, width));
    int32_t bottom = h <= 0 ? height : static_cast<int32_t>(std::min<int64_t>(int64_t{y} + h, height));
    int32_t row = RowLength();
    for (int32_t py = y; py < bottom; ++py) {
        uint32_t* p = pixels + row * py;
        for (int32_t px = x; px < right; ++px) {
            uint32_t c = p[px];
            if (c == kColourKey) {
                continue;
            }
            uint32_t grey = (((c >> 16) & 0xFF) + ((c >> 8) & 0xFF) + (c & 0xFF)) / 3;
            p[px] = (c & 0xFF000000u) | grey << 16 | grey << 8 | grey;
        }
    }
}

void VeSurface::ReplaceColour(uint32_t from, uint32_t to) {
    uint32_t match = from & 0xFFFFFFu;
    uint32_t rgb = to & 0xFFFFFFu;
    int32_t row = RowLength();
    for (int32_t y = 0; y < height; ++y) {
        uint32_t* p = pixels + row * y;
        for (int32_t x = 0; x < width; ++x) {
            if ((p[x] & 0xFFFFFFu) == match) {
                p[x] = (p[x] & 0xFF000000u) | rgb;
            }
        }
    }
}

void VeSurface::MirrorHorizontal() {
    int32_t row = RowLength();
    for (int32_t y = 0; y < height; ++y) {
        std::reverse(pixels + row * y, pixels + row * y + width);
    }
}

void VeSurface::Rotate180() {
    int32_t row = RowLength();
    if (row == width) {
        std::reverse(pixels, pixels + pixelCount);
        return;
    }
    MirrorHorizontal();
    for (int32_t top = 0, bottom = height - 1; top < bottom; ++top, --bottom) {
        std::swap_ranges(pixels + row * top, pixels + row * top + width, pixels + row * bottom);
    }
}

void VeSurface::CopyFrom(const VeSurface& source) {
    if (source.width != width || source.height != height) {
        Log("Buffers are not the same size.\n");
        VE_ASSERT(false);
    }
    if (pixels == nullptr || source.pixels == nullptr) {
        return;
    }
    if (RowLength() == width && source.RowLength() == width) {
        std::memcpy(pixels, source.pixels, static_cast<size_t>(pixelCount) * 4);
        return;
    }
    for (int32_t y = 0; y < height; ++y) {
        std::memcpy(pixels + RowLength() * y, source.pixels + source.RowLength() * y,
                    static_cast<size_t>(width) * 4);
    }
}

void VeSurface::CopyPixels(const VeSurface& source, int32_t count) {
    if (count > width * height) {
        Log("Buffer too large to copy.\n");
        VE_ASSERT(false);
    }
    VE_ASSERT(count <= source.width * source.height);
    if (count > 0) {
        std::memcpy(pixels, source.pixels, static_cast<size_t>(count) * 4);
    }
}

bool VeSurface::FitsEntirely(const VeSurface& source, int32_t x, int32_t y) const {
    return x >= 0 && y >= 0 && int64_t{x} + source.width <= width && int64_t{y} + source.height <= height;
}

void VeSurface::Blit(const VeSurface& source, int32_t x, int32_t y) {
    if (x == 0 && y == 0 && source.width == width && source.height == height) {
        CopyFrom(source);
        return;
    }
    int32_t left = std::max(x, 0);
    int32_t right = static_cast<int32_t>(std::min<int64_t>(int64_t{x} + source.width, width));
    int32_t top = std::max(y, 0);
    int32_t bottom = static_cast<int32_t>(std::min<int64_t>(int64_t{y} + source.height, height));
    if (left >= right) {
        return;
    }
    for (int32_t py = top; py < bottom; ++py) {
        const uint32_t* from = source.pixels + source.RowLength() * (py - y) + (left - x);
        std::memcpy(pixels + RowLength() * py + left, from, static_cast<size_t>(right - left) * 4);
    }
}

void VeSurface::BlitKeyed(const VeSurface& source, int32_t x, int32_t y, bool checked, uint32_t key) {
    if (checked) {
        VE_ASSERT(FitsEntirely(source, x, y));
    }
    int32_t left = std::max(x, 0);
    int32_t right = static_cast<int32_t>(std::min<int64_t>(int64_t{x} + source.width, width));
    int32_t top = std::max(y, 0);
    int32_t bottom = static_cast<int32_t>(std::min<int64_t>(int64_t{y} + source.height, height));
    int32_t count = right - left;
    if (count <= 0) {
        return;
    }
    int32_t row = RowLength();
    int32_t sourceRow = source.RowLength();
    for (int32_t py = top; py < bottom; ++py) {
        const uint32_t* from = source.pixels + sourceRow * (py - y) + (left - x);
        uint32_t* to = pixels + row * py + left;
        for (int32_t i = 0; i < count; ++i) {
            uint32_t c = from[i];
            to[i] = c != key ? c : to[i];
        }
    }
}

void VeSurface::DrawImage(const VeSurface& source, int32_t x, int32_t y, bool checked, uint32_t key,
                          float brightness, float alpha, bool centreX) {
    if (centreX) {
        x -= static_cast<int32_t>(static_cast<float>(source.width) * 0.5f);
    }
    if (x == 0 && y == 0 && source.width == width && source.height == height && brightness == 1.0f &&
        alpha == 1.0f) {
        CopyFrom(source);
        return;
    }
    if (checked) {
        VE_ASSERT(FitsEntirely(source, x, y));
    }
    if (brightness == 1.0f && alpha == 1.0f) {
        BlitKeyed(source, x, y, false, key);
        return;
    }
    int32_t left = std::max(x, 0);
    int32_t right = static_cast<int32_t>(std::min<int64_t>(int64_t{x} + source.width, width));
    int32_t top = std::max(y, 0);
    int32_t bottom = static_cast<int32_t>(std::min<int64_t>(int64_t{y} + source.height, height));
    int32_t row = RowLength();
    int32_t sourceRow = source.RowLength();
    for (int32_t py = top; py < bottom; ++py) {
        const uint32_t* from = source.pixels + sourceRow * (py - y) - x;
        uint32_t* to = pixels + row * py;
        for (int32_t px = left; px < right; ++px) {
            uint32_t c = from[px];
            if (c == key) {
                continue;
            }
            if (brightness != 1.0f) {
                c = Brighten(c, brightness);
            }
            to[px] = Blend(to[px], c, alpha);
        }
    }
}

void VeSurface::ApplyColourKey(uint32_t key, bool clear) {
    int32_t row = RowLength();
    for (int32_t y = 0; y < height; ++y) {
        uint32_t* p = pixels + row * y;
        for (int32_t x = 0; x < width; ++x) {
            uint32_t c = p[x];
            if (c == key) {
                p[x] = clear ? 0 : c;
            } else if ((c & 0xFF000000u) == 0) {
                p[x] = c | 0xFF000000u;
            }
        }
    }
}

uint32_t VeSurface::KeyPixel(int32_t index, uint32_t key, bool clear) {
    uint32_t c = pixels[index];
    if (c == key) {
        pixels[index] = clear ? 0 : c;
    } else if ((c & 0xFF000000u) == 0) {
        pixels[index] = c | 0xFF000000u;
    }
    return c;
}

namespace {
// Uploads the smaller levels of the bound texture, each the average of 2 x 2 texels of the one
// before (at an odd size the last row or column is left out, a side of one texel counts twice),
// byte by byte whatever the channel order. Made here rather than by the driver: a software
// renderer builds a shader of its own the first time it generates mipmaps, tens of milliseconds of
// one frame.
void UploadSmallerLevels(const uint32_t* pixels, int width, int height, int rowLength, GLenum pixelFormat) {
    std::vector<uint32_t> level(static_cast<size_t>(width) * static_cast<size_t>(height));
    for (int y = 0; y < height; ++y) {
        std::memcpy(&level[static_cast<size_t>(y) * static_cast<size_t>(width)],
                    pixels + static_cast<size_t>(y) * static_cast<size_t>(rowLength),
                    static_cast<size_t>(width) * sizeof(uint32_t));
    }
    std::vector<uint32_t> smaller;
    for (int index = 1; width > 1 || height > 1; ++index) {
        const int w = std::max(1, width / 2);
        const int h = std::max(1, height / 2);
        smaller.assign(static_cast<size_t>(w) * static_cast<size_t>(h), 0);
        for (int y = 0; y < h; ++y) {
            const int y0 = std::min(2 * y, height - 1);
            const int y1 = std::min(2 * y + 1, height - 1);
            for (int x = 0; x < w; ++x) {
                const int x0 = std::min(2 * x, width - 1);
                const int x1 = std::min(2 * x + 1, width - 1);
                const uint32_t texels[4] = {
                    level[static_cast<size_t>(y0 * width + x0)], level[static_cast<size_t>(y0 * width + x1)],
                    level[static_cast<size_t>(y1 * width + x0)], level[static_cast<size_t>(y1 * width + x1)]};
                uint32_t average = 0;
                for (int shift = 0; shift < 32; shift += 8) {
                    uint32_t sum = 2;
                    for (const uint32_t texel : texels) {
                        sum += (texel >> shift) & 0xFFu;
                    }
                    average |= (sum / 4) << shift;
                }
                smaller[static_cast<size_t>(y * w + x)] = average;
            }
        }
        glTexImage2D(GL_TEXTURE_2D, index, GL_RGBA, w, h, 0, pixelFormat, GL_UNSIGNED_BYTE, smaller.data());
        level.swap(smaller);
        width = w;
        height = h;
    }
}
} // namespace

unsigned int VeSurface::UploadTexture(unsigned int filter) const {
    GLenum pixelFormat = GL_BGRA;
    int bytesPerPixel = format != nullptr ? format->BytesPerPixel : 4;
    bool redLow = format != nullptr && format->Rmask == 0xFF;
    if (bytesPerPixel == 4) {
        pixelFormat = redLow ? GL_RGBA : GL_BGRA;
    } else if (bytesPerPixel == 3) {
        pixelFormat = redLow ? GL_RGB : GL_BGR;
    } else {
        Log("warning: the image is not truecolor.\n");
    }
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, RowLength() != width ? RowLength() : 0);
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, static_cast<GLint>(filter));
    if (filter == GL_NEAREST || filter == GL_LINEAR) {
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, static_cast<GLint>(filter));
    }
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, width, height, 0, pixelFormat, GL_UNSIGNED_BYTE, pixels);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    if (filter == GL_NEAREST_MIPMAP_NEAREST || filter == GL_LINEAR_MIPMAP_NEAREST ||
        filter == GL_NEAREST_MIPMAP_LINEAR || filter == GL_LINEAR_MIPMAP_LINEAR) {
        if (bytesPerPixel == 4) {
            UploadSmallerLevels(pixels, width, height, RowLength(), pixelFormat);
        } else {
            glGenerateMipmap(GL_TEXTURE_2D);
        }
    }
    return name;
}
