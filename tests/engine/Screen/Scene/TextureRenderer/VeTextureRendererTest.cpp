#include "Screen/Scene/TextureRenderer/VeTextureRenderer.h"
#include "Screen/Scene/TextureRenderer/VeShadowMapTarget.h"
#include "Screen/Scene/VeVertexBatches.h"
#include "Screen/Shader/VeShader.h"
#include "Screen/Surface/VeTexture.h"

#include "engine/Screen/ScreenTestSupport.h"

#include <GL/glew.h>
#include <glm/gtc/matrix_transform.hpp>

class VeTextureRendererTest : public ScreenTestBase {
protected:
    // Clears the scene to blue with one red pixel in its bottom-left corner.
    void DrawMarkedScene(VeTextureRenderer& target) {
        glClearColor(0.0f, 0.0f, 1.0f, 1.0f);
        target.BeginScene();
        glEnable(GL_SCISSOR_TEST);
        glScissor(0, 0, 1, 1);
        glClearColor(1.0f, 0.0f, 0.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        glDisable(GL_SCISSOR_TEST);
        glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
    }
};

TEST_F(VeTextureRendererTest, SamplesAreClampedToTheDriverBeforeTheTargetsAreMade) {
    OpenScreen(false);
    GLint maxSamples = 0;
    glGetIntegerv(GL_MAX_SAMPLES, &maxSamples);
    log.clear();
    VeTextureRenderer target(640, 640, 1.0f);
    EXPECT_EQ(target.samples, std::min(8, maxSamples));
    EXPECT_NE(log.find("Maximum Samples supported for MSAA: " + std::to_string(maxSamples) + "\n"),
              std::string::npos);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));

    VeTextureRenderer half(640, 640, 0.5f);
    EXPECT_EQ(half.ScaledWidth(), 320);
}

TEST_F(VeTextureRendererTest, CubeFaceZeroShowsItsTextureUpright) {
    VeScreen& s = OpenScreen(false);
    VeSurface picture(2, 2);
    picture.SetPixel(0, 0xFF0000);
    picture.SetPixel(1, 0x00FF00);
    picture.SetPixel(2, 0x0000FF);
    picture.SetPixel(3, 0xFFFFFF);
    VeTexture texture(&picture);
    VeTextureRenderer target(64, 64, 1.0f);
    target.BeginScene();
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    s.basicShader->Use();
    // Face 0 lies at z = 1; squeeze depth so that it is inside the clip volume.
    s.basicShader->SetMat4("MVP", glm::scale(glm::mat4(1.0f), glm::vec3(1.0f, 1.0f, 0.5f)));
    s.basicShader->SetInt("textureID", 0);
    s.basicShader->SetInt("useTexture", 1);
    s.basicShader->SetInt("renderToTexture", 0);
    s.basicShader->SetInt("greyScale", 0);
    s.basicShader->SetFloat("screenDisplaySize", 1.0f);
    s.basicShader->SetFloat("screenColorMultiplier", 1.0f);
    glActiveTexture(GL_TEXTURE0);
    VeVertexBatches::DrawBlockFace(0, &texture);
    target.ResolveScene(s);
    VeSurface scene = target.ReadSceneToSurface();
    EXPECT_EQ(scene.GetXY(8, 8), 0xFFFF0000u);
    EXPECT_EQ(scene.GetXY(56, 8), 0xFF00FF00u);
    EXPECT_EQ(scene.GetXY(8, 56), 0xFF0000FFu);
    EXPECT_EQ(scene.GetXY(56, 56), 0xFFFFFFFFu);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(VeTextureRendererTest, TheResolvedSceneReadsBackTopRowFirstAndShowsThroughTheOverlaysKey) {
    VeScreen& s = OpenScreen(false);
    VeTextureRenderer target(640, 640, 1.0f);
    DrawMarkedScene(target);
    target.ResolveScene(s);
    VeSurface scene = target.ReadSceneToSurface();
    ASSERT_EQ(scene.width, 640);
    ASSERT_EQ(scene.height, 640);
    EXPECT_EQ(scene.GetXY(0, 639), 0xFFFF0000u);
    EXPECT_EQ(scene.GetXY(1, 639), 0xFF0000FFu);
    EXPECT_EQ(scene.GetXY(0, 0), 0xFF0000FFu);

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

TEST_F(VeTextureRendererTest, ShadowTargetTakesDepthFromTheShadowShader) {
    VeScreen& s = OpenScreen(false);
    VeShadowMapTarget shadow;
    log.clear();
    shadow.Create(256, 256);
    EXPECT_EQ(log.find("FB error"), std::string::npos);
    shadow.BeginShadowPass();
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    glDisable(GL_CULL_FACE);
    s.shadowMapShader->Use();
    s.shadowMapShader->SetMat4("MVP", glm::mat4(1.0f));
    s.shadowMapShader->SetInt("textureID", 0);
    VeSurface white(1, 1);
    white.Fill(0xFFFFFF);
    VeTexture opaque(&white);
    VeVertexBatches::DrawQuad(&opaque);
    float depth = 0.0f;
    glReadPixels(128, 128, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    EXPECT_NEAR(depth, 0.5f, 0.01f) << "the quad at z 0 lies half way into the depth range";
    s.BindDefaultFramebuffer();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(VeTextureRendererTest, ASceneThatCoversEveryPixelKeepsItsColourUncleared) {
    VeScreen& s = OpenScreen(false);
    VeTextureRenderer target(640, 640, 1.0f);
    DrawMarkedScene(target);
    glClearColor(0.0f, 1.0f, 0.0f, 1.0f);
    target.BeginScene(true);
    glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
    target.ResolveScene(s);
    VeSurface scene = target.ReadSceneToSurface();
    EXPECT_EQ(scene.GetXY(0, 639), 0xFFFF0000u);
    EXPECT_EQ(scene.GetXY(320, 320), 0xFF0000FFu);
}

TEST_F(VeTextureRendererTest, AShadowPassCanStartFromAKeptShadowMap) {
    VeScreen& s = OpenScreen(false);
    VeShadowMapTarget kept;
    VeShadowMapTarget live;
    kept.Create(64, 64);
    live.Create(64, 64);
    VeSurface white(1, 1);
    white.Fill(0xFFFFFF);
    VeTexture opaque(&white);
    s.shadowMapShader->Use();
    s.shadowMapShader->SetInt("textureID", 0);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    glDisable(GL_CULL_FACE);
    // The kept map: the left half at depth 0.5.
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
