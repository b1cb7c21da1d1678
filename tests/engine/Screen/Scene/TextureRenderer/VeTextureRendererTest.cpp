#include "Screen/Scene/TextureRenderer/VeTextureRenderer.h"
#include "Screen/Scene/TextureRenderer/VeColourTarget.h"
#include "Screen/Scene/TextureRenderer/VeShadowMapTarget.h"
#include "Screen/Scene/VeVertexBatches.h"
#include "Screen/Shader/VeShader.h"
#include "Screen/Surface/VeTexture.h"

#include "engine/Screen/PixelProbe.h"
#include "engine/Screen/ScreenTestSupport.h"

#include <GL/glew.h>
#include <glm/gtc/matrix_transform.hpp>

#include <vector>

using VeTextureRendererTest = ScreenTestBase;

namespace {
// Clears the bound framebuffer to the colour, with one pixel of the mark in its bottom-left corner.
void ClearWithCornerMark(const glm::vec4& colour, const glm::vec4& mark) {
    glClearColor(colour.r, colour.g, colour.b, colour.a);
    glClear(GL_COLOR_BUFFER_BIT);
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 1, 1);
    glClearColor(mark.r, mark.g, mark.b, mark.a);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_SCISSOR_TEST);
    glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
}
} // namespace

TEST_F(VeTextureRendererTest, AColourTargetsTextureIsWhatWasDrawnIntoIt) {
    OpenScreen(false);
    VeColourTarget target;
    ASSERT_TRUE(target.Create(8, 4, VeFilterNearest));
    target.Begin();
    ClearWithCornerMark({1.0f, 0.0f, 0.0f, 0.5f}, {0.0f, 0.0f, 1.0f, 1.0f});
    glBindFramebuffer(GL_FRAMEBUFFER, 0);

    std::vector<uint8_t> texels(8 * 4 * 4);
    glBindTexture(GL_TEXTURE_2D, target.texture);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels.data());
    EXPECT_EQ(texels[0], 0);
    EXPECT_EQ(texels[2], 255) << "row 0 is the bottom row drawn";
    EXPECT_EQ(texels[4], 255);
    EXPECT_NEAR(texels[7], 128, 1) << "alpha is kept";
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(VeTextureRendererTest, TheResolvedSceneReadsBackTopRowFirstAndShowsThroughTheOverlaysKey) {
    VeScreen& s = OpenScreen(false);
    // The samples are clamped to the driver's before the targets are made.
    GLint maxSamples = 0;
    glGetIntegerv(GL_MAX_SAMPLES, &maxSamples);
    VeTextureRenderer target(640, 640, 1.0f);
    EXPECT_EQ(target.samples, std::min(8, maxSamples));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    target.BeginScene();
    ClearWithCornerMark({0.0f, 0.0f, 1.0f, 1.0f}, {1.0f, 0.0f, 0.0f, 1.0f});
    // A scene that covers every pixel starts uncleared: what was drawn before stays.
    glClearColor(0.0f, 1.0f, 0.0f, 1.0f);
    target.BeginScene(true);
    glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
    target.ResolveScene(s);
    VeSurface scene = target.ReadSceneToSurface();
    ASSERT_EQ(scene.width, 640);
    ASSERT_EQ(scene.height, 640);
    EXPECT_EQ(Mismatches(scene, {{0, 639, 0xFF0000}, {1, 639, 0x0000FF}, {0, 0, 0x0000FF}}), "");

    target.BindSceneTexture();
    s.threeD = true;
    s.overlay.Fill(kColourKey);
    s.overlay.Rect(0, 0, 640, 100, 0xE99209);
    s.overlay.MultiplyRect(0, 300, 640, 100, 0.5f);
    s.PrepareFrame();
    s.Present(0.016f);
    ScreenshotImage shot;
    ASSERT_TRUE(s.ReadLastFrame(shot.pixels, shot.width, shot.height));
    EXPECT_EQ(shot.At(320, 50), 0xE99209u) << "opaque overlay";
    EXPECT_EQ(shot.At(320, 200), 0x0000FFu) << "the scene under the key";
    EXPECT_NEAR(static_cast<int>(shot.At(320, 350) & 0xFF), 0x80, 2) << "a shade darkens the scene by half";
    EXPECT_EQ(shot.At(0, 639), 0xFF0000u) << "the scene is upright";
}

TEST_F(VeTextureRendererTest, AShadowPassTakesDepthFromTheShadowShaderAndCanStartFromAKeptMap) {
    VeScreen& s = OpenScreen(false);
    VeShadowMapTarget kept;
    VeShadowMapTarget live;
    log.clear();
    kept.Create(64, 64);
    live.Create(64, 64);
    EXPECT_EQ(log.find("FB error"), std::string::npos);
    VeSurface white(1, 1);
    white.Fill(0xFFFFFF);
    VeTexture opaque(&white);
    s.shadowMapShader->Use();
    s.shadowMapShader->SetInt("textureID", 0);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    glDisable(GL_CULL_FACE);
    // The kept map: the left half, at z 0, half way into the depth range.
    kept.BeginShadowPass();
    s.shadowMapShader->SetMat4("MVP",
                               glm::scale(glm::translate(glm::mat4(1.0f), glm::vec3(-0.5f, 0.0f, 0.0f)),
                                          glm::vec3(0.5f, 1.0f, 1.0f)));
    VeVertexBatches::DrawQuad(&opaque);
    // The live map starts from it and adds the bottom half, nearer.
    live.BeginShadowPassFrom(kept);
    s.shadowMapShader->SetMat4("MVP",
                               glm::scale(glm::translate(glm::mat4(1.0f), glm::vec3(0.0f, -0.5f, -0.5f)),
                                          glm::vec3(1.0f, 0.5f, 1.0f)));
    VeVertexBatches::DrawQuad(&opaque);
    auto depthAt = [](int x, int y) {
        float depth = 0.0f;
        glReadPixels(x, y, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
        return depth;
    };
    EXPECT_NEAR(depthAt(16, 48), 0.5f, 0.01f) << "kept";
    EXPECT_NEAR(depthAt(48, 48), 1.0f, 0.01f) << "cleared in the kept map";
    EXPECT_NEAR(depthAt(48, 16), 0.25f, 0.01f) << "added";
    EXPECT_NEAR(depthAt(16, 16), 0.25f, 0.01f) << "added over the kept part";
    glBindFramebuffer(GL_FRAMEBUFFER, kept.framebuffer);
    EXPECT_NEAR(depthAt(16, 16), 0.5f, 0.01f) << "what is added goes into the live map only";
    s.BindDefaultFramebuffer();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
