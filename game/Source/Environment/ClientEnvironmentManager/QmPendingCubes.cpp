#include "Environment/ClientEnvironmentManager/QmPendingCubes.h"

#include "Screen/Scene/VeVertexBatches.h"
#include "Screen/Shader/VeShader.h"
#include "Screen/Surface/VeTexture.h"

namespace {
constexpr int32_t kOpaqueWhite = -1;
}

void QmPendingCubes::Clear() {
    cubes.clear();
    cubeBatch.Clear();
    squares.Clear();
}

bool QmPendingCubes::FaceShows(const QmPendingBlock& block, int face, const Pass& pass) {
    if ((block.hiddenFaces >> face) & 1) {
        return false;
    }
    // Cubes are never turned: their faces lie on the planes centre +- scale of each axis.
    const glm::vec3 centre(block.model[3]);
    const float half = block.model[0][0];
    const glm::vec3& from = pass.viewer;
    bool facesViewer = false;
    switch (face) {
    case 0:
        facesViewer = from.z > centre.z + half;
        break;
    case 1:
        facesViewer = from.z < centre.z - half;
        break;
    case 2:
        facesViewer = from.x < centre.x - half;
        break;
    case 3:
        facesViewer = from.x > centre.x + half;
        break;
    case 4:
        facesViewer = from.y < centre.y - half;
        break;
    default:
        facesViewer = from.y > centre.y + half;
        break;
    }
    // The shadow pass culls the faces turned to the light and keeps the others.
    return pass.shadow ? !facesViewer : facesViewer;
}

bool QmPendingCubes::Batchable(const QmPendingBlock& block) {
    return block.texture != nullptr && !block.twoSided && block.alpha >= 1.0f &&
           block.drawColour == kOpaqueWhite;
}

void QmPendingCubes::UploadUniforms(const QmPendingBlock& block, const Pass& pass) {
    VeShader& shader = *pass.shader;
    if (pass.shadow) {
        shader.SetMat4("MVP", block.mvp);
        shader.SetInt("textureID", 0);
        return;
    }
    shader.SetMat4("MVP", block.mvp);
    shader.SetMat4("lightMVP", block.lightMvp);
    shader.SetInt("useTexture", block.texture != nullptr ? 1 : 0);
    shader.SetInt("textureID", 0);
    shader.SetFloat("alpha", block.alpha);
    shader.SetInt("drawColor", block.drawColour);
    shader.SetMat4("ModelMatrix", block.model);
}

int64_t QmPendingCubes::DrawBatch(VeFaceBatch& batch, const Pass& pass) {
    if (batch.Empty()) {
        return 0;
    }
    // The batch holds world positions: the model matrix is the identity.
    VeShader& shader = *pass.shader;
    shader.SetMat4("MVP", pass.viewProjection);
    shader.SetInt("textureID", 0);
    if (!pass.shadow) {
        shader.SetMat4("lightMVP", pass.biasedLight);
        shader.SetMat4("ModelMatrix", glm::mat4(1.0f));
        shader.SetInt("useTexture", 1);
        shader.SetFloat("alpha", 1.0f);
        shader.SetInt("drawColor", kOpaqueWhite);
    }
    int64_t draws = 0;
    for (const VeFaceBatch::Range& range : batch.Upload()) {
        batch.Draw(range);
        ++draws;
    }
    batch.Clear();
    return draws;
}

int64_t QmPendingCubes::DrawCubes(const Pass& pass, VeRenderState& state, bool translucent) {
    const VeRenderState::Culling solid =
        pass.shadow ? VeRenderState::CullFrontFaces : VeRenderState::CullBackFaces;
    int64_t draws = 0;
    if (translucent) {
        state.SetDepthWrite(false);
    }
    for (int face = 0; face < 6; ++face) {
        for (const QmPendingBlock& block : cubes) {
            if ((block.alpha < 1.0f) != translucent || (!block.twoSided && !FaceShows(block, face, pass))) {
                continue;
            }
            if (!translucent && Batchable(block)) {
                cubeBatch.AddCubeFace(block.model, face, block.texture->BlockFaceName(face));
                continue;
            }
            state.SetCulling(block.twoSided ? VeRenderState::CullNothing : solid);
            UploadUniforms(block, pass);
            VeVertexBatches::DrawBlockFace(face, block.texture);
            ++draws;
        }
    }
    state.SetCulling(solid);
    draws += DrawBatch(cubeBatch, pass);
    if (translucent) {
        state.SetDepthWrite(true);
    }
    return draws;
}

int64_t QmPendingCubes::DrawOpaque(const Pass& pass, VeRenderState& state) {
    // Flat items show both sides.
    state.SetCulling(VeRenderState::CullNothing);
    const int64_t draws = DrawBatch(squares, pass);
    return draws + DrawCubes(pass, state, false);
}

int64_t QmPendingCubes::DrawTranslucent(const Pass& pass, VeRenderState& state) {
    return DrawCubes(pass, state, true);
}
