#pragma once
// The handful of OpenGL switches the world renderer flips between its draws: blending and the
// depth test for a pass, face culling per item, depth writes for translucent items, the clear
// colour, and what is bound on texture unit 1 (the shadow map while the world is drawn, the
// picture the overlay is composed over afterwards). It is the only part of the game that talks to
// OpenGL directly; everything else goes through the engine's shaders, textures and targets.
// One per world renderer; main thread, with the screen's context current.
#include <cstdint>

class QmRenderState {
public:
    enum Culling { CullNothing = 0, CullFrontFaces = 1, CullBackFaces = 2 };

    // Texturing on unit 0, blending with source alpha over one minus source alpha, depth test
    // "less" with depth writes on. Forgets the remembered culling, so the next SetCulling applies.
    void SetupPass();
    // Applied only when it differs from the last culling set since SetupPass.
    void SetCulling(Culling culling);
    void SetDepthWrite(bool on);
    // The colour (0xRRGGBB, opaque) the next clears use; the screen's own clears expect black.
    void SetClearColour(uint32_t colour);
    // Binds a depth texture on unit 1 for comparison lookups (compare to the reference, "less or
    // equal"), then makes unit 0 active again.
    void BindShadowMap(unsigned int depthTexture);
    // Binds a colour texture on unit 1, then makes unit 0 active again.
    void BindOnUnitOne(unsigned int texture);

private:
    Culling current = CullNothing;
    bool known = false;
};
