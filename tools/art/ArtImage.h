#pragma once
// A pixel image of 0xRRGGBB values in which 0xFF00FF (the key) is a transparent pixel. Drawing is
// exact: shapes are filled where a pixel's centre lies inside them, so no edge ever mixes a colour
// with the key.
#include <cstdint>
#include <initializer_list>
#include <map>
#include <vector>

constexpr uint32_t kKey = 0xFF00FF;

struct ArtPoint {
    float x;
    float y;
};

class ArtImage {
public:
    ArtImage() = default;
    ArtImage(int width, int height, uint32_t fill = kKey);
    // Rows of characters, one per pixel; '.' and ' ' are the key, other characters come from legend.
    static ArtImage FromGrid(std::initializer_list<const char*> rows, const std::map<char, uint32_t>& legend);

    int Width() const { return width; }
    int Height() const { return height; }
    bool Inside(int x, int y) const { return x >= 0 && y >= 0 && x < width && y < height; }
    // The key outside the image.
    uint32_t Get(int x, int y) const { return Inside(x, y) ? pixels[y * width + x] : kKey; }
    bool IsKey(int x, int y) const { return Get(x, y) == kKey; }
    void Set(int x, int y, uint32_t colour) {
        if (Inside(x, y)) {
            pixels[y * width + x] = colour;
        }
    }
    // Sets only pixels that are not the key.
    void Paint(int x, int y, uint32_t colour) {
        if (Inside(x, y) && pixels[y * width + x] != kKey) {
            pixels[y * width + x] = colour;
        }
    }
    const std::vector<uint32_t>& Pixels() const { return pixels; }

    void Fill(uint32_t colour);
    void FillRect(int x, int y, int w, int h, uint32_t colour);
    void FrameRect(int x, int y, int w, int h, uint32_t colour);
    void Line(int x0, int y0, int x1, int y1, uint32_t colour);
    // A line of the given width (a square brush).
    void ThickLine(float x0, float y0, float x1, float y1, float width, uint32_t colour);
    void FillEllipse(float cx, float cy, float rx, float ry, uint32_t colour);
    void FillPolygon(const std::vector<ArtPoint>& points, uint32_t colour);
    // A ring between two radii, limited to the angles a0..a1 (radians, y down, 0 to the right).
    void FillArc(float cx, float cy, float r0, float r1, float a0, float a1, uint32_t colour);

    // Copies every pixel of source that is not the key.
    void Blit(const ArtImage& source, int x, int y);
    // Copies every pixel, the key included.
    void BlitOpaque(const ArtImage& source, int x, int y);
    ArtImage Crop(int x, int y, int w, int h) const;
    ArtImage MirroredX() const;
    ArtImage Scaled(int factor) const;
    void Replace(uint32_t from, uint32_t to);
    int Count(uint32_t colour) const;

private:
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;
};
