#pragma once
// The OpenGL switches a 3D pass flips between its draws, for callers that include no OpenGL
// header: blending, the depth test and depth writes, face culling, the clear colour, and what is
// bound on a texture unit (a shadow map for comparison lookups, or a plain colour texture).
// Culling, blending, the depth test and depth writes are remembered, so setting what is already
// set costs no call; SetupPass forgets them, since other code (the screen's composition) changes
// them between passes. One per renderer; main thread, with the screen's OpenGL context current.
#include <cstdint>

class VeRenderState {
public:
    enum Culling { CullNothing = 0, CullFrontFaces = 1, CullBackFaces = 2 };

    // Unit 0 active, blending on with source alpha over one minus source alpha, depth test "less"
    // with depth writes on.
    void SetupPass();
    void SetCulling(Culling culling);
    // Blending is only needed for translucent draws: opaque ones write their colour as it is.
    void SetBlending(bool on);
    void SetDepthWrite(bool on);
    // The depth test ("less") on or off.
    void SetDepthTest(bool on);
    // The colour (0xRRGGBB, opaque) the next clears use.
    static void SetClearColour(uint32_t colour);
    // Binds a depth texture on unit 1 for comparison lookups (the reference against the texture,
    // "less or equal"), then makes unit 0 active again.
    static void BindShadowMap(unsigned int depthTexture);
    // Binds a colour texture on a unit, then makes unit 0 active again.
    static void BindTexture(int unit, unsigned int texture);

private:
    // A switch whose state is not known (after SetupPass) is applied by the next call.
    struct Remembered {
        int value = 0;
        bool known = false;
        bool Changes(int wanted) {
            if (known && value == wanted) {
                return false;
            }
            value = wanted;
            known = true;
            return true;
        }
    };

    Remembered culling;
    Remembered blending;
    Remembered depthWrite;
    Remembered depthTest;
};
