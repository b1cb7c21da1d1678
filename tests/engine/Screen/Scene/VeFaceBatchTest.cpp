#include "Screen/Scene/VeFaceBatch.h"

#include "Screen/Scene/TextureRenderer/VeTextureRenderer.h"
#include "Screen/Scene/VeVertexBatches.h"
#include "Screen/Shader/VeShader.h"
#include "Screen/Surface/VeTexture.h"

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

    VeSurface picture{2, 2};
    std::unique_ptr<VeTexture> texture;
};

TEST_F(VeFaceBatchTest, BatchedFacesAndSquaresLookLikeTheSharedGeometry) {
    const VeSurface face = Draw([&] { VeVertexBatches::DrawBlockFace(0, texture.get()); });
    // Face 0 shows its texture upright: red, green / blue, white.
    EXPECT_EQ(face.GetXY(8, 8), 0xFFFF0000u);
    EXPECT_EQ(face.GetXY(56, 8), 0xFF00FF00u);
    EXPECT_EQ(face.GetXY(8, 56), 0xFF0000FFu);
    EXPECT_EQ(face.GetXY(56, 56), 0xFFFFFFFFu);
    VeFaceBatch batch;
    const VeSurface batchedFace = Draw([&] {
        batch.AddCubeFace(glm::mat4(1.0f), 0, texture->names[0]);
        batch.Upload();
        EXPECT_EQ(batch.DrawAll(), 1);
    });
    EXPECT_TRUE(SamePicture(face, batchedFace));

    const VeSurface quad = Draw([&] { VeVertexBatches::DrawQuad(texture.get()); });
    for (int divisions : {1, 4}) {
        const VeSurface square = Draw([&] {
            batch.Clear();
            batch.AddSquare(glm::mat4(1.0f), texture->names[0], divisions);
            EXPECT_EQ(batch.FaceCount(), static_cast<size_t>(divisions * divisions));
            batch.Upload();
            batch.DrawAll();
        });
        EXPECT_TRUE(SamePicture(quad, square)) << divisions << " divisions";
    }
}

TEST_F(VeFaceBatchTest, FacesArePlacedByTheirModelMatrix) {
    VeFaceBatch batch;
    const VeSurface shot = Draw([&] {
        // The right half of the scene, squeezed to half its width.
        const glm::mat4 model = glm::scale(glm::translate(glm::mat4(1.0f), glm::vec3(0.5f, 0.0f, 0.0f)),
                                           glm::vec3(0.5f, 1.0f, 1.0f));
        batch.AddSquare(model, texture->names[0]);
        batch.Upload();
        batch.DrawAll();
    });
    EXPECT_EQ(shot.GetXY(16, 16), 0xFF000000u) << "the left half stays clear";
    EXPECT_EQ(shot.GetXY(40, 8), 0xFFFF0000u);
    EXPECT_EQ(shot.GetXY(56, 8), 0xFF00FF00u);
    EXPECT_EQ(shot.GetXY(56, 56), 0xFFFFFFFFu);
}

TEST_F(VeFaceBatchTest, APartOfTheSquareShowsThatPartOfItsTexture) {
    VeFaceBatch batch;
    const VeSurface whole = Draw([&] {
        batch.AddSquare(glm::mat4(1.0f), texture->names[0]);
        batch.Upload();
        batch.DrawAll();
    });
    batch.Clear();
    const VeSurface part = Draw([&] {
        // The top right quarter, and a part reaching beyond the square, which is kept inside it.
        batch.AddSquarePart(glm::mat4(1.0f), texture->names[0], 0.0f, 0.0f, 1.0f, 1.0f);
        batch.AddSquarePart(glm::mat4(1.0f), texture->names[0], -3.0f, -3.0f, -0.5f, -0.5f);
        batch.AddSquarePart(glm::mat4(1.0f), texture->names[0], 0.5f, 0.5f, 0.5f, 0.9f);
        EXPECT_EQ(batch.FaceCount(), 2u) << "an empty part adds nothing";
        batch.Upload();
        batch.DrawAll();
    });
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
    EXPECT_TRUE(batch.Empty());
    EXPECT_EQ(batch.DrawAll(), 0);
}
