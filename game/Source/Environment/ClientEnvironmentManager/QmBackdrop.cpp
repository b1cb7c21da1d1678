#include "Environment/ClientEnvironmentManager/QmBackdrop.h"

#include "Environment/ClientEnvironmentManager/QmWorldSpace.h"

#include <glm/gtc/matrix_transform.hpp>

#include <algorithm>
#include <limits>

namespace {

// The backdrop is lit at the corners of this many squares a side (its light changes slowly).
constexpr int kDivisions = 8;
// How far the patches lie in front of the backdrop: far below what shows, far above the depth
// buffer's step there.
constexpr float kPatchLift = 0.002f;
// Room around a cube's shadow for the soft edge the shadow map's filter gives it.
constexpr float kPatchMargin = 0.1f;

} // namespace

void QmBackdrop::MakeArt(const QmWorldArt& worldArt, int mapSize) {
    // The background tiles at one tile per block, lined up with the map's cells.
    const VeSurface& tile = *(mapSize == 20 ? worldArt.background16 : worldArt.background32);
    const int tiles = mapSize == 20 ? 58 : 29;
    const int offset = mapSize == 20 ? 0 : tile.width / 2;
    art.Create(tile.width * tiles, tile.height * tiles);
    for (int y = -1; y <= tiles; ++y) {
        for (int x = -1; x <= tiles; ++x) {
            art.Blit(tile, x * tile.width - offset, y * tile.height - offset);
        }
    }
    if (artTexture) {
        artTexture->Replace(&art);
    } else {
        artTexture = std::make_unique<VeTexture>(&art, VeFilterNearest);
    }
    model = QmWorldSpace::BackdropModel(mapSize);
    bakeSquares.Clear();
    bakeSquares.AddSquare(glm::mat4(1.0f), artTexture->names[0], kDivisions);
    bakeSquares.Upload();
    if (picture.width != art.width || picture.height != art.height || !picture.Ready()) {
        picture.Create(art.width, art.height, VeFilterNearest);
    }
    squares.Clear();
    squares.AddSquare(model, picture.texture, kDivisions);
    squares.Upload();
}

void QmBackdrop::Bake(const QmWorldArt& worldArt, const Look& look, const Light& light,
                      QmBlockShaders& shaders, VeRenderState& state) {
    if (look.mapSize != artMapSize || look.blockSize != artBlockSize || !artTexture) {
        MakeArt(worldArt, look.mapSize);
        artMapSize = look.mapSize;
        artBlockSize = look.blockSize;
    }
    picture.Begin();
    state.SetupPass();
    const glm::mat4 upsideDown = glm::scale(glm::mat4(1.0f), glm::vec3(1.0f, -1.0f, 1.0f));
    // The picture's row 0 is the art's top row, as in every texture made from a surface; drawn
    // upside down the square turns its back, so nothing is culled.
    state.SetCulling(VeRenderState::CullNothing);
    state.SetBlending(false);
    state.SetDepthTest(false);
    VeShader& bake = shaders.bake;
    bake.Use();
    bake.SetMat4("MVP", upsideDown);
    bake.SetMat4("ModelMatrix", model);
    bake.SetMat4("lightMVP", light.biasedViewProjection * model);
    bake.SetVec3("lightPos", light.position.x, light.position.y, light.position.z);
    bake.SetInt("useShadowMap", look.shadows ? 1 : 0);
    bake.SetInt("shadowTextureID", 1);
    bake.SetVec2("shadowMapSize", light.shadowMapSize.x, light.shadowMapSize.y);
    bake.SetInt("textureID", 0);
    bake.SetInt("useTexture", 1);
    bake.SetInt("drawColor", -1);
    bake.SetFloat("alpha", 1.0f);
    bakeSquares.DrawAll();
    state.SetDepthTest(true);
    baked = picture.Ready();
    bakedLook = look;
}

void QmBackdrop::AddShadowPatch(const glm::mat4& cubeModel, const glm::vec3& light) {
    const glm::vec3 centre(cubeModel[3]);
    const float half = cubeModel[0][0];
    const float plane = model[3][2];
    float left = std::numeric_limits<float>::max();
    float right = -left;
    float bottom = left;
    float top = -left;
    for (int corner = 0; corner < 8; ++corner) {
        const glm::vec3 p = centre + half * glm::vec3(corner & 1 ? 1.0f : -1.0f, corner & 2 ? 1.0f : -1.0f,
                                                      corner & 4 ? 1.0f : -1.0f);
        if (p.z >= light.z || p.z <= plane) {
            return;
        }
        // Where the light's ray through the corner meets the backdrop.
        const glm::vec3 onPlane = light + (p - light) * ((plane - light.z) / (p.z - light.z));
        left = std::min(left, onPlane.x);
        right = std::max(right, onPlane.x);
        bottom = std::min(bottom, onPlane.y);
        top = std::max(top, onPlane.y);
    }
    // In the square's own units (the backdrop is a scaled square centred on the z axis).
    const float scaleX = model[0][0];
    const float scaleY = model[1][1];
    const glm::mat4 lifted = glm::translate(glm::mat4(1.0f), glm::vec3(0.0f, 0.0f, kPatchLift)) * model;
    patches.AddSquarePart(lifted, artTexture ? artTexture->names[0] : 0, (left - kPatchMargin) / scaleX,
                          (bottom - kPatchMargin) / scaleY, (right + kPatchMargin) / scaleX,
                          (top + kPatchMargin) / scaleY);
}

int64_t QmBackdrop::Draw(const Pass& pass, QmBlockShaders& shaders, VeRenderState& state) {
    if (!baked) {
        return 0;
    }
    // Seen from the camera the square shows its back.
    state.SetCulling(VeRenderState::CullFrontFaces);
    state.SetBlending(false);
    int64_t draws = 0;
    for (VeShader* shader : {&shaders.block, &shaders.unshadowed}) {
        const bool picturePass = shader == &shaders.unshadowed;
        VeFaceBatch& batch = picturePass ? squares : patches;
        if (batch.Empty() || (!picturePass && pass.untextured)) {
            continue;
        }
        shader->Use();
        shader->SetMat4("MVP", pass.viewProjection);
        shader->SetMat4("lightMVP", pass.biasedLight);
        shader->SetMat4("ModelMatrix", glm::mat4(1.0f));
        shader->SetInt("useTexture", pass.untextured ? 0 : 1);
        shader->SetInt("textureID", 0);
        shader->SetFloat("alpha", 1.0f);
        shader->SetInt("drawColor", static_cast<int32_t>(pass.drawColour));
        if (picturePass) {
            shader->SetInt("lightBaked", 1);
        } else {
            batch.Upload();
        }
        draws += batch.DrawAll();
        if (picturePass) {
            shader->SetInt("lightBaked", 0);
        }
    }
    state.SetCulling(VeRenderState::CullBackFaces);
    return draws;
}
