#pragma once
// The off-screen target the 3D world is drawn into: a multisampled colour texture with a
// depth-stencil buffer, resolved each frame into a plain texture that the screen's basic shader
// composes under the overlay (texture unit 1). Sizes are width and height times scale, truncated.
// The sample count is lowered to what the driver supports before anything is made. An incomplete
// framebuffer is a fatal assertion. Needs a current OpenGL context.
#include "Screen/Surface/VeSurface.h"

#include <cstdint>

class VeScreen;

class VeTextureRenderer {
public:
    VeTextureRenderer(int32_t width, int32_t height, float scale);
    ~VeTextureRenderer();
    VeTextureRenderer(const VeTextureRenderer&) = delete;
    VeTextureRenderer& operator=(const VeTextureRenderer&) = delete;

    bool Init();
    // Directs drawing into the multisampled target and clears it; the colour is left as it is when
    // the caller draws every pixel of the scene.
    void BeginScene(bool everyPixelDrawn = false);
    // Resolves the drawn scene into the resolve texture, then restores the screen's viewport.
    void ResolveScene(VeScreen& screen);
    // Clears the default framebuffer and binds the resolved scene on texture unit 1.
    void BindSceneTexture();
    // The resolved scene as a surface of 0xFFRRGGBB pixels, top row first.
    VeSurface ReadSceneToSurface();
    void Destroy();

    int32_t ScaledWidth() const;
    int32_t ScaledHeight() const;

    unsigned int multisampleFramebuffer = 0;
    unsigned int resolveFramebuffer = 0;
    unsigned int multisampleDepthStencil = 0;
    unsigned int resolveDepth = 0;
    unsigned int multisampleColour = 0;
    unsigned int resolveColour = 0;
    int32_t width = 0;
    int32_t height = 0;
    float scale = 1.0f;
    bool useMultisample = true;
    int32_t samples = 8;
    bool useResolve = true;
};
