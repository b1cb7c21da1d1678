#include "Screen/Scene/VeFaceBatch.h"

#include "Screen/Scene/TextureRenderer/VeTextureRenderer.h"
#include "Screen/Scene/VeVertexBatches.h"
#include "Screen/Shader/VeShader.h"
#include "Screen/Surface/VeTexture.h"

#include "engine/Screen/PixelProbe.h"
#include "engine/Screen/ScreenTestSupport.h"

#include <GL/glew.h>
#include <glm/gtc/matrix_transform.hpp>

#include <functional>

class VeFaceBatchTest : public ScreenTestBase {
protected:
    void SetUp() override {
        ScreenTestBase::SetUp();
        OpenScreen(false);
        // Red, green / blue, white.
        picture.SetPixel(0, 0xFF0000);
        picture.SetPixel(1, 0x00FF00);
        picture.SetPixel(2, 0x0000FF);
        picture.SetPixel(3, 0xFFFFFF);
        texture = std::make_unique<VeTexture>(&picture);
    }

    // Draws into a 64 x 64 scene cleared to black with the basic shader showing the texture as it
    // is; the batch's positions go through MVP (depth squeezed so that face 0 at z = 1 shows).
    VeSurface Draw(const std::function<void()>& draw) {
        VeTextureRenderer target(64, 64, 1.0f);
        target.BeginScene();
        glDisable(GL_CULL_FACE);
        glDisable(GL_DEPTH_TEST);
        glDisable(GL_BLEND);
        VeShader& shader = *screen->basicShader;
        shader.Use();
        shader.SetMat4("MVP", glm::scale(glm::mat4(1.0f), glm::vec3(1.0f, 1.0f, 0.5f)));
        shader.SetInt("textureID", 0);
        shader.SetInt("useTexture", 1);
        shader.SetInt("renderToTexture", 0);
        shader.SetInt("greyScale", 0);
        shader.SetFloat("screenDisplaySize", 1.0f);
        shader.SetFloat("screenColorMultiplier", 1.0f);
        glActiveTexture(GL_TEXTURE0);
        draw();
        target.ResolveScene(*screen);
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        return target.ReadSceneToSurface();
    }
    // The batch uploaded and drawn; drawCalls keeps what DrawAll answered.
    VeSurface Drawn(VeFaceBatch& batch) {
        return Draw([&] {
            batch.Upload();
            drawCalls = batch.DrawAll();
        });
    }

    VeSurface picture{2, 2};
    std::unique_ptr<VeTexture> texture;
    int drawCalls = 0;
};

TEST_F(VeFaceBatchTest, BatchedFacesAndSquaresLookLikeTheSharedGeometry) {
    const VeSurface face = Draw([&] { VeVertexBatches::DrawBlockFace(0, texture.get()); });
    // Face 0 shows its texture upright: red, green / blue, white.
    EXPECT_EQ(Mismatches(face, {{8, 8, 0xFF0000}, {56, 8, 0x00FF00}, {8, 56, 0x0000FF}, {56, 56, 0xFFFFFF}}),
              "");
    VeFaceBatch batch;
    batch.AddCubeFace(glm::mat4(1.0f), 0, texture->names[0]);
    EXPECT_TRUE(SamePicture(face, Drawn(batch)));
    EXPECT_EQ(drawCalls, 1);

    const VeSurface quad = Draw([&] { VeVertexBatches::DrawQuad(texture.get()); });
    for (int divisions : {1, 4}) {
        batch.Clear();
        batch.AddSquare(glm::mat4(1.0f), texture->names[0], divisions);
        EXPECT_EQ(batch.FaceCount(), static_cast<size_t>(divisions * divisions));
        EXPECT_TRUE(SamePicture(quad, Drawn(batch))) << divisions << " divisions";
    }
}

TEST_F(VeFaceBatchTest, SquaresArePlacedByTheirModelMatrixAndAPartShowsThatPartOfItsTexture) {
    VeFaceBatch batch;
    // The right half of the scene, squeezed to half its width; the left half stays clear.
    batch.AddSquare(
        glm::scale(glm::translate(glm::mat4(1.0f), glm::vec3(0.5f, 0.0f, 0.0f)), glm::vec3(0.5f, 1.0f, 1.0f)),
        texture->names[0]);
    EXPECT_EQ(Mismatches(Drawn(batch),
                         {{16, 16, 0x000000}, {40, 8, 0xFF0000}, {56, 8, 0x00FF00}, {56, 56, 0xFFFFFF}}),
              "");

    batch.Clear();
    batch.AddSquare(glm::mat4(1.0f), texture->names[0]);
    const VeSurface whole = Drawn(batch);
    batch.Clear();
    // The top right quarter, and a part reaching beyond the square, which is kept inside it.
    batch.AddSquarePart(glm::mat4(1.0f), texture->names[0], 0.0f, 0.0f, 1.0f, 1.0f);
    batch.AddSquarePart(glm::mat4(1.0f), texture->names[0], -3.0f, -3.0f, -0.5f, -0.5f);
    batch.AddSquarePart(glm::mat4(1.0f), texture->names[0], 0.5f, 0.5f, 0.5f, 0.9f);
    EXPECT_EQ(batch.FaceCount(), 2u) << "an empty part adds nothing";
    const VeSurface part = Drawn(batch);
    for (int32_t y = 0; y < 64; y += 3) {
        for (int32_t x = 0; x < 64; x += 3) {
            const bool topRight = x >= 32 && y < 32;
            const bool bottomLeft = x < 16 && y >= 48;
            const uint32_t expected = topRight || bottomLeft ? whole.GetXY(x, y) : 0xFF000000u;
            ASSERT_EQ(part.GetXY(x, y), expected) << x << "," << y;
        }
    }
}

TEST_F(VeFaceBatchTest, OneRangePerTextureInTheOrderTheFacesCameIn) {
    VeSurface other(1, 1);
    VeTexture second(&other);
    const unsigned int a = texture->names[0];
    const unsigned int b = second.names[0];
    VeFaceBatch batch;
    batch.AddCubeFace(glm::mat4(1.0f), 0, a);
    batch.AddCubeFace(glm::mat4(1.0f), 1, b);
    batch.AddCubeFace(glm::mat4(1.0f), 2, a);
    batch.AddSquare(glm::mat4(1.0f), b, 2);
    batch.AddCubeFace(glm::mat4(1.0f), 6, a);
    batch.AddCubeFace(glm::mat4(1.0f), -1, a);
    EXPECT_EQ(batch.FaceCount(), 7u) << "faces outside 0 to 5 add nothing";
    const std::vector<VeFaceBatch::Range>& ranges = batch.Upload();
    ASSERT_EQ(ranges.size(), 2u);
    const VeFaceBatch::Range& first = ranges[0].texture == a ? ranges[0] : ranges[1];
    const VeFaceBatch::Range& last = ranges[0].texture == a ? ranges[1] : ranges[0];
    EXPECT_EQ(first.count, 2 * 6);
    EXPECT_EQ(last.texture, b);
    EXPECT_EQ(last.count, 5 * 6);
    EXPECT_EQ(ranges[1].first, ranges[0].count) << "the ranges follow each other";

    batch.Clear();
    EXPECT_EQ(batch.DrawAll(), 0) << "no range is left from the last upload";
}
