#include "Environment/ClientEnvironmentManager/QmPendingCubes.h"

#include "Environment/ClientEnvironmentManager/QmWorldSpace.h"
#include "Screen/Scene/VeVertexBatches.h"
#include "Screen/Shader/VeShader.h"
#include "Screen/Surface/VeTexture.h"

namespace {
constexpr int32_t kOpaqueWhite = -1;
}

void QmPendingCubes::Clear() {
    cubes.clear();
    cubeBatch.Clear();
    frontBatch.Clear();
    squares.Clear();
    frontSquares.Clear();
}

void QmPendingCubes::AddSquare(const glm::mat4& model, unsigned int texture) {
    // Not turned (a spinning item shows its sides to the light now and then) and standing on or
    // before the front plane.
    const bool facing =
        model[0][2] == 0.0f && model[2][0] == 0.0f && model[0][1] == 0.0f && model[1][0] == 0.0f;
    const bool front = facing && model[3][2] >= QmWorldSpace::kFrontPlane;
    (front ? frontSquares : squares).AddSquare(model, texture);
}

bool QmPendingCubes::Faces(const QmPendingBlock& block, int face, const glm::vec3& point) {
    // Cubes are never turned: their faces lie on the planes centre +- scale of each axis.
    const glm::vec3 centre(block.model[3]);
    const float half = block.model[0][0];
    switch (face) {
    case 0:
        return point.z > centre.z + half;
    case 1:
        return point.z < centre.z - half;
    case 2:
        return point.x < centre.x - half;
    case 3:
        return point.x > centre.x + half;
    case 4:
        return point.y < centre.y - half;
    default:
        return point.y > centre.y + half;
    }
}

bool QmPendingCubes::Unshadowed(const QmPendingBlock& block, int face, const Pass& pass) {
    const bool onFrontPlane = face == 0 && block.model[3][2] + block.model[2][2] >= QmWorldSpace::kFrontPlane;
    // A face turned away from the light has no light of its own to lose to a shadow.
    return onFrontPlane || !Faces(block, face, pass.light);
}

bool QmPendingCubes::FaceShows(const QmPendingBlock& block, int face, const Pass& pass) {
    if ((block.hiddenFaces >> face) & 1) {
        return false;
    }
    // The shadow pass culls the faces turned to the light and keeps the others.
    const bool facesViewer = Faces(block, face, pass.viewer);
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

int64_t QmPendingCubes::DrawBatch(VeFaceBatch& batch, VeShader& shader, const Pass& pass) {
    if (batch.Empty()) {
        return 0;
    }
    // The batch holds world positions: the model matrix is the identity.
    shader.Use();
    shader.SetMat4("MVP", pass.viewProjection);
    shader.SetInt("textureID", 0);
    if (!pass.shadow) {
        shader.SetMat4("lightMVP", pass.biasedLight);
        shader.SetMat4("ModelMatrix", glm::mat4(1.0f));
        shader.SetInt("useTexture", 1);
        shader.SetFloat("alpha", 1.0f);
        shader.SetInt("drawColor", kOpaqueWhite);
    }
    batch.Upload();
    const int64_t draws = batch.DrawAll();
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
                const bool front = pass.unshadowed != nullptr && Unshadowed(block, face, pass);
                (front ? frontBatch : cubeBatch)
                    .AddCubeFace(block.model, face, block.texture->BlockFaceName(face));
                continue;
            }
            state.SetCulling(block.twoSided ? VeRenderState::CullNothing : solid);
            state.SetBlending(Translucent(block.alpha, block.drawColour));
            pass.shader->Use();
            UploadUniforms(block, pass);
            VeVertexBatches::DrawBlockFace(face, block.texture);
            ++draws;
        }
    }
    state.SetCulling(solid);
    state.SetBlending(false);
    draws += DrawBatch(cubeBatch, *pass.shader, pass);
    if (pass.unshadowed != nullptr) {
        draws += DrawBatch(frontBatch, *pass.unshadowed, pass);
    }
    if (translucent) {
        state.SetDepthWrite(true);
    }
    return draws;
}

int64_t QmPendingCubes::DrawOpaque(const Pass& pass, VeRenderState& state) {
    // Flat items show both sides.
    state.SetCulling(VeRenderState::CullNothing);
    state.SetBlending(false);
    int64_t draws = DrawBatch(squares, *pass.shader, pass);
    draws += DrawBatch(frontSquares, pass.unshadowed != nullptr ? *pass.unshadowed : *pass.shader, pass);
    return draws + DrawCubes(pass, state, false);
}

int64_t QmPendingCubes::DrawTranslucent(const Pass& pass, VeRenderState& state) {
    return DrawCubes(pass, state, true);
}
