#pragma once
// A 32-bit software pixel surface: the overlay, images and temporary buffers are all surfaces.
// Pixels are 0xAARRGGBB values (bytes blue, green, red, alpha in memory); game code writes colours
// as 0xRRGGBB with alpha 0. The colour 0xFF00FF (magenta, alpha 0) is the transparency key: drawing
// skips it in sources and ApplyColourKey turns it transparent before a surface becomes a texture.
// A surface either owns an SDL surface (a plain surface) or is a view onto pixels owned elsewhere.
// Index of (x, y) = RowLength() * y + x.
//
// Drawing outside the surface is skipped silently; the checked forms halt (Rect, MultiplyRect,
// Line) or fail an assertion (BlitKeyed, DrawImage, CopyFrom, CopyPixels) instead.
#include <cstdint>

struct SDL_Surface;
struct SDL_PixelFormat;

constexpr uint32_t kColourKey = 0xFF00FF;

// The pixel format of the window the overlay is drawn for. All zero until the screen has found it;
// surfaces fall back to 32 bits with red 0x00FF0000, green 0x0000FF00, blue 0x000000FF.
struct VeOverlayFormat {
    int32_t bitsPerPixel = 0;
    uint32_t redMask = 0;
    uint32_t greenMask = 0;
    uint32_t blueMask = 0;
};

class VeSurface {
public:
    VeSurface() = default;
    // A new plain surface of that size, zero-filled.
    VeSurface(int32_t width, int32_t height);
    virtual ~VeSurface();
    VeSurface(const VeSurface&) = delete;
    VeSurface& operator=(const VeSurface&) = delete;
    VeSurface(VeSurface&& other) noexcept;
    VeSurface& operator=(VeSurface&& other) noexcept;

    static void SetOverlayFormat(const VeOverlayFormat& format);
    static VeOverlayFormat GetOverlayFormat();

    // Replaces the contents with a new plain surface of that size in the overlay pixel format,
    // zero-filled.
    void Create(int32_t width, int32_t height);
    // Makes this surface a view onto another buffer (stride in pixels); nothing is copied. A null
    // pixel pointer leaves the surface unchanged.
    void AttachView(uint32_t* pixels, int32_t width, int32_t height, int32_t stride,
                    SDL_PixelFormat* pixelFormat = nullptr);
    // Reads width, height, pixelCount and format from the owned SDL surface.
    void SyncFromSdl();
    // Releases the SDL surface (views just forget their pixels).
    void Free();

    uint32_t* Pixels() const { return pixels; }
    int32_t RowLength() const { return externalPixels != nullptr ? stride : width; }
    bool Inside(int32_t x, int32_t y) const { return x >= 0 && y >= 0 && x < width && y < height; }
    // 0 outside the surface.
    uint32_t GetPixel(int32_t index) const;
    uint32_t GetXY(int32_t x, int32_t y) const;

    void Fill(uint32_t colour);
    void SetPixel(int32_t index, uint32_t colour) { pixels[index] = colour; }
    // Blends colour over the pixel: alpha 1 stores it, 0 or less does nothing, onto the key the
    // colour is stored with alpha byte alpha * 255, elsewhere the channels are mixed and the old
    // alpha byte kept.
    void BlendPixel(int32_t index, uint32_t colour, float alpha);
    void BlendXY(int32_t x, int32_t y, uint32_t colour, float alpha);
    void BlendIndex(int32_t index, uint32_t colour, float alpha);
    // Darkens (or brightens) the pixel by factor in 5-bit fixed point; alpha byte becomes 0. A key
    // pixel becomes black with alpha (1 - factor) * 255, a shade over transparent areas.
    void MultiplyPixel(int32_t index, float factor);
    void MultiplyXY(int32_t x, int32_t y, float factor);
    void MultiplyAll(float factor);

    // Negative sizes extend left and up from (x, y).
    void Rect(int32_t x, int32_t y, int32_t w, int32_t h, uint32_t colour, bool filled = true,
              bool checked = false, float alpha = 1.0f);
    void MultiplyRect(int32_t x, int32_t y, int32_t w, int32_t h, float factor, bool checked = false);
    // With factor 1 the line is drawn in colour; with any other factor the pixels under it are
    // multiplied by factor instead.
    void Line(int32_t x0, int32_t y0, int32_t x1, int32_t y1, uint32_t colour, bool checked = false,
              float factor = 1.0f);
    // Grey-scales a rectangle, clipped to the surface; w or h of 0 or less reach the edge.
    void GreyRect(int32_t x, int32_t y, int32_t w, int32_t h);
    void ReplaceColour(uint32_t from, uint32_t to);
    void MirrorHorizontal();
    void Rotate180();

    void CopyFrom(const VeSurface& source);
    void CopyPixels(const VeSurface& source, int32_t count);
    // Copies the source unchanged with its top-left corner at (x, y), clipped to this surface.
    void Blit(const VeSurface& source, int32_t x, int32_t y);
    // Copies every source pixel that differs from key.
    void BlitKeyed(const VeSurface& source, int32_t x, int32_t y, bool checked = false,
                   uint32_t key = kColourKey);
    // The general image draw: optional horizontal centring on x, brightness scaling of the
    // channels and blending with alpha; key pixels are skipped.
    void DrawImage(const VeSurface& source, int32_t x, int32_t y, bool checked = false,
                   uint32_t key = kColourKey, float brightness = 1.0f, float alpha = 1.0f,
                   bool centreX = false);

    // Key pixels become 0 when clear is set (else they stay as they are); every other pixel with
    // alpha byte 0 becomes opaque. Afterwards alpha 0 means transparent, 255 opaque.
    void ApplyColourKey(uint32_t key = kColourKey, bool clear = false);
    // The same for one pixel; returns its previous value.
    uint32_t KeyPixel(int32_t index, uint32_t key = kColourKey, bool clear = false);

    // Uploads the pixels into a new OpenGL texture (filter: a GL minification filter such as
    // GL_NEAREST; with a mipmap filter every smaller level too) and returns its name; the caller
    // deletes it. Needs a current GL context.
    unsigned int UploadTexture(unsigned int filter) const;

    SDL_Surface* sdlSurface = nullptr;
    uint32_t* externalPixels = nullptr;
    int32_t width = 0;
    int32_t height = 0;
    int32_t stride = 0;
    int32_t pixelCount = 0;
    SDL_PixelFormat* format = nullptr;

private:
    void MovePixelsFrom(VeSurface& other);
    bool FitsEntirely(const VeSurface& source, int32_t x, int32_t y) const;

    uint32_t* pixels = nullptr;
};
