#include "Environment/ClientEnvironmentManager/QmBlockShaders.h"

namespace {

constexpr const char* kVertex = "Shaders/BlockShader/BlockShader.vert";

constexpr const char* kUniforms[] = {
    "lightMVP",    "textureID",      "shadowTextureID", "liveShadowTextureID", "worldPos",
    "useTexture",  "greyScale",      "useShadowMap",    "shadowMapSize",       "lightPos",
    "ModelMatrix", "RotationMatrix", "alpha",           "drawColor",           "MVP"};

void RegisterAll(VeShader& shader) {
    for (const char* name : kUniforms) {
        shader.RegisterUniform(name);
    }
}

} // namespace

QmBlockShaders::QmBlockShaders()
    : block(kVertex, "Shaders/BlockShader/BlockShader.frag"),
      unshadowed(kVertex, "Shaders/BlockShader/BlockShaderUnshadowed.frag"),
      bake(kVertex, "Shaders/BlockShader/BackdropBake.frag") {
    RegisterAll(block);
    RegisterAll(unshadowed);
    unshadowed.RegisterUniform("lightBaked");
    RegisterAll(bake);
}

void QmBlockShaders::SetIntOnAll(const char* name, int32_t value) {
    for (VeShader* shader : {&block, &unshadowed, &bake}) {
        shader->Use();
        shader->SetInt(name, value);
    }
}

void QmBlockShaders::SetVec2OnAll(const char* name, float x, float y) {
    for (VeShader* shader : {&block, &unshadowed, &bake}) {
        shader->Use();
        shader->SetVec2(name, x, y);
    }
}

void QmBlockShaders::SetVec3OnAll(const char* name, float x, float y, float z) {
    for (VeShader* shader : {&block, &unshadowed, &bake}) {
        shader->Use();
        shader->SetVec3(name, x, y, z);
    }
}
