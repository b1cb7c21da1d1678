#pragma once
// A depth-only off-screen target for the shadow pass: a framebuffer with a 16-bit depth texture
// (linear filtering, clamped edges) and no colour. An incomplete framebuffer is only logged.
// Needs a current OpenGL context.
#include <cstdint>

class VeShadowMapTarget {
public:
    VeShadowMapTarget() = default;
    ~VeShadowMapTarget();
    VeShadowMapTarget(const VeShadowMapTarget&) = delete;
    VeShadowMapTarget& operator=(const VeShadowMapTarget&) = delete;

    void Create(int32_t width, int32_t height);
    // Directs drawing into the depth texture and clears it.
    void BeginShadowPass();
    // Directs drawing into the depth texture, starting from a copy of another target's depth (of
    // the same size) instead of a clear: what does not move is drawn once into a kept target.
    void BeginShadowPassFrom(const VeShadowMapTarget& start);
    void Destroy();

    unsigned int framebuffer = 0;
    unsigned int depthTexture = 0;
    int32_t width = 0;
    int32_t height = 0;
    float scale = 1.0f;
};
