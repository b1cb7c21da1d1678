#pragma once
// The block shader and its two companions. All three share the block shader's vertex stage and
// take its uniforms; they differ in what each pixel looks up, since a texture lookup is the
// dearest thing a pixel does on a software rasterizer:
// - block: the art and the shadow map, for every surface a shadow can reach ("BlockShader");
// - unshadowed: the art only, for the faces on the cubes' front plane and the flat items before
//   it, which no shadow reaches; with "lightBaked" 1 it draws the backdrop from its baked picture;
// - bake: draws the backdrop's art with its light (and the shadows of the map's blocks) into
//   that picture.
// Needs the screen's OpenGL context.
#include "Screen/Shader/VeShader.h"

#include <cstdint>

class QmBlockShaders {
public:
    QmBlockShaders();

    // Sets a value on all three programs, each made current in turn.
    void SetIntOnAll(const char* name, int32_t value);
    void SetVec2OnAll(const char* name, float x, float y);
    void SetVec3OnAll(const char* name, float x, float y, float z);

    VeShader block;
    VeShader unshadowed;
    VeShader bake;
};
